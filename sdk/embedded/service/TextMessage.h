#pragma once

#include <string>

namespace ipncsdk::service {

/// A text message on its way to a phone.
struct TextMessage {
    std::string phone;
    std::string countryCode;
    std::string text;
    long long madeAt = 0; ///< milliseconds since the beginning of 1970, UTC
};

} // namespace ipncsdk::service
