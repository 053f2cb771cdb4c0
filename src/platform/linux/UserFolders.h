#pragma once

#include <filesystem>

namespace corvanta::platform {

/// The user's home folder, absolute; "/" if the system knows none.
std::filesystem::path homeFolder();

/// The folder of the user's settings, absolute; need not exist.
std::filesystem::path configFolder();

} // namespace corvanta::platform
