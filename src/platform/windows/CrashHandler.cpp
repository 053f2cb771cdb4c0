#include "platform/CrashHandler.h"

#include <cwchar>

// dbghelp.h needs what windows.h declares.
// clang-format off
#include <windows.h>
#include <dbghelp.h>
// clang-format on

namespace corvanta::platform {

namespace {

CrashHandlerOptions installedOptions;
/// Id of the thread whose crash is being reported, 0 while there is none.
volatile LONG crashingThread = 0;

void writeDump(EXCEPTION_POINTERS* exception) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t name[32];
    std::swprintf(name, 32, L"%04u_%02u_%02u_%02u%02u%02u.DMP", static_cast<unsigned>(now.wYear),
                  static_cast<unsigned>(now.wMonth), static_cast<unsigned>(now.wDay),
                  static_cast<unsigned>(now.wHour), static_cast<unsigned>(now.wMinute),
                  static_cast<unsigned>(now.wSecond));
    const HANDLE file = CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return;
    }
    MINIDUMP_EXCEPTION_INFORMATION information;
    information.ThreadId = GetCurrentThreadId();
    information.ExceptionPointers = exception;
    information.ClientPointers = TRUE;
    MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal, &information, nullptr,
                      nullptr);
    CloseHandle(file);
}

// A thread that other compilers' code started may come here with a stack that our compiler finds misaligned.
#ifdef __i386__
__attribute__((force_align_arg_pointer))
#endif
LONG WINAPI
reportCrash(EXCEPTION_POINTERS* exception) {
    const LONG current = static_cast<LONG>(GetCurrentThreadId());
    const LONG first = InterlockedCompareExchange(&crashingThread, current, 0);
    if (first == current) {
        return EXCEPTION_EXECUTE_HANDLER; // the report itself crashed
    }
    if (first != 0) {
        Sleep(INFINITE); // the process ends when the first crash has been reported
    }
    writeDump(exception);
    if (installedOptions.showReport != nullptr) {
        const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
        installedOptions.showReport(static_cast<std::uint32_t>(record.ExceptionCode),
                                    reinterpret_cast<std::uintptr_t>(record.ExceptionAddress));
    }
    return EXCEPTION_EXECUTE_HANDLER;
}

/// What a thread keeps back of its stack for handling its overflow.
constexpr ULONG guaranteedStack = 64 * 1024;

} // namespace

bool installCrashHandler(const CrashHandlerOptions& options) {
    installedOptions = options;
    ULONG size = guaranteedStack;
    SetThreadStackGuarantee(&size);
    SetUnhandledExceptionFilter(reportCrash);
    return true;
}

CrashStack::CrashStack() {
    ULONG size = guaranteedStack;
    SetThreadStackGuarantee(&size);
}

CrashStack::~CrashStack() = default;

} // namespace corvanta::platform
