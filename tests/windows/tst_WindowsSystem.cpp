#include "base/AppPaths.h"
#include "base/LocalTime.h"
#include "base/WholeFile.h"
#include "platform/Autostart.h"
#include "platform/CompoundFile.h"
#include "platform/DataProtection.h"
#include "platform/Disks.h"
#include "platform/RawFile.h"
#include "platform/RuntimeFolder.h"
#include "storage/avi/AviWriter.h"

#include <QDir>
#include <QSettings>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <functional>
#include <future>
#include <thread>

using namespace corvanta;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
namespace fs = std::filesystem;
using Wait = std::function<void(milliseconds)>;
Q_DECLARE_METATYPE(Wait)

namespace {

fs::path pathOf(const QString& path) {
    return {path.toStdWString()};
}

std::span<const std::byte> bytes(const char* text) {
    return {reinterpret_cast<const std::byte*>(text), std::char_traits<char>::length(text)};
}

} // namespace

/// What the program asks of Windows: each answer against another way to it.
class tst_WindowsSystem final : public QObject {
    Q_OBJECT
private slots:
    void autostart();
    void drives();
    void freeSpace();
    void secrets();
    void compoundFile();
    void filesHaveOneWriter();
    void filesAreReplacedWhenTheirReaderHasEnded();
    void paths_data();
    void paths();
    void dataFolderCanBeWritten();
    void summerTime_data();
    void summerTime();
    void waitsLastAsLongAsAsked_data();
    void waitsLastAsLongAsAsked();
};

void tst_WindowsSystem::autostart() {
    const QString key = QStringLiteral("HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run");
    const auto value = [&key] {
        return QSettings(key, QSettings::NativeFormat).value(QStringLiteral("wirtepad"));
    };
    QVERIFY(!platform::setAutostart(true, pathOf(QStringLiteral("C:/程序 目录/corvanta.exe"))));
    QVERIFY(platform::isAutostartEnabled());
    QCOMPARE(value().toString(), QStringLiteral("C:\\程序 目录\\corvanta.exe"));
    QVERIFY(!platform::setAutostart(false, {}));
    QVERIFY(!platform::isAutostartEnabled());
    QVERIFY(value().isValid() && value().toString().isEmpty()); // it stays, empty
}

void tst_WindowsSystem::drives() {
    const std::vector<std::string> roots = platform::driveRoots();
    QVERIFY(std::find(roots.begin(), roots.end(), "C:/") != roots.end());
    for (const std::string& root : roots) {
        QVERIFY(root.size() == 3 && root[0] >= 'A' && root[0] <= 'Z' && root.substr(1) == ":/");
        QVERIFY2(QDir(QString::fromStdString(root)).exists(), root.c_str());
    }
    QCOMPARE(QString::fromStdString(platform::systemDrive()), qEnvironmentVariable("SystemDrive") + QLatin1Char('/'));
    QVERIFY(platform::runtimeFolder() && fs::is_directory(*platform::runtimeFolder()));
}

void tst_WindowsSystem::freeSpace() {
    QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/空间 XXXXXX"));
    const auto space = platform::diskSpace(pathOf(dir.path()));
    const QStorageInfo other(dir.path());
    QVERIFY(space && space->total > 0 && space->available <= space->total);
    QCOMPARE(space->total, static_cast<std::uint64_t>(other.bytesTotal()));
    // Somebody else may write in between.
    const auto difference = static_cast<qint64>(space->available) - other.bytesAvailable();
    QVERIFY2(std::abs(difference) < 1'000'000'000, qPrintable(QString::number(difference)));
    QVERIFY(!platform::diskSpace(pathOf(dir.path() + QStringLiteral("/none"))));
}

void tst_WindowsSystem::secrets() {
    const std::string secret("a\0b\xff 密码", 12);
    const auto kept = platform::protectForUser(secret);
    QVERIFY(kept && kept->find(secret) == std::string::npos);
    QVERIFY(platform::unprotectForUser(*kept) == secret);
    QVERIFY(platform::unprotectForUser(kept->substr(0, kept->size() / 2)) != secret);
    // All of it, since Wine looks at some of the bytes only.
    std::string damaged = *kept;
    for (char& byte : damaged)
        byte = static_cast<char>(byte ^ 1);
    QVERIFY(platform::unprotectForUser(damaged) != secret);
    QVERIFY(!platform::unprotectForUser("nothing"));
}

void tst_WindowsSystem::compoundFile() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("日志 1.xls"));
    const auto file = platform::createCompoundFile(pathOf(path), "Workbook");
    QVERIFY(file != nullptr);
    const std::string content(10'000, 'x');
    QVERIFY(file->write(content.data(), content.size()));
    QVERIFY(file->close());
    QFile written(path);
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QByteArray all = written.readAll();
    QVERIFY(all.startsWith(QByteArray::fromHex("d0cf11e0a1b11ae1")));
    QVERIFY(all.contains(QByteArray(512, 'x')));
    QVERIFY(platform::createCompoundFile(pathOf(path), "Workbook") == nullptr); // none is overwritten
}

