// Everything below reportCrash() runs in a process that has crashed: in whatever state its memory and locks are. It
// makes system calls, reads what was prepared, and takes no memory and no lock.
#include "platform/CrashHandler.h"

#include "platform/linux/CrashFile.h"
#include "platform/linux/LocalTimeTable.h"

#include <execinfo.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvanta::platform {

namespace {

struct FatalSignal {
    int number;
    std::string_view name;
};
constexpr std::array<FatalSignal, 5> fatalSignals{
    {{SIGSEGV, "SIGSEGV"}, {SIGABRT, "SIGABRT"}, {SIGBUS, "SIGBUS"}, {SIGFPE, "SIGFPE"}, {SIGILL, "SIGILL"}}};

/// A report that has not ended after so many seconds never will: then the process ends without.
constexpr unsigned longestReport = 20;

/// Usable bytes of a handler's stack: the unwinder and the kernel's copy of wide registers need some 10 KiB each.
constexpr std::size_t stackSize = std::size_t{128} * 1024;

constexpr int mostFrames = 64;

/// What the handler needs, made by installCrashHandler() and never changed or freed afterwards.
struct Prepared {
    LocalTimeTable times;
    std::string helper;
    std::vector<std::string> environment;
    std::vector<char*> environmentPointers; ///< into `environment`, and a null
    HexText code{};                         ///< filled by the handler, which runs once
    HexText address{};                      ///< likewise
    std::array<char*, 5> arguments{};       ///< for the helper, and a null
    std::array<void*, mostFrames> frames{};
    std::optional<CrashStack> mainStack; ///< of the thread that installs
};
Prepared* prepared = nullptr;

/// The thread whose crash is being reported; 0 while there is none.
std::atomic<pid_t> crashingThread{0};
static_assert(std::atomic<pid_t>::is_always_lock_free);

std::uint64_t instructionOf(const ucontext_t& context) {
#if defined(__x86_64__)
    return static_cast<std::uint64_t>(context.uc_mcontext.gregs[REG_RIP]);
#elif defined(__i386__)
    return static_cast<std::uint32_t>(context.uc_mcontext.gregs[REG_EIP]);
#elif defined(__aarch64__)
    return context.uc_mcontext.pc;
#else
    static_cast<void>(context);
    return 0;
#endif
}

void writeRegisters(CrashFile& file, const ucontext_t& context) {
    const auto write = [&file](std::string_view name, std::uint64_t value) {
        file.text(name);
        file.text("=");
        file.hex(value);
        file.text("\n");
    };
#if defined(__x86_64__)
    constexpr std::array<std::pair<std::string_view, int>, 17> names{{
        {"rip", REG_RIP},
        {"rsp", REG_RSP},
        {"rbp", REG_RBP},
        {"rax", REG_RAX},
        {"rbx", REG_RBX},
        {"rcx", REG_RCX},
        {"rdx", REG_RDX},
        {"rsi", REG_RSI},
        {"rdi", REG_RDI},
        {"r8", REG_R8},
        {"r9", REG_R9},
        {"r10", REG_R10},
        {"r11", REG_R11},
        {"r12", REG_R12},
        {"r13", REG_R13},
        {"r14", REG_R14},
        {"r15", REG_R15},
    }};
    for (const auto& [name, index] : names) {
        write(name, static_cast<std::uint64_t>(context.uc_mcontext.gregs[index]));
    }
#else
    write("pc", instructionOf(context));
#endif
}

/// The C library's backtrace() was called once beforehand, so it loads nothing here; its unwinder finds the modules
/// without a lock (glibc 2.35 and gcc 12 on). Frame pointers to walk by ourselves are in none of the libraries.
void writeBacktrace(CrashFile& file, std::uint64_t instruction) {
    const int count = backtrace(prepared->frames.data(), mostFrames);
    int first = 0;
    for (int i = 0; i < count; ++i) {
        // What is above the crash is this handler.
        if (reinterpret_cast<std::uintptr_t>(prepared->frames[static_cast<std::size_t>(i)]) == instruction) {
            first = i;
        }
    }
    for (int i = first; i < count; ++i) {
        const auto address = reinterpret_cast<std::uintptr_t>(prepared->frames[static_cast<std::size_t>(i)]);
        file.text("#");
        file.decimal(static_cast<std::uint64_t>(i - first));
        file.text(" ");
        file.hex(address);
        file.text(" ");
        file.place(address);
        file.text("\n");
    }
}

void writeHead(CrashFile& file, const siginfo_t& info, const ucontext_t& context) {
    file.text("signal: ");
    file.decimal(static_cast<std::uint64_t>(info.si_signo));
    for (const FatalSignal& signal : fatalSignals) {
        if (signal.number == info.si_signo) {
            file.text(" ");
            file.text(signal.name);
        }
    }
    // A positive code comes from the kernel, which then names the address; others were sent by a process.
    file.text(info.si_code > 0 ? "\naddress: " : "\nsent by process: ");
    if (info.si_code > 0) {
        file.hex(reinterpret_cast<std::uintptr_t>(info.si_addr));
    } else {
        file.decimal(static_cast<std::uint64_t>(info.si_pid));
    }
    const std::uint64_t instruction = instructionOf(context);
    file.text("\npc: ");
    file.hex(instruction);
    file.text(" ");
    file.place(instruction);
    file.text("\nprocess: ");
    file.decimal(static_cast<std::uint64_t>(getpid()));
    file.text("\nthread: ");
    file.decimal(static_cast<std::uint64_t>(crashingThread.load()));
    file.text("\n\nregisters:\n");
    writeRegisters(file, context);
}

pid_t forkOnly() {
#if defined(__GLIBC_PREREQ)
#if __GLIBC_PREREQ(2, 34)
    return _Fork(); // runs none of the at-fork functions, which take locks
#else
    return fork();
#endif
#else
    return fork();
#endif
}

void startHelper(int signal, std::uint64_t instruction) {
    writeHex(static_cast<std::uint64_t>(signal), prepared->code);
    writeHex(instruction, prepared->address);
    if (forkOnly() != 0) {
        return;
    }
    // The helper starts like any program: no signal blocked, and nothing of ours held open.
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    // Whoever reads its diagnostics may stop with the process that crashed; the helper must outlive both.
    struct sigaction action {};
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, nullptr);
#ifdef SYS_close_range
    syscall(SYS_close_range, 3U, ~0U, 0U);
#endif
    execve(prepared->helper.c_str(), prepared->arguments.data(), prepared->environmentPointers.data());
    _exit(127);
}

