#include "media/ThreadRank.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace ipncsdk::media {

void setRank(ThreadRank rank) {
    const bool isStream = rank == ThreadRank::Stream;
#ifdef _WIN32
    SetThreadPriority(GetCurrentThread(), isStream ? THREAD_PRIORITY_BELOW_NORMAL : THREAD_PRIORITY_LOWEST);
#else
    // Linux gives each thread a nice value of its own, and takes a thread's id where others expect a process's.
    const int nice = isStream ? 12 : 16;
    setpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)), nice);
#endif
}

} // namespace ipncsdk::media
