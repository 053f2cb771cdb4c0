#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "storage/RecordingStorage.h"
#include "storage/SearchDiskThread.h"
#include "storage/StoredFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <thread>

namespace keys = corvanta::keys;
namespace storage = corvanta::storage;

namespace {

void writeFile(const QString& path, int size = 3) {
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(size, 'x')) == size);
}

storage::FileQuery query(const char* start, const char* end) {
    return *storage::FileQuery::fromTexts(QLatin1String(start), QLatin1String(end));
}

QStringList pathsOf(const std::vector<storage::FileRecord>& files, const QString& root) {
    QStringList result;
    for (const storage::FileRecord& file : files)
        result += file.path.mid(root.size() + 4); // after "ZEL/"
    result.sort();
    return result;
}

} // namespace

/// Stored files are found again, and new ones get their folder.
class tst_StoredFiles final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void search_data();
    void search();
    void record();
    void rangeOfTexts();
    void searchInItsThread();
    void cancelled();
    void deletedMeanwhile();
    void folders_data();
    void folders();
    void thresholdIsClampedAndKept();
    void askedByManyThreads();

private:
    QString root() const { return dir_->path() + QLatin1Char('/'); }
    std::unique_ptr<QTemporaryDir> dir_;
};

void tst_StoredFiles::init() {
    dir_ = std::make_unique<QTemporaryDir>();
}

void tst_StoredFiles::search_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QStringList>("kinds");
    QTest::addColumn<QStringList>("devices");
    QTest::addColumn<QStringList>("found");
    const QString a1 = QStringLiteral("A/LocalRecord/2024-03-04/20240304235959.avi");
    const QString a2 = QStringLiteral("A/LocalRecord/2024-03-05/20240305000000.avi");
    const QString a3 = QStringLiteral("A/Capture/2024-03-05/20240305101112123.jpg");
    const QString b1 = QStringLiteral("B 二/DeviceRecord/2024-03-05/20240305101112.mp4");
    const QString first = QStringLiteral("2000-01-01 00:00:00");
    const QString last = QStringLiteral("2030-01-01 00:00:00");
    const QString noon = QStringLiteral("2024-03-05 00:00:00");
    QTest::newRow("all") << first << last << QStringList() << QStringList() << QStringList{a3, a1, a2, b1};
    QTest::newRow("from a second on") << noon << last << QStringList() << QStringList() << QStringList{a3, a2, b1};
    QTest::newRow("up to a second") << first << noon << QStringList() << QStringList() << QStringList{a1, a2};
    QTest::newRow("within a second") << QStringLiteral("2024-03-05 10:11:12") << QStringLiteral("2024-03-05 10:11:12")
                                     << QStringList() << QStringList() << QStringList{a3, b1};
    QTest::newRow("kind") << first << last << QStringList{QStringLiteral("LocalRecord")} << QStringList()
                          << QStringList{a1, a2};
    QTest::newRow("device") << first << last << QStringList() << QStringList{QStringLiteral("B 二")}
                            << QStringList{b1};
    QTest::newRow("kind that climbs") << first << last << QStringList{QStringLiteral("../A/LocalRecord")}
                                      << QStringList() << QStringList();
    QTest::newRow("end before start") << last << first << QStringList() << QStringList() << QStringList();
}

