#include "platform/FreeMemory.h"

#include <windows.h>

namespace corvanta::platform {

// All threads use the one heap of the process here.
void shareHeaps() {}

void returnFreeMemory() {
    HeapCompact(GetProcessHeap(), 0);
}

} // namespace corvanta::platform
