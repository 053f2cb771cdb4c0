#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QElapsedTimer>
#include <QtTest>

#include <windows.h>
// They need what windows.h declares.
#include <psapi.h>
#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <vector>

namespace {

/// What a process holds of the system.
struct Holdings {
    int handles = 0;
    int windows = 0;
    int threads = 0;
    double memory = 0; ///< MiB, in the machine's memory
};

/// The system's list of open handles as `NtQuerySystemInformation` fills it (SystemExtendedHandleInformation).
struct HandleList {
    struct Entry {
        PVOID object;
        ULONG_PTR process;
        ULONG_PTR handle;
        ULONG access;
        USHORT creator;
        USHORT type;
        ULONG attributes;
        ULONG reserved;
    };
    ULONG_PTR count;
    ULONG_PTR reserved;
    Entry entries[1];
};

/// Counted in the system's list: Wine's `GetProcessHandleCount` says 0.
int handlesOf(DWORD process) {
    constexpr auto extendedHandles = static_cast<SYSTEM_INFORMATION_CLASS>(64);
    std::vector<char> room(1 << 20);
    ULONG needed = 0;
    while (NtQuerySystemInformation(extendedHandles, room.data(), static_cast<ULONG>(room.size()), &needed) ==
           static_cast<NTSTATUS>(0xC0000004)) // longer than there is room for
        room.resize(room.size() * 2);
    const auto* const list = reinterpret_cast<const HandleList*>(room.data());
    return static_cast<int>(std::count_if(list->entries, list->entries + list->count,
                                          [&](const HandleList::Entry& entry) { return entry.process == process; }));
}

BOOL CALLBACK countChild(HWND /*window*/, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

struct WindowCount {
    DWORD process;
    int count;
};

BOOL CALLBACK countWindow(HWND window, LPARAM target) {
    auto& wanted = *reinterpret_cast<WindowCount*>(target);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == wanted.process) {
        ++wanted.count;
        EnumChildWindows(window, countChild, reinterpret_cast<LPARAM>(&wanted.count));
    }
    return TRUE;
}

/// All that it has made, seen or not, and what is in them.
int windowsOf(DWORD process) {
    WindowCount wanted{process, 0};
    EnumWindows(countWindow, reinterpret_cast<LPARAM>(&wanted));
    return wanted.count;
}

int threadsOf(DWORD process) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof(entry);
    int count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more != 0; more = Thread32Next(snapshot, &entry))
        count += entry.th32OwnerProcessID == process ? 1 : 0;
    CloseHandle(snapshot);
    return count;
}

Holdings holdingsOf(qint64 id) {
    const auto process = static_cast<DWORD>(id);
    const HANDLE handle = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process);
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(handle, &memory, sizeof(memory));
    const Holdings result{handlesOf(process), windowsOf(process), threadsOf(process),
                          static_cast<double>(memory.WorkingSetSize) / (1 << 20)};
    CloseHandle(handle);
    return result;
}

template <typename Member>
auto greatest(const std::vector<Holdings>& samples, std::size_t from, std::size_t to, Member member) {
    auto result = samples[from].*member;
    for (std::size_t i = from; i < to; ++i)
        result = std::max(result, samples[i].*member);
    return result;
}

} // namespace

/// A live wall on Windows: it is seen, it goes on, and it holds no more of the system after minutes than before.
/// CORVANTA_WALL_MINUTES says for how long it is watched.
class tst_WindowsWall final : public ProgramTest {
    Q_OBJECT
private slots:
    void staysAsItIs();
};

void tst_WindowsWall::staysAsItIs() {
    bool isSet = false;
    const int asked = qEnvironmentVariableIntValue("CORVANTA_WALL_MINUTES", &isSet);
    const qint64 length = (isSet ? asked : 1) * 60'000;
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("九窗口"), 9));
    QStringList names = window().rows().mid(1, 9);
    for (const QString& name : qAsConst(names))
        STEP(doubleClickRow(name));
    for (int tile = 0; tile < 9; ++tile)
        QVERIFY(sight::becomesLive(window().tile(tile)));
    std::vector<Holdings> samples;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < length) {
        // Nothing is waited for: this is how often a sample is taken.
        QTest::qWait(static_cast<int>(length / 40));
        samples.push_back(holdingsOf(program().pid()));
    }
    for (int tile = 0; tile < 9; ++tile)
        QVERIFY(sight::becomesLive(window().tile(tile)));
    if (qEnvironmentVariableIsSet("CORVANTA_E2E_PICTURES"))
        QVERIFY(Desktop::look().save(qEnvironmentVariable("CORVANTA_E2E_PICTURES") + QStringLiteral("/wall.png")));

    // The second quarter, when everything has been loaded, against the last.
    const std::size_t quarter = samples.size() / 4;
    const auto grown = [&](auto member) {
        return greatest(samples, 3 * quarter, samples.size(), member) -
               greatest(samples, quarter, 2 * quarter, member);
    };
    const QString figures = QStringLiteral("handles %1, windows %2, threads %3, memory %4 MiB")
                                .arg(grown(&Holdings::handles))
                                .arg(grown(&Holdings::windows))
                                .arg(grown(&Holdings::threads))
                                .arg(grown(&Holdings::memory), 0, 'f', 1);
    qInfo().noquote() << "held at the end:" << samples.back().handles << samples.back().windows
                      << samples.back().threads << samples.back().memory << "grown:" << figures;
    const Holdings& last = samples.back();
    QVERIFY(last.handles > 0 && last.windows > 0 && last.threads > 0 && last.memory > 0); // the system tells
    QVERIFY2(grown(&Holdings::handles) <= 20, qPrintable(figures));
    QVERIFY2(grown(&Holdings::windows) <= 5, qPrintable(figures));
    QVERIFY2(grown(&Holdings::threads) <= 2, qPrintable(figures));
    QVERIFY2(grown(&Holdings::memory) <= 16, qPrintable(figures));
    quit();
}

QTEST_MAIN(tst_WindowsWall)
#include "tst_WindowsWall.moc"
