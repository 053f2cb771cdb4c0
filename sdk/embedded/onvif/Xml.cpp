#include "onvif/Xml.h"

#include <array>
#include <charconv>
#include <cmath>

namespace ipncsdk::onvif::xml {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

struct Split {
    std::string_view prefix;
    std::string_view local;
};

Split split(std::string_view qualified) {
    const auto colon = qualified.find(':');
    if (colon == std::string_view::npos)
        return {{}, qualified};
    return {qualified.substr(0, colon), qualified.substr(colon + 1)};
}

bool declares(const pugi::xml_attribute& attribute, std::string_view prefix) {
    const std::string_view name = attribute.name();
    constexpr std::string_view start = "xmlns";
    if (name.substr(0, start.size()) != start)
        return false;
    const std::string_view rest = name.substr(start.size());
    return prefix.empty() ? rest.empty()
                          : rest.size() == prefix.size() + 1 && rest[0] == ':' && rest.substr(1) == prefix;
}

/// The namespace that a prefix means at an element: the nearest declaration counts.
std::string_view spaceOf(std::string_view prefix, pugi::xml_node where) {
    for (; where; where = where.parent()) {
        for (const pugi::xml_attribute& attribute : where.attributes()) {
            if (declares(attribute, prefix))
                return attribute.value();
        }
    }
    return {};
}

/// Walks without recursion, so that the depth itself does no harm.
bool isWithinBounds(const pugi::xml_document& document) {
    int depth = 0;
    for (pugi::xml_node node = document.first_child(); node;) {
        if (node.type() == pugi::node_doctype || depth >= deepestNesting)
            return false;
        if (node.first_child()) {
            node = node.first_child();
            ++depth;
            continue;
        }
        while (node && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        node = node ? node.next_sibling() : node;
    }
    return true;
}

} // namespace

std::unique_ptr<pugi::xml_document> parse(std::string_view text) {
    if (text.size() > longestText)
        return nullptr;
    auto document = std::make_unique<pugi::xml_document>();
    // Document types are read only to be seen; declared entities are never replaced.
    const auto result = document->load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_doctype);
    if (!result || !isWithinBounds(*document))
        return nullptr;
    return document;
}

Name nameOf(const pugi::xml_node& element) {
    return resolved(element.name(), element);
}

Name resolved(std::string_view qualified, const pugi::xml_node& where) {
    const Split parts = split(trimmed(qualified));
    return {spaceOf(parts.prefix, where), parts.local};
}

pugi::xml_node child(const pugi::xml_node& element, const Name& name) {
    for (const pugi::xml_node& each : element.children()) {
        if (each.type() == pugi::node_element && split(each.name()).local == name.local && nameOf(each) == name)
            return each;
    }
    return {};
}

std::vector<pugi::xml_node> children(const pugi::xml_node& element, const Name& name) {
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node& each : element.children()) {
        if (each.type() == pugi::node_element && split(each.name()).local == name.local && nameOf(each) == name)
            found.push_back(each);
    }
    return found;
}

pugi::xml_node descend(pugi::xml_node element, std::string_view space, std::initializer_list<std::string_view> path) {
    for (const std::string_view local : path)
        element = child(element, {space, local});
    return element;
}

std::string textOf(const pugi::xml_node& element) {
    return std::string(trimmed(element.text().get()));
}

std::optional<double> numberOf(const pugi::xml_node& element) {
    const std::string text = textOf(element);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

bool flagOf(const pugi::xml_node& element) {
    const std::string text = textOf(element);
    return text == "true" || text == "1";
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            if (static_cast<unsigned char>(character) >= 0x20 || character == '\t')
                result += character;
        }
    }
    return result;
}

std::string number(double value) {
    std::array<char, 64> buffer{};
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 6);
    return result.ec == std::errc() ? std::string(buffer.data(), result.ptr) : "0";
}

std::string plain(std::string_view text, std::size_t longest) {
    std::string result;
    for (const char character : trimmed(text)) {
        const auto byte = static_cast<unsigned char>(character);
        const bool begins = (byte & 0xc0U) != 0x80U;
        if (result.size() >= longest && begins)
            break;
        const bool blank = byte <= 0x20 || byte == 0x7f;
        if (!blank)
            result += character;
        else if (!result.empty() && result.back() != ' ')
            result += ' ';
    }
    return result;
}

} // namespace ipncsdk::onvif::xml