/// Lets the process end as it would have without a handler, so that whoever started it sees why.
[[noreturn]] void endBySignal(int signal) {
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigaction(signal, &action, nullptr);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
    // Directed at this thread, so that it is delivered before the next line.
    syscall(SYS_tgkill, getpid(), static_cast<pid_t>(syscall(SYS_gettid)), signal);
    pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
    _exit(128 + signal);
}

/// The signals of `fatalSignals` are blocked in here: when one of them strikes all the same the kernel ends the
/// process by it, so a crash of the report cannot loop.
void reportCrash(int signal, siginfo_t* info, void* context) {
    pid_t none = 0;
    if (!crashingThread.compare_exchange_strong(none, static_cast<pid_t>(syscall(SYS_gettid)))) {
        for (;;) {
            pause(); // until the first crash has been reported
        }
    }
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigaction(SIGALRM, &action, nullptr);
    alarm(longestReport);

    const auto& registers = *static_cast<const ucontext_t*>(context);
    const std::uint64_t instruction = instructionOf(registers);
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    std::array<char, LocalTimeTable::nameSize> name;
    prepared->times.writeFileName(now.tv_sec, name);
    {
        CrashFile file(name.data());
        writeHead(file, *info, registers);
        file.text("\nmodules:\n");
        file.modules();
        // The user hears of it even if the stack is too broken to be walked.
        startHelper(signal, instruction);
        file.text("\nbacktrace:\n");
        writeBacktrace(file, instruction);
    }
    endBySignal(signal);
}

void prepareHelper(const std::filesystem::path& helper) {
    prepared->helper = helper.empty() ? std::filesystem::read_symlink("/proc/self/exe").string() : helper.string();
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        prepared->environment.emplace_back(*variable);
    }
    for (std::string& variable : prepared->environment) {
        prepared->environmentPointers.push_back(variable.data());
    }
    prepared->environmentPointers.push_back(nullptr);
    prepared->arguments = {prepared->helper.data(), const_cast<char*>(crashReportArgument), prepared->code.data(),
                           prepared->address.data(), nullptr};
}

} // namespace

bool installCrashHandler(const CrashHandlerOptions& options) {
    // Lives as long as the process: a crash may come after the last destructor.
    static auto& own = *new Prepared;
    prepared = &own;
    prepared->times.prepare(std::time(nullptr));
    prepareHelper(options.helper);
    backtrace(prepared->frames.data(), mostFrames);
    if (!prepared->mainStack)
        prepared->mainStack.emplace();

    struct sigaction action {};
    action.sa_sigaction = reportCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (const FatalSignal& signal : fatalSignals) {
        sigaddset(&action.sa_mask, signal.number);
    }
    bool isInstalled = true;
    for (const FatalSignal& signal : fatalSignals) {
        isInstalled = sigaction(signal.number, &action, nullptr) == 0 && isInstalled;
    }
    return isInstalled;
}

CrashStack::CrashStack() {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* memory =
        mmap(nullptr, page + stackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    if (memory == MAP_FAILED) {
        return;
    }
    // Stacks grow down: what runs over this one meets the guard page, not somebody's memory.
    mprotect(memory, page, PROT_NONE);
    stack_t stack{};
    stack.ss_sp = static_cast<char*>(memory) + page;
    stack.ss_size = stackSize;
    stack_t before{};
    if (sigaltstack(&stack, &before) != 0) {
        munmap(memory, page + stackSize);
        return;
    }
    memory_ = memory;
    if ((before.ss_flags & SS_DISABLE) == 0) {
        previous_ = before.ss_sp;
        previousSize_ = before.ss_size;
    }
}

CrashStack::~CrashStack() {
    if (memory_ == nullptr) {
        return;
    }
    stack_t before{};
    before.ss_sp = previous_;
    before.ss_size = previousSize_;
    before.ss_flags = previous_ == nullptr ? SS_DISABLE : 0;
    sigaltstack(&before, nullptr);
    munmap(memory_, static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + stackSize);
}

} // namespace corvanta::platform
