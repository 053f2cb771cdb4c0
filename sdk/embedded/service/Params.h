#pragma once

#include "base/JsonText.h"
#include "store/Groups.h"

#include <cstddef>
#include <optional>
#include <string>

namespace ipncsdk::service {

/// Longest name that users give to groups, devices and themselves, in characters.
constexpr std::size_t longestName = 64;

/// A name: 1 to `longestName` characters of plain text that is not blank.
std::optional<std::string> nameAt(const Json& params, const char* key);

/// A phone number as accounts have them.
std::optional<std::string> phoneAt(const Json& params, const char* key);

/// A number that documents give as text; a whole number is taken too. Nothing when it is neither; 0, which nothing
/// has, when the text is no number.
std::optional<long long> idAt(const Json& params, const char* key);
/// Whether a key names something: it is there, and neither null nor an empty text.
bool isGiven(const Json& params, const char* key);

/// A group's id, as `idAt`.
std::optional<store::GroupId> groupIdAt(const Json& params, const char* key);

/// A place in a list, from 0.
std::optional<std::size_t> indexAt(const Json& params, const char* key);

} // namespace ipncsdk::service
