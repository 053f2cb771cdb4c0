#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ipncsdk::onvif::xml {

/// An element is meant by its namespace and its local name; the prefix is the writer's own choice.
struct Name {
    std::string_view space;
    std::string_view local;
    friend bool operator==(const Name&, const Name&) = default;
};

constexpr std::size_t longestText = std::size_t{1} * 1024 * 1024;
constexpr int deepestNesting = 64;

/// Parses a text from outside. Null when it is no XML, is longer or nested deeper than the bounds above, or has a
/// document type: nobody here needs one, and entities only stand in there.
std::unique_ptr<pugi::xml_document> parse(std::string_view text);

/// The namespace of an element and its local name; views into the document.
Name nameOf(const pugi::xml_node& element);

/// The name that an element's text means: "tds:Device" with the namespaces that hold there.
Name resolved(std::string_view qualified, const pugi::xml_node& where);

/// The first child of this name; null when there is none, also of a null element.
pugi::xml_node child(const pugi::xml_node& element, const Name& name);
std::vector<pugi::xml_node> children(const pugi::xml_node& element, const Name& name);

/// Follows local names down, all in one namespace.
pugi::xml_node descend(pugi::xml_node element, std::string_view space, std::initializer_list<std::string_view> path);

/// The text of an element without blanks at its ends; empty for a null element.
std::string textOf(const pugi::xml_node& element);
std::optional<double> numberOf(const pugi::xml_node& element);
/// True for "true" and "1".
bool flagOf(const pugi::xml_node& element);

/// A text as it may stand between tags and in attributes. What XML cannot carry is left out.
std::string escaped(std::string_view text);
/// A number as XML writes it, whatever the locale.
std::string number(double value);

/// A text from outside on its way to people: one line, no control characters, at most `longest` bytes, cut between
/// characters.
std::string plain(std::string_view text, std::size_t longest);

} // namespace ipncsdk::onvif::xml
