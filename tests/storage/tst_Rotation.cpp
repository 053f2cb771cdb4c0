#include "storage/DiskProbe.h"
#include "storage/Rotation.h"
#include "storage/avi/AviWriter.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace storage = corvanta::storage;

namespace {

constexpr std::uint64_t MiB = 1048576;

class FakeDisks final : public DiskProbe {
public:
    QStringList drives() const override { return drives_; }
    QString systemDrive() const override { return system_; }
    std::optional<std::uint64_t> freeBytes(const QString& drive) const override {
        return free_.contains(drive) ? std::optional<std::uint64_t>(free_.value(drive)) : std::nullopt;
    }
    QDate today() const override { return QDate(2024, 3, 5); }

    QStringList drives_;
    QString system_;
    QHash<QString, std::uint64_t> free_;
};

void writeFile(const QString& path) {
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
}

} // namespace

class tst_Rotation final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void thresholds_data();
    void thresholds();
    void listOfDrives_data();
    void listOfDrives();
    void choice_data();
    void choice();
    void oldestFirst();
    void onlyDaysOfTheTree();
    void linksAreNotFollowed();
    void recordingIsNotDeleted();
    void whatCannotBeDeletedIsPassedOver();

private:
    QString drive(const char* name) const { return dir_->filePath(QLatin1String(name)) + QLatin1Char('/'); }
    std::unique_ptr<QTemporaryDir> dir_;
    FakeDisks disks_;
};

void tst_Rotation::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    disks_.drives_.clear();
    disks_.system_.clear();
    disks_.free_.clear();
}

void tst_Rotation::thresholds_data() {
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("used");
    QTest::newRow("too small") << 100 << 128;
    QTest::newRow("smallest") << 128 << 128;
    QTest::newRow("between") << 1000 << 1000;
    QTest::newRow("largest") << 4096 << 4096;
    QTest::newRow("too large") << 5000 << 4096;
    QTest::newRow("absurd") << -7 << 128;
}

void tst_Rotation::thresholds() {
    QFETCH(int, stored);
    QFETCH(int, used);
    QCOMPARE(storage::clampedThreshold(stored), used);
}

void tst_Rotation::listOfDrives_data() {
    QTest::addColumn<QStringList>("stored");
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QString>("system");
    QTest::addColumn<bool>("changes");
    QTest::addColumn<QStringList>("result");
    const QString c = QStringLiteral("C:/");
    const QString d = QStringLiteral("D:/");
    const QString e = QStringLiteral("E:/");
    const QString home = QStringLiteral("/home/op/");
    const QString disk = QStringLiteral("/media/disk/");
    QTest::newRow("first start, one drive") << QStringList() << QStringList{c} << c << true << QStringList{c};
    QTest::newRow("first start, two drives") << QStringList() << QStringList{c, d} << c << true << QStringList{d};
    QTest::newRow("letters in any case")
        << QStringList() << QStringList{c, d, e} << QStringLiteral("c:\\windows") << true << QStringList{d, e};
    QTest::newRow("mount points") << QStringList() << QStringList{home, disk} << home << true << QStringList{disk};
    QTest::newRow("all there") << QStringList{e, d} << QStringList{c, d, e} << c << false << QStringList();
    QTest::newRow("one gone") << QStringList{e, d} << QStringList{c, d} << c << true << QStringList{d};
    QTest::newRow("case counts") << QStringList{QStringLiteral("d:/")} << QStringList{c, d} << c << true
                                 << QStringList{d};
    QTest::newRow("no drive at all") << QStringList{d} << QStringList() << c << true << QStringList();
}

void tst_Rotation::listOfDrives() {
    QFETCH(QStringList, stored);
    QFETCH(QStringList, present);
    QFETCH(QString, system);
    QFETCH(bool, changes);
    QFETCH(QStringList, result);
    disks_.drives_ = present;
    disks_.system_ = system;
    const auto rebuilt = storage::rebuiltDrives(stored, disks_);
    QCOMPARE(rebuilt.has_value(), changes);
    QCOMPARE(rebuilt.value_or(QStringList()), result);
}