void tst_WindowsSystem::filesHaveOneWriter() {
    using Access = platform::RawFile::Access;
    QTemporaryDir dir;
    const fs::path path = pathOf(dir.filePath(QStringLiteral("one.avi")));
    auto file = platform::RawFile::open(path, Access::CreateNew);
    QVERIFY(file != nullptr && file->write(bytes("0123456789")));
    QVERIFY(platform::RawFile::isBeingWritten(path));
    QVERIFY(platform::RawFile::open(path, Access::Update) == nullptr);
    QVERIFY(platform::RawFile::open(path, Access::CreateNew) == nullptr);
    const auto reader = platform::RawFile::open(path, Access::Read);
    QVERIFY(reader != nullptr);
    std::array<std::byte, 4> read{};
    QCOMPARE(reader->readAt(8, read), std::size_t{2});
    QVERIFY(file->truncate(4));
    file.reset();
    QCOMPARE(reader->size(), std::uint64_t{4});
    QVERIFY(!platform::RawFile::isBeingWritten(path));
    QVERIFY(platform::RawFile::open(path, Access::Update) != nullptr);
}

void tst_WindowsSystem::filesAreReplacedWhenTheirReaderHasEnded() {
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("设置/set.json"));
    QCOMPARE(writeWholeFile(path, "old"), QString());
    // As a virus scanner has it open: what is read may be written, but keeps its name.
    const HANDLE reader = CreateFileW(pathOf(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    QVERIFY(reader != INVALID_HANDLE_VALUE);
    const auto end = std::async(std::launch::async, [reader] {
        std::this_thread::sleep_for(milliseconds(100));
        CloseHandle(reader);
    });
    QCOMPARE(writeWholeFile(path, "new"), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("new"));
    QCOMPARE(QDir(dir.filePath(QStringLiteral("设置"))).entryList(QDir::Files).size(), 1);
}

void tst_WindowsSystem::paths_data() {
    QTest::addColumn<QString>("folder");
    QTest::newRow("Chinese letters and blanks") << QStringLiteral("录像 目录/东大门 入口");
    QTest::newRow("beyond the old letters") << QStringLiteral("\xf0\x9f\x8e\xa5 é ß");
    // Longer than 260 together with what is above: the system has to be told.
    QTest::newRow("long")
        << QStringList(QVector<QString>(5, QStringLiteral("录像").repeated(30)).toList()).join(QLatin1Char('/'));
}

void tst_WindowsSystem::paths() {
    QFETCH(QString, folder);
    QTemporaryDir dir;
    const QString full = dir.filePath(folder);
    QVERIFY(QDir().mkpath(full));
    const QString name = full + QStringLiteral("/20261122 录像.avi");
    QFile file(name);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(file.errorString()));
    QCOMPARE(file.write("0123456789"), 10);
    file.close();
    const auto raw = platform::RawFile::open(pathOf(name), platform::RawFile::Access::Read);
    QVERIFY(raw != nullptr);
    QCOMPARE(raw->size(), std::uint64_t{10});
    QCOMPARE(QDir(full).entryList(QDir::Files).size(), 1);
    QVERIFY(platform::diskSpace(pathOf(full)));
    QVERIFY(QFile::remove(name));
}

void tst_WindowsSystem::dataFolderCanBeWritten() {
    const AppPaths paths = AppPaths::forApplication();
    QVERIFY(QDir(paths.root()).exists());
    QTemporaryFile probe(paths.root() + QStringLiteral("/probe-XXXXXX"));
    QVERIFY(probe.open());
}

void tst_WindowsSystem::summerTime_data() {
    QTest::addColumn<qint64>("moment"); // s since 1970
    QTest::newRow("winter") << QDateTime({2026, 1, 15}, {12, 0}, Qt::UTC).toSecsSinceEpoch();
    QTest::newRow("summer") << QDateTime({2026, 7, 15}, {12, 0}, Qt::UTC).toSecsSinceEpoch();
    QTest::newRow("beyond 32 bits") << QDateTime({2040, 7, 15}, {12, 0}, Qt::UTC).toSecsSinceEpoch();
}

void tst_WindowsSystem::summerTime() {
    QFETCH(qint64, moment);
    const QString expected = QDateTime::fromSecsSinceEpoch(moment).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QCOMPARE(QString::fromStdString(ipncsdk::localTime(moment * 1000, "%Y-%m-%d %H:%M:%S")), expected);
}

void tst_WindowsSystem::waitsLastAsLongAsAsked_data() {
    QTest::addColumn<Wait>("wait");
    const auto row = [](const char* name, Wait wait) {
        QTest::newRow(name) << wait;
    };
    row("sleep", [](milliseconds time) { std::this_thread::sleep_for(time); });
    const auto onCondition = [](auto wait) {
        return [wait](milliseconds time) {
            std::mutex mutex;
            std::condition_variable condition;
            std::unique_lock lock(mutex);
            wait(condition, lock, time);
        };
    };
    row("condition", onCondition([](auto& condition, auto& lock, milliseconds time) {
            QVERIFY(!condition.wait_for(lock, time, [] { return false; }));
        }));
    row("future", [](milliseconds time) { std::promise<void>().get_future().wait_for(time); });
}

// A timespec of another size than that of the compiler's libraries ends every wait with the second that has begun.
void tst_WindowsSystem::waitsLastAsLongAsAsked() {
    QFETCH(Wait, wait);
    constexpr milliseconds asked{700};
    constexpr milliseconds grain{20}; // of the system's own clock
    for (int i = 0; i < 3; ++i) {
        const auto begin = steady_clock::now();
        wait(asked);
        QVERIFY(steady_clock::now() - begin >= asked - grain);
    }
}

QTEST_GUILESS_MAIN(tst_WindowsSystem)
#include "tst_WindowsSystem.moc"
