#include "platform/FreeMemory.h"

#include <windows.h>

namespace corvanta::platform {

void returnFreeMemory() {
    HeapCompact(GetProcessHeap(), 0);
}

} // namespace corvanta::platform
