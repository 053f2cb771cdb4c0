#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ipncsdk::onvif {

/// An address of a camera, taken apart.
struct Url {
    std::string scheme; ///< "http", "https" or "rtsp"
    std::string host;   ///< numeric IPv6 ones without brackets
    std::uint16_t port = 0;
    std::string rest; ///< from the path on; "/" at least

    /// Without user name and password.
    [[nodiscard]] std::string text() const;
};

/// Takes "http://..." and "https://..." apart; nothing for all else, and for control characters and blanks. User name
/// and password in the address are left out.
std::optional<Url> parseHttpUrl(const std::string& text);
/// The same for "rtsp://...".
std::optional<Url> parseRtspUrl(const std::string& text);

/// The device service that a user means: a whole address, or "host[:port]" with the usual path.
std::optional<Url> deviceServiceUrl(const std::string& text);

} // namespace ipncsdk::onvif
