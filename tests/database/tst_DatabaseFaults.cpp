#include "base/Settings.h"
#include "database/SqlHelp.h"
#include "recording/SmallDrive.h"
#include "support/MessageLog.h"
#include "support/SqliteShell.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace keys = corvanta::keys;

namespace {

constexpr int DriveSize = 2; // MiB
constexpr qint64 Everything = qint64(DriveSize) * 1024 * 1024;

QDateTime now() {
    return QDateTime::currentDateTime();
}

} // namespace

/// The local database and the settings where the file, or the disk below it, takes nothing for a while.
class tst_DatabaseFaults final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void rowsWaitForAnotherProgram();
    void rowsWaitForRoom();
    void readOnlyDrive();
    void settingsOnAFullDisk();

private:
    void open() { database_ = std::make_unique<SqlHelp>(path("dataBase.db")); }
    void mount();
    QString path(const char* name) const { return folder_ + QLatin1Char('/') + QLatin1String(name); }
    QStringList written() const {
        return sqliteShell::run(path("dataBase.db"), QStringLiteral("select type from operatelogs order by id;"));
    }
    QStringList expected(int count) const {
        QStringList result;
        for (int i = 0; i < count; ++i)
            result += QString::number(i);
        return result;
    }

    std::unique_ptr<QTemporaryDir> dir_;
    QString folder_;
    std::unique_ptr<SmallDrive> drive_;
    std::unique_ptr<SqlHelp> database_;
};

void tst_DatabaseFaults::initTestCase() {
    smallDrives::enterOwnMounts();
}

void tst_DatabaseFaults::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    folder_ = dir_->path();
}

void tst_DatabaseFaults::cleanup() {
    database_.reset();
    drive_.reset();
}

void tst_DatabaseFaults::mount() {
    if (!smallDrives::refusal().isEmpty())
        QSKIP(qPrintable(smallDrives::refusal()));
    drive_ = std::make_unique<SmallDrive>(folder_, DriveSize);
    QVERIFY(drive_->isMounted());
}

void tst_DatabaseFaults::rowsWaitForAnotherProgram() {
    open();
    database_->addOperateLog("u", now(), "0", "c", "d");
    QProcess other;
    other.start("sqlite3", {"-batch", path("dataBase.db")});
    other.write("begin immediate;\nselect 'begun';\n");
    QVERIFY(other.waitForReadyRead());
    const MessageLog log;
    QElapsedTimer clock;
    clock.start();
    for (int i = 1; i < 4; ++i)
        database_->addOperateLog("u", now(), QString::number(i), "c", "d");
    database_->writeTogether();
    database_->addFireLog("dev", now(), "t", "c", "m");
    QCoreApplication::processEvents();
    QVERIFY(clock.elapsed() < 2000); // the window goes on
    QCOMPARE(log.count("a row is not written yet"), 1);
    QCOMPARE(written(), expected(1));
    other.closeWriteChannel();
    QVERIFY(other.waitForFinished());
    QTRY_COMPARE(written(), expected(4));
    database_->addOperateLog("u", now(), "4", "c", "d");
    QCOMPARE(written(), expected(5));
    QCOMPARE(database_->queryLogs(SqlHelp::FireLog, {}, {}, true, -1, -1).size(), 1);
}

void tst_DatabaseFaults::rowsWaitForRoom() {
    mount();
    open();
    const QString text(2000, QLatin1Char('x'));
    database_->addOperateLog("u", now(), "0", "c", text);
    QVERIFY(drive_->fill("ballast", Everything) > 0);
    const MessageLog log;
    int count = 1;
    for (; count < 2000 && log.count("a row is not written yet") == 0; ++count)
        database_->addOperateLog("u", now(), QString::number(count), "c", text);
    QCOMPARE(log.count("a row is not written yet"), 1);
    for (int i = 0; i < 10; ++i, ++count) {
        database_->writeTogether();
        database_->addOperateLog("u", now(), QString::number(count), "c", text);
        QCoreApplication::processEvents();
    }
    QVERIFY(QFile::remove(path("ballast")));
    QTRY_COMPARE(written(), expected(count));
    // What the program still has when it ends, it writes then.
    QVERIFY(drive_->fill("ballast", Everything) > 0);
    const int before = log.count("a row is not written yet");
    for (; count < 2000 && log.count("a row is not written yet") == before; ++count)
        database_->addOperateLog("u", now(), QString::number(count), "c", text);
    QVERIFY(QFile::remove(path("ballast")));
    database_.reset();
    QCOMPARE(written(), expected(count));
    QCOMPARE(QDir(folder_).entryList({"*damaged*"}), QStringList());
}

void tst_DatabaseFaults::readOnlyDrive() {
    mount();
    open();
    database_->addOperateLog("u", now(), "0", "c", "d");
    database_.reset();
    QVERIFY(drive_->makeReadOnly());
    open();
    QCOMPARE(database_->queryLogs(SqlHelp::OperateLog, {}, {}, true, -1, -1).size(), 1); // can be looked at
    database_->addOperateLog("u", now(), "1", "c", "d");
    database_->savePhoneAndPassword("13800138000", "x");
    QCOMPARE(database_->getPhoneAndPassword().phonenumber, QString());
    QCOMPARE(database_->queryLogs(SqlHelp::OperateLog, {}, {}, true, -1, -1).size(), 1);
    QCOMPARE(QDir(folder_).entryList({"*damaged*"}), QStringList());
    Settings settings(path("set.json"));
    settings.load();
    settings.set(keys::PackingTime, 7);
    settings.save();
    settings.finishSaving();
    QCOMPARE(settings.get(keys::PackingTime).toInt(), 7);
}

void tst_DatabaseFaults::settingsOnAFullDisk() {
    mount();
    Settings settings(path("set.json"));
    settings.load();
    settings.set(keys::PackingTime, 7);
    settings.save();
    settings.finishSaving();
    QVERIFY(drive_->fill("ballast", Everything) > 0);
    settings.set(keys::PackingTime, 8);
    const MessageLog log;
    settings.save();
    settings.finishSaving();
    QCOMPARE(log.count("settings could not be saved"), 1);
    const auto stored = [this] {
        Settings other(path("set.json"));
        other.load();
        return other.get(keys::PackingTime).toInt();
    };
    QCOMPARE(stored(), 7); // the old state, whole
    QCOMPARE(QDir(folder_).entryList(QDir::Files), QStringList({"ballast", "set.json"}));
    QVERIFY(QFile::remove(path("ballast")));
    settings.save();
    settings.finishSaving();
    QCOMPARE(stored(), 8);
}

QTEST_GUILESS_MAIN(tst_DatabaseFaults)
#include "tst_DatabaseFaults.moc"
