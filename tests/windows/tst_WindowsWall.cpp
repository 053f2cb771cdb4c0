#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QElapsedTimer>
#include <QtTest>

#include <windows.h>
// They need what windows.h declares.
#include <psapi.h>
#include <tlhelp32.h>

#include <algorithm>
#include <vector>

namespace {

/// What a process holds of the system.
struct Holdings {
    int handles = 0;
    int windows = 0;
    int drawings = 0;
    int threads = 0;
    double memory = 0; ///< its own, MiB
};

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
    DWORD handles = 0;
    GetProcessHandleCount(handle, &handles);
    PROCESS_MEMORY_COUNTERS_EX memory{};
    GetProcessMemoryInfo(handle, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof(memory));
    const Holdings result{static_cast<int>(handles), static_cast<int>(GetGuiResources(handle, GR_USEROBJECTS)),
                          static_cast<int>(GetGuiResources(handle, GR_GDIOBJECTS)), threadsOf(process),
                          static_cast<double>(memory.PrivateUsage) / (1 << 20)};
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
    const QString figures = QStringLiteral("handles %1, windows %2, drawings %3, threads %4, memory %5 MiB")
                                .arg(grown(&Holdings::handles))
                                .arg(grown(&Holdings::windows))
                                .arg(grown(&Holdings::drawings))
                                .arg(grown(&Holdings::threads))
                                .arg(grown(&Holdings::memory), 0, 'f', 1);
    qInfo().noquote() << "held at the end:" << samples.back().handles << samples.back().windows
                      << samples.back().drawings << samples.back().threads << samples.back().memory
                      << "grown:" << figures;
    QVERIFY2(grown(&Holdings::handles) <= 20, qPrintable(figures));
    QVERIFY2(grown(&Holdings::windows) <= 5, qPrintable(figures));
    QVERIFY2(grown(&Holdings::drawings) <= 20, qPrintable(figures));
    QVERIFY2(grown(&Holdings::threads) <= 2, qPrintable(figures));
    QVERIFY2(grown(&Holdings::memory) <= 16, qPrintable(figures));
    quit();
}

QTEST_MAIN(tst_WindowsWall)
#include "tst_WindowsWall.moc"
