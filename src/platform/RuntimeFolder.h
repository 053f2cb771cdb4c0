#pragma once

#include <filesystem>
#include <optional>

namespace corvanta::platform {

/// An existing folder that belongs to this user alone, for sockets and locks of the running session. Nothing if there
/// is none that can be trusted.
///
/// Linux: the session's runtime folder if it is ours with mode 0700, else a 0700 folder of ours in /tmp. Its path is
/// short enough for a socket's address. Windows: the user's folder for temporary files.
std::optional<std::filesystem::path> runtimeFolder();

} // namespace corvanta::platform
