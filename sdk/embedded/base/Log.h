#pragma once

#include <string_view>

namespace ipncsdk {

/// Writes one line of diagnostics to the standard error stream, behind "ipncsdk: ". Callable from any thread; lines
/// do not mix. Control characters become blanks and overlong lines are cut, so that foreign text cannot forge
/// lines. Callers never pass passwords, nor texts that a client sent as a whole.
void logLine(std::string_view text);

} // namespace ipncsdk
