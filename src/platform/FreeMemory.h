#pragma once

namespace corvanta::platform {

/// Gives the system back what the process has freed and holds for later. Many threads that come and go leave their
/// free memory in pieces of which the allocator returns none by itself. Takes milliseconds; any thread.
void returnFreeMemory();

} // namespace corvanta::platform
