#include "base/Text.h"
#include "device/ServiceConfig.h"

#include <algorithm>
#include <charconv>

namespace ipncsdk::device {

namespace {

constexpr std::string_view scheme = "rtsp://";
constexpr std::size_t longestUrl = 2048;

bool hasScheme(std::string_view url) {
    if (url.size() < scheme.size())
        return false;
    return std::equal(scheme.begin(), scheme.end(), url.begin(),
                      [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? static_cast<char>(b + 32) : b); });
}

/// Reads ":port" behind a host; an empty text keeps the default.
bool readPort(std::string_view text, int& port) {
    if (text.empty())
        return true;
    text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    return error == std::errc() && end == text.data() + text.size() && port >= 1 && port <= 65535;
}

} // namespace

std::optional<RtspAddress> parseRtspAddress(std::string_view url) {
    if (!isPlainText(url, longestUrl) || url.find(' ') != std::string_view::npos || !hasScheme(url))
        return std::nullopt;
    url.remove_prefix(scheme.size());
    const std::size_t pathAt = std::min(url.find_first_of("/?#"), url.size());
    std::string_view authority = url.substr(0, pathAt);
    const std::string_view path = url.substr(pathAt);
    // A password may hold '@' unescaped; the last one ends it.
    if (const auto at = authority.rfind('@'); at != std::string_view::npos)
        authority.remove_prefix(at + 1);

    RtspAddress address;
    std::string_view port;
    if (!authority.empty() && authority.front() == '[') {
        const auto close = authority.find(']');
        if (close == std::string_view::npos)
            return std::nullopt;
        address.host = authority.substr(1, close - 1);
        port = authority.substr(close + 1);
        if (!port.empty() && port.front() != ':')
            return std::nullopt;
    } else {
        const auto colon = std::min(authority.find(':'), authority.size());
        address.host = authority.substr(0, colon);
        port = authority.substr(colon);
    }
    if (address.host.empty() || !readPort(port, address.port))
        return std::nullopt;
    address.withoutPassword = std::string(scheme) + std::string(authority) + std::string(path);
    return address;
}

} // namespace ipncsdk::device
