// Installs the crash handler and crashes: crash_subject HOW. Started by the handler as its helper it writes its
// arguments to the file that BOX_FILE names, in place of showing a box.

#include "platform/CrashHandler.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

using corvanta::platform::CrashStack;

namespace {

// The sanitizers' own checks come before the crash that is wanted here.
#if defined(__clang__) || !defined(__SANITIZE_THREAD__)
#define CRASHES __attribute__((noinline, no_sanitize("undefined", "address")))
#else
#define CRASHES __attribute__((noinline, no_sanitize("undefined", "address", "thread")))
#endif

/// An address that nothing is at and the compiler knows nothing of.
volatile int* volatile nowhere = nullptr;

CRASHES void writeToNull() {
    *nowhere = 1;
}

volatile int depth = 1;

CRASHES int overflowStack(int count) { // NOLINT(misc-no-recursion)
    volatile char frame[512];
    frame[0] = static_cast<char>(count);
    if (depth < 0) { // never, which the compiler does not know
        return 0;
    }
    return overflowStack(count + 1) + frame[0];
}

/// Crashes with a stack pointer that leads nowhere, so that the stack cannot be walked.
CRASHES void loseStack() {
#ifdef __x86_64__
    asm volatile("movq $64, %%rsp\n\tmovq $64, %%rbp\n\tmovl $1, 0" ::: "memory");
#else
    writeToNull();
#endif
}

void crashTwice() {
    std::atomic<int> ready{0};
    const auto crash = [&ready] {
        ++ready;
        while (ready < 2) {
        }
        writeToNull();
    };
    std::thread other(crash);
    crash();
    other.join();
}

void crash(std::string_view how) {
    if (how == "null") {
        writeToNull();
    } else if (how == "abort") {
        std::abort();
    } else if (how == "exception") {
        throw std::runtime_error("nobody catches this");
    } else if (how == "fpe") {
        std::raise(SIGFPE);
    } else if (how == "ill") {
        __builtin_trap();
    } else if (how == "overflow") {
        overflowStack(0);
    } else if (how == "thread") {
        std::thread(writeToNull).join();
    } else if (how == "thread-overflow") {
        std::thread([] {
            const CrashStack stack;
            overflowStack(0);
        }).join();
    } else if (how == "after-thread-stack") {
        // The stack of the thread is gone with it; the main thread's is still there.
        std::thread([] { const CrashStack stack; }).join();
        { const CrashStack inner; }
        overflowStack(0);
    } else if (how == "two-threads") {
        crashTwice();
    } else if (how == "lost-stack") {
        loseStack();
    } else if (how == "no-folder") {
        std::filesystem::remove(std::filesystem::current_path());
        writeToNull();
    }
}

int standInForBox(int argc, char** argv) {
    const char* const file = std::getenv("BOX_FILE");
    if (file == nullptr) {
        return 2;
    }
    // Seen whole or not at all.
    const std::string unfinished = std::string(file) + ".part";
    std::FILE* const out = std::fopen(unfinished.c_str(), "a");
    if (out == nullptr) {
        return 1;
    }
    for (int i = 1; i < argc; ++i) {
        std::fprintf(out, "%s\n", argv[i]);
    }
    std::fclose(out);
    return std::rename(unfinished.c_str(), file);
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], corvanta::platform::crashReportArgument) == 0) {
        return standInForBox(argc, argv);
    }
    if (argc != 2 || !corvanta::platform::installCrashHandler({})) {
        return 2;
    }
    crash(argv[1]);
    return 0;
}
