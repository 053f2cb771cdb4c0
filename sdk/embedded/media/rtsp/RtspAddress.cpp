#include "media/rtsp/RtspAddress.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

namespace ipncsdk::media {

namespace {

/// Longer addresses would be cut off by those who handle them further down.
constexpr std::size_t longestUrl = 900;
constexpr std::size_t longestHost = 255;

bool isUnreserved(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '.' || character == '_' ||
           character == '~';
}

/// Percent-encodes everything that RFC 3986 does not call unreserved.
std::string encoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char character : text) {
        if (isUnreserved(character)) {
            result += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            result += '%';
            result += digits[byte >> 4];
            result += digits[byte & 15U];
        }
    }
    return result;
}

bool takePrefix(std::string_view& text, std::string_view prefix) {
    const bool found = text.size() >= prefix.size() &&
                       std::equal(prefix.begin(), prefix.end(), text.begin(), [](char wanted, char is) {
                           return wanted == (is >= 'A' && is <= 'Z' ? static_cast<char>(is - 'A' + 'a') : is);
                       });
    text.remove_prefix(found ? prefix.size() : 0);
    return found;
}

bool isPlain(char character) {
    const auto byte = static_cast<unsigned char>(character);
    constexpr std::string_view quoting = "\"<>\\^`{|}";
    return byte > 0x20 && byte != 0x7F && quoting.find(character) == std::string_view::npos;
}

bool isHost(std::string_view host, bool bracketed) {
    return !host.empty() && host.size() <= longestHost && host.front() != '-' &&
           std::all_of(host.begin(), host.end(), [bracketed](char character) {
               return isUnreserved(character) || (bracketed && (character == ':' || character == '%'));
           });
}

/// Takes host and port apart; false when it is neither.
bool splitHost(std::string_view text, std::string& host, std::uint16_t& port) {
    const bool bracketed = !text.empty() && text.front() == '[';
    const std::size_t end = bracketed ? text.find(']') : text.find(':');
    if (bracketed && end == std::string_view::npos) {
        return false;
    }
    host = text.substr(bracketed ? 1 : 0, bracketed ? end - 1 : end);
    text.remove_prefix(std::min(text.size(), bracketed ? end + 1 : end));
    if (!isHost(host, bracketed)) {
        return false;
    }
    if (text.empty()) {
        return true;
    }
    const char* last = text.data() + text.size();
    const auto result = std::from_chars(text.data() + 1, last, port);
    return text.front() == ':' && result.ec == std::errc() && result.ptr == last && port != 0;
}

} // namespace

std::optional<RtspAddress> RtspAddress::parse(const RtspSource& source) {
    std::string_view rest = source.url;
    RtspAddress address;
    address.secure_ = takePrefix(rest, "rtsps://");
    if (!address.secure_ && !takePrefix(rest, "rtsp://")) {
        return std::nullopt;
    }
    const std::size_t pathBegin = std::min(rest.find_first_of("/?#"), rest.size());
    std::string_view path = rest.substr(pathBegin);
    path = path.substr(0, path.find('#'));
    std::string_view authority = rest.substr(0, pathBegin);
    std::string user = source.user;
    std::string password = source.password;
    // A password with a bare '@' in it is common, so the last one parts it from the host.
    if (const std::size_t at = authority.rfind('@'); at != std::string_view::npos) {
        const std::string_view pair = authority.substr(0, at);
        authority.remove_prefix(at + 1);
        if (user.empty() && password.empty()) {
            const std::size_t colon = std::min(pair.find(':'), pair.size());
            user = percentDecoded(pair.substr(0, colon));
            password = colon < pair.size() ? percentDecoded(pair.substr(colon + 1)) : std::string();
        }
    }
    address.port_ = address.secure_ ? 322 : 554;
    if (!std::all_of(path.begin(), path.end(), isPlain) || !splitHost(authority, address.host_, address.port_)) {
        return std::nullopt;
    }
    if (!user.empty() || !password.empty()) {
        address.credentials_ = encoded(user) + ':' + encoded(password);
    }
    address.user_ = std::move(user);
    address.password_ = std::move(password);
    address.path_ = path.empty() || path.front() != '/' ? '/' + std::string(path) : std::string(path);
    return address.url().size() <= longestUrl ? std::optional(address) : std::nullopt;
}

std::string RtspAddress::urlTo(const std::string& host, std::uint16_t port, const std::string& credentials) const {
    std::string url = secure_ ? "rtsps://" : "rtsp://";
    if (!credentials.empty()) {
        url += credentials + '@';
    }
    url += host.find(':') == std::string::npos ? host : '[' + host + ']';
    return url + ':' + std::to_string(port) + path_;
}

} // namespace ipncsdk::media
