#include "base/Text.h"
#include "device/ServiceConfig.h"

#include <algorithm>
#include <charconv>

namespace ipncsdk::device {

namespace {

constexpr std::string_view scheme = "file:";
constexpr std::size_t longestPath = 1024;

bool takeScheme(std::string_view& url) {
    const bool found =
        url.size() >= scheme.size() && std::equal(scheme.begin(), scheme.end(), url.begin(), [](char a, char b) {
            return a == (b >= 'A' && b <= 'Z' ? static_cast<char>(b + 32) : b);
        });
    url.remove_prefix(found ? scheme.size() : 0);
    return found;
}

/// Takes percent-encoding away; nothing when a '%' has no two digits behind it.
std::optional<std::string> decoded(std::string_view text) {
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '%') {
            result += text[index];
            continue;
        }
        unsigned value = 0;
        const std::string_view digits = text.substr(index + 1, 2);
        const char* const end = digits.data() + digits.size();
        if (digits.size() != 2 || std::from_chars(digits.data(), end, value, 16).ptr != end)
            return std::nullopt;
        result += static_cast<char>(value);
        index += 2;
    }
    return result;
}

/// Both kinds of separators count, so that an address means the same everywhere.
bool leadsUp(std::string_view path) {
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of("/\\"), path.size());
        if (path.substr(0, end) == "..")
            return true;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return false;
}

} // namespace

std::optional<std::filesystem::path> parseFileAddress(std::string_view url) {
    // What stands behind these would not belong to the path; a file's name may hold them encoded.
    if (!takeScheme(url) || url.find_first_of("?#") != std::string_view::npos)
        return std::nullopt;
    if (url.substr(0, 2) == "//") {
        url.remove_prefix(2);
        // A host, or nothing at all, would stand here.
        if (url.empty() || url.front() != '/')
            return std::nullopt;
    }
    const auto text = decoded(url);
    if (!text || text->empty() || !isPlainText(*text, longestPath) || leadsUp(*text))
        return std::nullopt;
    std::string_view path = *text;
    const auto isSeparator = [](char c) {
        return c == '/' || c == '\\';
    };
    // Two separators at the beginning name a host on some systems, one at the end names a folder.
    if (isSeparator(path.back()) || (path.size() > 1 && isSeparator(path[0]) && isSeparator(path[1])))
        return std::nullopt;
    // "/C:/videos/a.mp4": where drives have letters, the path begins with the letter.
    constexpr bool hasDrives = std::filesystem::path::preferred_separator != '/';
    if (hasDrives && path.size() > 2 && path[0] == '/' && path[2] == ':')
        path.remove_prefix(1);
    return std::filesystem::path(std::u8string(path.begin(), path.end()));
}

} // namespace ipncsdk::device
