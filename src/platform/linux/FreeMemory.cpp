#include "platform/FreeMemory.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace corvanta::platform {

void shareHeaps() {
#ifdef __GLIBC__
    constexpr int MostHeaps = 4; // otherwise eight for each processor
    mallopt(M_ARENA_MAX, MostHeaps);
#endif
}

void returnFreeMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace corvanta::platform
