#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ipncsdk::onvif {

struct Credentials {
    std::string user; ///< empty: the camera is asked without
    std::string password;
};

using Time = std::chrono::system_clock::time_point;

/// "2026-01-31T23:59:59Z".
std::string timestamp(Time time);
/// A moment of the calendar in UTC; nothing when it is none.
std::optional<Time> timeOf(int year, int month, int day, int hour, int minute, int second);

std::string base64(const std::vector<std::uint8_t>& bytes);

/// Base64(SHA-1(nonce + created + password)), as OASIS Web Services Security UsernameToken Profile 1.0 has it.
std::string passwordDigest(const std::vector<std::uint8_t>& nonce, std::string_view created,
                           std::string_view password);

/// The "Security" header of one request, with a nonce of its own.
std::string usernameToken(const Credentials& credentials, Time now);

/// "urn:uuid:..." with 122 random bits.
std::string randomUrn();

} // namespace ipncsdk::onvif