void tst_Rotation::choice_data() {
    QTest::addColumn<quint64>("freeOfFirst"); ///< MiB above it are added in bytes
    QTest::addColumn<quint64>("freeOfSecond");
    QTest::addColumn<QString>("chosen");
    const QString first = QStringLiteral("D:/");
    const QString second = QStringLiteral("E:/");
    QTest::newRow("both") << quint64(200 * MiB) << quint64(900 * MiB) << first;
    QTest::newRow("just enough") << quint64(128 * MiB + 1) << quint64(900 * MiB) << first;
    QTest::newRow("exactly the threshold") << quint64(128 * MiB) << quint64(900 * MiB) << second;
    QTest::newRow("none") << quint64(1) << quint64(128 * MiB) << QString();
    QTest::newRow("cannot be asked") << quint64(0) << quint64(900 * MiB) << second;
}

void tst_Rotation::choice() {
    QFETCH(quint64, freeOfFirst);
    QFETCH(quint64, freeOfSecond);
    QFETCH(QString, chosen);
    if (freeOfFirst > 0)
        disks_.free_.insert(QStringLiteral("D:/"), freeOfFirst);
    else
        QTest::ignoreMessage(QtDebugMsg, "ERROR: Call to GetDiskFreeSpaceEx() failed.");
    disks_.free_.insert(QStringLiteral("E:/"), freeOfSecond);
    QCOMPARE(storage::chooseDrive({QStringLiteral("D:/"), QStringLiteral("E:/")}, 128, disks_), chosen);
}

void tst_Rotation::oldestFirst() {
    const QStringList drives{drive("one"), drive("two")};
    const QStringList days{drives[0] + QStringLiteral("ZEL/A/LocalRecord/2024-03-01"),
                           drives[1] + QStringLiteral("ZEL/B/Capture/2023-12-31"),
                           drives[1] + QStringLiteral("ZEL/A/Image/2024-03-04"),
                           drives[0] + QStringLiteral("ZEL/A/LocalRecord/2024-03-05"),
                           drives[0] + QStringLiteral("ZEL/A/DeviceRecord/2024-02-29")};
    for (const QString& day : days)
        writeFile(day + QStringLiteral("/20240301120000.avi"));
    const auto left = [&days] {
        QStringList result;
        for (const QString& day : days) {
            if (QDir(day).exists())
                result += day;
        }
        return result;
    };
    for (const int next : {1, 4, 0, 2}) {
        QVERIFY(left().contains(days[next]));
        QVERIFY(storage::deleteOldestDay(drives, disks_));
        QVERIFY(!left().contains(days[next]));
    }
    QCOMPARE(left(), QStringList{days[3]}); // today's
    QTest::ignoreMessage(QtDebugMsg, "Not Find Oldest File!!!");
    QVERIFY(!storage::deleteOldestDay(drives, disks_));
    QCOMPARE(left(), QStringList{days[3]});
}

void tst_Rotation::onlyDaysOfTheTree() {
    const QString root = drive("one");
    const char* const kept[] = {"2020-01-01/a.avi",
                                "ZEL/2020-01-01/a.avi",
                                "ZEL/A/2020-01-01/a.avi",
                                "ZEL/A/Inputdata/2020-01-01/a.dat",
                                "ZEL/A/Other/2020-01-01/a.avi",
                                "ZEL/A/LocalRecord/2020-01-01x/a.avi",
                                "ZEL/A/LocalRecord/2020-13-01/a.avi",
                                "ZEL/A/LocalRecord/20200101/a.avi",
                                "ZEL/A/LocalRecord/old/2020-01-01/a.avi",
                                "ZEL/A/LocalRecord/2020-1-1/a.avi"};
    for (const char* const file : kept)
        writeFile(root + QLatin1String(file));
    QVERIFY(!storage::deleteOldestDay({root, drive("missing")}, disks_));
    for (const char* const file : kept)
        QVERIFY2(QFile::exists(root + QLatin1String(file)), file);
}

