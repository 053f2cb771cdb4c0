#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace corvanta::platform {

/// The first argument of the program started as the helper that shows a crash; code and address follow, both in
/// lower-case hexadecimal without a prefix.
inline constexpr const char* crashReportArgument = "--crash-report";

struct CrashHandlerOptions {
    /// Windows: shows the report to the user, on the thread that crashed, after the dump is written.
    /// Linux: not called, since nothing but system calls may run in a process that crashed.
    void (*showReport)(std::uint32_t code, std::uint64_t address) = nullptr;

    /// Linux: the program started with `crashReportArgument`, which shows the report from a process of its own.
    /// Empty: this program itself. Windows: not used.
    std::filesystem::path helper;
};

/// From now on a crash leaves a file, shows a report and ends the process.
///
/// The file is named by the local time of the crash, "yyyy_MM_dd_hhmmss.DMP", and lies in what is the current
/// directory then. One that is there already is overwritten. If it cannot be created the report comes all the same.
///
/// Windows: any exception that nobody handles; the file is a minidump; code and address are the exception's.
/// Linux: SIGSEGV, SIGABRT, SIGBUS, SIGFPE and SIGILL; the file is a text with signal, addresses, registers, loaded
/// modules and backtrace; the code is the signal's number and the address that of the instruction. The process then
/// ends by the same signal. A crash while a crash is reported ends the process at once; another thread's waits.
///
/// To be called once, on the main thread, before others start. Returns false if the system refused.
bool installCrashHandler(const CrashHandlerOptions& options);

/// Lets a stack overflow of the current thread be reported, too, for as long as it lives: the handler gets a stack of
/// its own. Every other crash is reported without it. The main thread has one from `installCrashHandler`. To be made
/// and destroyed on the thread itself, first and last thing.
class CrashStack final {
public:
    CrashStack();
    ~CrashStack();
    CrashStack(const CrashStack&) = delete;
    CrashStack& operator=(const CrashStack&) = delete;

private:
    void* memory_ = nullptr;   ///< guard page and stack; null where the system needs none or has none to give
    void* previous_ = nullptr; ///< start of the stack that was set before, null if there was none
    std::size_t previousSize_ = 0;
};

} // namespace corvanta::platform
