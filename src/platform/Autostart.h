#pragma once

#include <filesystem>
#include <system_error>

namespace corvanta::platform {

/// Makes this user's next sign-in start `executable`, or not. Returns why it could not be written, if so.
///
/// Windows: the value "wirtepad" of the user's "Run" key; the spelling stays, existing installations hold it.
/// Disabling leaves the value there, empty. Linux: an entry in the autostart folder of the desktop, written whole or
/// not at all; disabling leaves it there, hidden, and removing the program makes it void.
std::error_code setAutostart(bool enabled, const std::filesystem::path& executable);

/// Whether the next sign-in starts the program.
bool isAutostartEnabled();

} // namespace corvanta::platform
