#pragma once

#include <optional>
#include <string>

namespace corvanta::platform {

/// Protects bytes so that only this user of this computer can read them again: Windows' data protection. Nothing
/// where the system has none of its own (Linux) or refuses. Any thread.
std::optional<std::string> protectForUser(const std::string& bytes);
/// The bytes again; nothing when they were not protected here, or are damaged.
std::optional<std::string> unprotectForUser(const std::string& bytes);

} // namespace corvanta::platform
