#pragma once

namespace corvanta::platform {

/// Lets many threads share a few heaps, since what is free in the heap of one thread is of no use to another. To be
/// called before there are many; later it changes nothing for those that there are.
void shareHeaps();

/// Gives the system back what the process has freed and holds for later. Many threads that come and go leave their
/// free memory in pieces of which the allocator returns none by itself. Takes milliseconds; any thread.
void returnFreeMemory();

} // namespace corvanta::platform