void tst_StoredFiles::search() {
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(QStringList, kinds);
    QFETCH(QStringList, devices);
    QFETCH(QStringList, found);
    for (const char* const file :
         {"A/LocalRecord/2024-03-04/20240304235959.avi", "A/LocalRecord/2024-03-05/20240305000000.avi",
          "A/Capture/2024-03-05/20240305101112123.jpg", "B 二/DeviceRecord/2024-03-05/20240305101112.mp4",
          // none of these is a stored file
          "A/LocalRecord/2024-03-05/20240305.avi", "A/LocalRecord/2024-03-05/20241305000000.avi",
          "A/LocalRecord/2024-03-05/x20240305000000.avi", "A/LocalRecord/2024-03-05/20240305000000.txt",
          "A/LocalRecord/2024-03-05/.avi", "A/Inputdata/20240305000000.dat", "A/LocalRecord/20240305000000.avi"})
        writeFile(root() + QStringLiteral("ZEL/") + QString::fromUtf8(file));
    QVERIFY(QDir().mkpath(root() + QStringLiteral("ZEL/A/LocalRecord/2024-03-05/20240305070707.avi"))); // a folder
#ifndef Q_OS_WIN // what Qt makes there is a shortcut, a file like any other
    QVERIFY(QFile::link(root() + QStringLiteral("ZEL/A/LocalRecord/2024-03-05/20240305000000.avi"),
                        root() + QStringLiteral("ZEL/A/LocalRecord/2024-03-05/20240305010101.avi")));
#endif
    auto wanted = storage::FileQuery::fromTexts(start, end);
    QVERIFY(wanted.has_value());
    wanted->kinds = kinds;
    wanted->devices = devices;
    storage::SearchProgress progress;
    const auto files = storage::searchFiles({root(), QStringLiteral("/no/such/drive/")}, *wanted, progress);
    QCOMPARE(pathsOf(files, root()), found);
    QCOMPARE(progress.found.load(), found.size());
    QCOMPARE(progress.foldersDone.load(), progress.folders.load());
}

void tst_StoredFiles::record() {
    writeFile(root() + QStringLiteral("ZEL/A1/Image/2024-03-05/20240305070809.jpg"), 1234);
    storage::SearchProgress progress;
    const auto files = storage::searchFiles({root()}, query("2024-03-05 00:00:00", "2024-03-05 23:59:59"), progress);
    QCOMPARE(files.size(), std::size_t(1));
    const QVariantMap expected{
        {QStringLiteral("name"), QStringLiteral("20240305070809.jpg")},
        {QStringLiteral("path"), root() + QStringLiteral("ZEL/A1/Image/2024-03-05/20240305070809.jpg")},
        {QStringLiteral("size"), qint64(1234)},
        {QStringLiteral("type"), QStringLiteral("Image")},
        {QStringLiteral("ipncid"), QStringLiteral("A1")},
        {QStringLiteral("date"), QStringLiteral("2024-03-05")},
        {QStringLiteral("time"), QStringLiteral("07:08:09")}};
    QCOMPARE(files[0].toMap(), expected);
    QVERIFY(files[0].isPicture());
}

void tst_StoredFiles::rangeOfTexts() {
    QVERIFY(!storage::FileQuery::fromTexts(QStringLiteral("2024-03-05"), QStringLiteral("2024-03-05 23:59:59")));
    QVERIFY(!storage::FileQuery::fromTexts(QString(), QString()));
}

void tst_StoredFiles::searchInItsThread() {
    for (int day = 1; day <= 28; ++day)
        writeFile(root() + QStringLiteral("ZEL/A/Capture/2024-02-%1/202402%2.jpg")
                               .arg(day, 2, 10, QLatin1Char('0'))
                               .arg(day * 1000000 + 120000, 8, 10, QLatin1Char('0')));
    SearchDiskThread thread({root()}, query("2024-02-01 00:00:00", "2024-02-28 23:59:59"));
    QSignalSpy results(&thread, &SearchDiskThread::sigResult);
    thread.start();
    QVERIFY(results.wait(60000));
    QCOMPARE(thread.takeResult().size(), std::size_t(28));
    QCOMPARE(thread.progress().found.load(), 28);
    QVERIFY(thread.takeResult().empty());
}

void tst_StoredFiles::cancelled() {
    for (int i = 0; i < 200; ++i)
        writeFile(root() + QStringLiteral("ZEL/A%1/Capture/2024-02-01/20240201120000.jpg").arg(i));
    {
        SearchDiskThread thread({root()}, query("2024-02-01 00:00:00", "2024-02-28 23:59:59"));
        thread.cancel();
        thread.start();
        thread.join();
        QVERIFY(thread.takeResult().empty());
    }
    // Destroyed in the middle.
    SearchDiskThread thread({root()}, query("2024-02-01 00:00:00", "2024-02-28 23:59:59"));
    thread.start();
}