void tst_Rotation::linksAreNotFollowed() {
    const QString root = drive("one");
    const QString outside = drive("outside");
    writeFile(outside + QStringLiteral("2020-01-01/precious.avi"));
    writeFile(outside + QStringLiteral("LocalRecord/2020-01-01/precious.avi"));
    writeFile(outside + QStringLiteral("A/LocalRecord/2020-01-01/precious.avi"));
    writeFile(root + QStringLiteral("ZEL/A/LocalRecord/2024-01-01/a.avi"));
    QVERIFY(
        QFile::link(outside + QStringLiteral("2020-01-01"), root + QStringLiteral("ZEL/A/LocalRecord/2019-01-01")));
    QVERIFY(QFile::link(outside + QStringLiteral("LocalRecord"), root + QStringLiteral("ZEL/A/Image")));
    QVERIFY(QFile::link(outside + QStringLiteral("A"), root + QStringLiteral("ZEL/B")));
    QVERIFY(QFile::link(outside + QStringLiteral("2020-01-01"),
                        root + QStringLiteral("ZEL/A/LocalRecord/2024-01-01/link")));
    QVERIFY(QDir(drive("two")).mkpath(QStringLiteral(".")));
    QVERIFY(QFile::link(outside, drive("two") + QStringLiteral("ZEL")));
    const QStringList drives{root, drive("two")};
    QVERIFY(storage::deleteOldestDay(drives, disks_));
    QVERIFY(!QDir(root + QStringLiteral("ZEL/A/LocalRecord/2024-01-01")).exists());
    QVERIFY(!storage::deleteOldestDay(drives, disks_));
    for (const char* const file : {"2020-01-01", "LocalRecord/2020-01-01", "A/LocalRecord/2020-01-01"})
        QVERIFY2(QFile::exists(outside + QLatin1String(file) + QStringLiteral("/precious.avi")), file);
}

void tst_Rotation::recordingIsNotDeleted() {
    const QString root = drive("one");
    const QString busy = root + QStringLiteral("ZEL/A/LocalRecord/2024-03-03/");
    writeFile(root + QStringLiteral("ZEL/A/LocalRecord/2024-03-04/20240304000000.avi"));
    QVERIFY(QDir().mkpath(busy));
    auto writer = AviWriter::openOutput((busy + QStringLiteral("20240303235959.avi")).toStdString());
    QVERIFY(writer != nullptr);
    QVERIFY(storage::deleteOldestDay({root}, disks_));
    QVERIFY(QDir(busy).exists());
    QVERIFY(!storage::deleteOldestDay({root}, disks_));
    writer.reset();
    QVERIFY(storage::deleteOldestDay({root}, disks_));
    QVERIFY(!QDir(busy).exists());
}

void tst_Rotation::whatCannotBeDeletedIsPassedOver() {
    const QString root = drive("one");
    const QString fixed = root + QStringLiteral("ZEL/A/LocalRecord/");
    writeFile(fixed + QStringLiteral("2024-01-01/a.avi"));
    writeFile(root + QStringLiteral("ZEL/B/LocalRecord/2024-02-01/b.avi"));
    QFile folder(fixed + QStringLiteral("2024-01-01"));
    QVERIFY(folder.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    if (QFile::remove(fixed + QStringLiteral("2024-01-01/a.avi"))) {
        folder.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        return; // this user may do everything, so nothing can be withheld
    }
    QVERIFY(storage::deleteOldestDay({root}, disks_));
    QVERIFY(!QDir(root + QStringLiteral("ZEL/B/LocalRecord/2024-02-01")).exists());
    folder.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

QTEST_GUILESS_MAIN(tst_Rotation)
#include "tst_Rotation.moc"
