#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ipncsdk {

/// Number of Unicode characters of a UTF-8 text; nothing when the text is not well-formed UTF-8.
std::optional<std::size_t> characterCount(std::string_view text);

/// True for well-formed UTF-8 of at most `longest` characters without control characters.
bool isPlainText(std::string_view text, std::size_t longest);

/// True for a text that may name a device. Device ids become folder names at the client: 1 to 64 characters, no
/// path separators or other characters that file systems refuse, no "..", no dot or blank at either end.
bool isDeviceId(std::string_view text);

/// True for a text that may name a file in whatever file system, by the same rules; 1 to `longest` characters.
bool isFileName(std::string_view text, std::size_t longest);

/// True for a phone number as accounts have them: 5 to 20 digits, a plus sign may stand before them.
bool isPhoneNumber(std::string_view text);

/// Takes percent-encoding away; a '%' without two digits behind it stands for itself.
std::string percentDecoded(std::string_view text);

} // namespace ipncsdk