void tst_StoredFiles::deletedMeanwhile() {
    for (int i = 0; i < 300; ++i)
        writeFile(root() + QStringLiteral("ZEL/A%1/Capture/2024-02-01/20240201120000.jpg").arg(i));
    SearchDiskThread thread({root()}, query("2024-02-01 00:00:00", "2024-02-28 23:59:59"));
    thread.start();
    QDir tree(root() + QStringLiteral("ZEL"));
    tree.removeRecursively(); // a folder that is being read stays on Windows
    thread.join();
    QVERIFY(thread.takeResult().size() <= 300);
    QVERIFY(tree.removeRecursively());
}

void tst_StoredFiles::folders_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("ipncid");
    QTest::addColumn<QString>("day");
    QTest::addColumn<QString>("folder"); ///< below the drive; empty: none
    const QString today = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
    QTest::newRow("day given") << "Image"
                               << "A1"
                               << "2024-03-05"
                               << "ZEL/A1/Image/2024-03-05/";
    QTest::newRow("today") << "LocalRecord"
                           << "A1"
                           << ""
                           << "ZEL/A1/LocalRecord/" + today + "/";
    QTest::newRow("samples") << "Inputdata"
                             << "A1"
                             << "2024-03-05"
                             << "ZEL/A1/Inputdata/";
    QTest::newRow("id that climbs") << "Image"
                                    << "../x"
                                    << ""
                                    << "";
    QTest::newRow("id with a drive") << "Image"
                                     << "C:"
                                     << ""
                                     << "";
    QTest::newRow("day that climbs") << "Image"
                                     << "A1"
                                     << ".."
                                     << "";
    QTest::newRow("no id") << "Image"
                           << ""
                           << ""
                           << "";
}

void tst_StoredFiles::folders() {
    QFETCH(QString, kind);
    QFETCH(QString, ipncid);
    QFETCH(QString, day);
    QFETCH(QString, folder);
    Settings settings(root() + QStringLiteral("set.json"));
    settings.load();
    TaskQueue queue;
    RecordingStorage store(settings, queue,
                           std::make_unique<SystemDisks>(QStringList{root() + QStringLiteral("d1")}));
    store.prepareDrives();
    const QString drive = root() + QStringLiteral("d1/");
    QCOMPARE(settings.get(keys::Drives).toStringList(), QStringList{drive});
    QCOMPARE(store.folderFor(kind, ipncid, day), folder.isEmpty() ? QString() : drive + folder);
}

void tst_StoredFiles::thresholdIsClampedAndKept() {
    const QString file = root() + QStringLiteral("set.json");
    Settings settings(file);
    settings.load();
    settings.set(keys::DriveThreshold, 100);
    TaskQueue queue;
    RecordingStorage store(settings, queue, std::make_unique<SystemDisks>(QStringList{root()}));
    store.prepareDrives();
    QCOMPARE(store.chooseDrive(), root());
    queue.drain();
    QCOMPARE(settings.get(keys::DriveThreshold).toInt(), 128);
    settings.finishSaving();
    Settings again(file);
    again.load();
    QCOMPARE(again.get(keys::DriveThreshold).toInt(), 128);
}

void tst_StoredFiles::askedByManyThreads() {
    Settings settings(root() + QStringLiteral("set.json"));
    settings.load();
    settings.set(keys::DriveThreshold, 5000);
    TaskQueue queue;
    RecordingStorage store(settings, queue, std::make_unique<SystemDisks>(QStringList{root()}));
    store.prepareDrives();
    std::atomic<int> answers{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < 50; ++n)
                answers += store.folderFor(QStringLiteral("Image"), QStringLiteral("A"), {}).isEmpty() ? 0 : 1;
        });
    }
    while (answers < 200) {
        settings.set(keys::DriveThreshold, answers % 2 == 0 ? 5000 : 200);
        queue.drain();
        std::this_thread::yield();
    }
    for (std::thread& thread : threads)
        thread.join();
}

QTEST_GUILESS_MAIN(tst_StoredFiles)
#include "tst_StoredFiles.moc"
