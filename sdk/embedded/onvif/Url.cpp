#include "onvif/Url.h"

#include <curl/curl.h>

#include <charconv>
#include <memory>
#include <string_view>

namespace ipncsdk::onvif {

namespace {

constexpr std::size_t longestUrl = 1024;
constexpr auto usualPath = "/onvif/device_service";
constexpr std::string_view schemeEnd = "://";

using Parts = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

std::string part(const Parts& parts, CURLUPart which) {
    char* text = nullptr;
    if (curl_url_get(parts.get(), which, &text, 0) != CURLUE_OK)
        return {};
    const std::unique_ptr<char, decltype(&curl_free)> owner(text, &curl_free);
    return text;
}

std::uint16_t usualPort(std::string_view scheme) {
    if (scheme == "rtsp")
        return 554;
    return scheme == "https" ? 443 : 80;
}

std::optional<Url> parseUrl(const std::string& text) {
    if (text.size() > longestUrl || text.find_first_of(" \"<>\\^`{|}") != std::string::npos)
        return std::nullopt;
    const Parts parts(curl_url(), &curl_url_cleanup);
    // Schemes are looked at below; the library itself may have been built without some.
    if (!parts || curl_url_set(parts.get(), CURLUPART_URL, text.c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK)
        return std::nullopt;
    Url url;
    url.scheme = part(parts, CURLUPART_SCHEME);
    url.host = part(parts, CURLUPART_HOST);
    if (url.host.size() > 2 && url.host.front() == '[')
        url.host = url.host.substr(1, url.host.size() - 2);
    url.rest = part(parts, CURLUPART_PATH);
    if (const std::string query = part(parts, CURLUPART_QUERY); !query.empty())
        url.rest += '?' + query;
    url.port = usualPort(url.scheme);
    const std::string port = part(parts, CURLUPART_PORT);
    const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), url.port);
    if (url.host.empty() || url.port == 0 || (!port.empty() && error != std::errc()))
        return std::nullopt;
    if (url.rest.empty() || url.rest.front() != '/')
        url.rest.insert(0, 1, '/');
    return url;
}

} // namespace

std::string Url::text() const {
    const std::string place = host.find(':') == std::string::npos ? host : '[' + host + ']';
    const std::string number = port == usualPort(scheme) ? std::string() : ':' + std::to_string(port);
    return scheme + std::string(schemeEnd) + place + number + rest;
}

std::optional<Url> parseHttpUrl(const std::string& text) {
    auto url = parseUrl(text);
    return url && (url->scheme == "http" || url->scheme == "https") ? url : std::nullopt;
}

std::optional<Url> parseRtspUrl(const std::string& text) {
    auto url = parseUrl(text);
    return url && url->scheme == "rtsp" ? url : std::nullopt;
}

std::optional<Url> deviceServiceUrl(const std::string& text) {
    const bool whole = text.find(schemeEnd) != std::string::npos;
    auto url = parseHttpUrl(whole ? text : "http://" + text);
    if (url && url->rest == "/")
        url->rest = usualPath;
    return url;
}

} // namespace ipncsdk::onvif
