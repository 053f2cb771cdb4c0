#include "platform/DataProtection.h"

namespace corvanta::platform {

std::optional<std::string> protectForUser(const std::string&) {
    return std::nullopt;
}

std::optional<std::string> unprotectForUser(const std::string&) {
    return std::nullopt;
}

} // namespace corvanta::platform
