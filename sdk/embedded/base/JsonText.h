#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace ipncsdk {

using Json = nlohmann::json;

/// Bounds of every text that is parsed, whoever wrote it.
constexpr std::size_t longestJsonText = std::size_t{4} * 1024 * 1024;
constexpr int deepestJsonNesting = 64;

/// Says why a text is not to be parsed at all (too long, nested too deep), or null.
const char* jsonTextRefusal(std::string_view text);

/// Parses a text that must be one JSON object. On failure nothing comes back, and `reason` says why in a few words
/// that quote nothing of the text.
std::optional<Json> parseObject(std::string_view text, std::string& reason);

/// Writes a value as JSON text; ill-formed UTF-8 inside is replaced, never thrown about.
std::string toText(const Json& value);

/// The values of an object's members; nothing when the member is missing or of another type, or when `object` is
/// no object.
std::optional<std::string> textAt(const Json& object, const char* key);
/// Also takes a number that is whole but written with a fraction ("5.0").
std::optional<std::int64_t> integerAt(const Json& object, const char* key);
std::optional<bool> flagAt(const Json& object, const char* key);
/// The member, or null when it is missing.
const Json* memberAt(const Json& object, const char* key);
std::optional<std::int64_t> integerOf(const Json& value);
/// A finite number, or a text that is one and nothing else ("0.5").
std::optional<double> numberOf(const Json& value);
/// An absolute path of a file, plain text without control characters.
std::optional<std::filesystem::path> absolutePathAt(const Json& object, const char* key);

} // namespace ipncsdk
