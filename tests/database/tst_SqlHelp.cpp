#include "database/SqlHelp.h"
#include "support/MessageLog.h"
#include "support/SqliteShell.h"

#include <QTemporaryDir>
#include <QtTest>

using sqliteShell::run;

namespace {

QDateTime at(const char* time) {
    return QDateTime::fromString(QLatin1String(time), Qt::ISODate);
}

const char* const allTables = "electronmaps errlogs fireLogs inputdatas loginLogs operatelogs phonenumberAndpassword";

} // namespace

/// The local database, judged by the shell that comes with its engine.
class tst_SqlHelp final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void firstStartMakesAllTables();
    void laterStartsKeepWhatIsThere();
    void alarms_data();
    void alarms();
    void alarmWhoseUpgradeFailsIsNotWritten();
    void loginRows_data();
    void loginRows();
    void operationRows();
    void cachedValues();
    void cachedMaps();
    void oneSignInIsRemembered();
    void hostileTexts_data();
    void hostileTexts();
    void queries_data();
    void queries();
    void dateTimesAsTheyAreStored_data();
    void dateTimesAsTheyAreStored();
    void readingInPieces();
    void writingWhileReading();
    void damagedFiles_data();
    void damagedFiles();
    void soundFilesAreLeftAlone_data();
    void soundFilesAreLeftAlone();
    void journalGoesWithItsFile();
    void whatCannotBeOpened_data();
    void whatCannotBeOpened();

private:
    void open() { database_ = std::make_unique<SqlHelp>(file_); }
    QString tables() const {
        return run(file_, QStringLiteral("select name from sqlite_master where type='table' order by 1;")).join(' ');
    }
    QList<QStringList> all(int type) { return database_->queryLogs(type, {}, {}, true, -1, -1); }
    QStringList setAside() const {
        return QDir(dir_->path()).entryList({QStringLiteral("dataBase.db.damaged-*")}, QDir::Files);
    }

    std::unique_ptr<QTemporaryDir> dir_;
    QString file_;
    std::unique_ptr<SqlHelp> database_;
};

void tst_SqlHelp::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    file_ = dir_->filePath(QStringLiteral("dataBase.db"));
}

void tst_SqlHelp::cleanup() {
    database_.reset();
}

void tst_SqlHelp::firstStartMakesAllTables() {
    open();
    QCOMPARE(tables(), QLatin1String(allTables));
    QCOMPARE(run(file_, QStringLiteral("select sql from sqlite_master where name='electronmaps';")),
             QStringList{"CREATE TABLE electronmaps(id integer primary key,mapindex integer,mappid varchar,mapname "
                         "varchar)"});
#ifndef Q_OS_WIN // the user's own folder is what keeps others out there
    QCOMPARE(QFile(file_).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
#endif
}

void tst_SqlHelp::laterStartsKeepWhatIsThere() {
    run(file_, QStringLiteral("create table loginLogs(id integer primary key, loginUser varchar, loginDate datetime, "
                              "logoutDate datetime, startDate datetime); insert into loginLogs(loginUser) "
                              "values('old'); create table others(x); insert into others values(1);"));
    for (int start = 0; start < 2; ++start) {
        open();
        database_.reset();
    }
    open();
    QCOMPARE(all(SqlHelp::LoginLog), (QList<QStringList>{{"1", "old", "", ""}}));
    QCOMPARE(run(file_, QStringLiteral("select count(*) from others;")), QStringList{"1"});
    QCOMPARE(tables().split(' ').size(), 8);
}

void tst_SqlHelp::alarms_data() {
    QTest::addColumn<QString>("before");
    QTest::newRow("new file") << QString();
    QTest::newRow("without the map's column")
        << "create table fireLogs(id integer primary key, fireDev varchar, startDate datetime, type varchar, context "
           "varchar); insert into fireLogs(fireDev) values('old');";
}

void tst_SqlHelp::alarms() {
    QFETCH(QString, before);
    if (!before.isEmpty())
        run(file_, before);
    open();
    database_->addFireLog("cam'1", at("2024-02-29T23:59:58"), "烟雾", "text", "map 7");
    database_->addFireLog("cam2", at("2024-03-01T00:00:00"), "x", "y", QVariant());
    QCOMPARE(run(file_, QStringLiteral("select fireDev,startDate,type,context,ifnull(alarmMap,'null') from fireLogs "
                                       "where fireDev<>'old' order by id;")),
             (QStringList{"cam'1|2024-02-29T23:59:58.000|烟雾|text|map 7", "cam2|2024-03-01T00:00:00.000|x|y|null"}));
    const QStringList first = all(SqlHelp::FireLog).at(before.isEmpty() ? 0 : 1);
    QCOMPARE(first.mid(1), (QStringList{"cam'1", "2024-02-29 23:59:58", "烟雾", "text"}));
}

void tst_SqlHelp::alarmWhoseUpgradeFailsIsNotWritten() {
    run(file_, QStringLiteral("create view fireLogs as select 1 as id, 'v' as fireDev;"));
    open();
    database_->addFireLog("cam", at("2024-01-01T00:00:00"), "t", "c", "m");
    QCOMPARE(run(file_, QStringLiteral("select count(*) from fireLogs;")), QStringList{"1"});
}

void tst_SqlHelp::loginRows_data() {
    QTest::addColumn<QVariant>("login");
    QTest::addColumn<QVariant>("logout");
    QTest::addColumn<QString>("stored");
    const QVariant time = at("2024-05-06T07:08:09");
    QTest::newRow("sign-in") << time << QVariant() << "u|2024-05-06T07:08:09.000|text:";
    QTest::newRow("sign-out") << QVariant() << time << "u||text:2024-05-06T07:08:09.000";
    QTest::newRow("neither") << QVariant() << QVariant() << "u||text:";
    QTest::newRow("no time") << QVariant(QDateTime()) << QVariant(QDateTime()) << "u||text:";
}

void tst_SqlHelp::loginRows() {
    QFETCH(QVariant, login);
    QFETCH(QVariant, logout);
    QFETCH(QString, stored);
    open();
    const QDateTime before = QDateTime::currentDateTime();
    database_->addLoginLog("u", login, logout);
    QCOMPARE(run(file_, QStringLiteral("select loginUser,loginDate,typeof(logoutDate)||':'||logoutDate from "
                                       "loginLogs;")),
             QStringList{stored});
    const QString written = run(file_, QStringLiteral("select startDate from loginLogs;")).value(0);
    QVERIFY(written >= before.toString(Qt::ISODateWithMs));
    QVERIFY(written <= QDateTime::currentDateTime().toString(Qt::ISODateWithMs));
}

void tst_SqlHelp::operationRows() {
    open();
    database_->addOperateLog("a", at("2024-01-02T03:04:05"), "设备", "增加", "第二层");
    QCOMPARE(run(file_, QStringLiteral("select * from operatelogs;")),
             QStringList{"1|a|2024-01-02T03:04:05.000|设备|增加|第二层"});
}

void tst_SqlHelp::cachedValues() {
    open();
    const MessageLog log;
    QCOMPARE(database_->getInputData(3), QString());
    database_->addInputData(3, "first");
    database_->addInputData(3, "second");
    database_->addInputData(4, "");
    QCOMPARE(log.count("successsuccess true"), 3);
    QCOMPARE(database_->getInputData(3), QStringLiteral("first"));
    QCOMPARE(database_->getInputData(4), QString());
    database_->clearInputDatas();
    QCOMPARE(database_->getInputData(3), QString());
    QCOMPARE(run(file_, QStringLiteral("select count(*) from inputdatas;")), QStringList{"0"});
}

void tst_SqlHelp::cachedMaps() {
    open();
    database_->addElectronMap(1, "p1", "一层");
    database_->addElectronMap(1, "p2", "二层");
    QCOMPARE(database_->getElectronMap(1).mappid, QStringLiteral("p1"));
    QCOMPARE(database_->getElectronMap(1).mapname, QStringLiteral("一层"));
    QCOMPARE(database_->getElectronMap(2).mappid + database_->getElectronMap(2).mapname, QString());
    database_->clearElectronMaps();
    QCOMPARE(database_->getElectronMap(1).mapname, QString());
}

void tst_SqlHelp::oneSignInIsRemembered() {
    open();
    QCOMPARE(database_->getPhoneAndPassword().phonenumber, QString());
    database_->savePhoneAndPassword("138", "a");
    database_->savePhoneAndPassword("139", "b'; drop table loginLogs;--");
    QCOMPARE(database_->getPhoneAndPassword().phonenumber, QStringLiteral("139"));
    QCOMPARE(run(file_, QStringLiteral("select * from phonenumberAndpassword;")),
             QStringList{"139|b'; drop table loginLogs;--"});
    QCOMPARE(tables(), QLatin1String(allTables));
}

void tst_SqlHelp::hostileTexts_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << R"('; drop table operatelogs; --")";
    QTest::newRow("placeholders") << "? :a %1 $b @c";
    QTest::newRow("control characters") << QString("a\x01\x1f\n\r\tb");
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("\xF0\x9F\x93\xB7 相机");
    QTest::newRow("long") << QString(40000, QChar(0x4E00));
    QTest::newRow("formula") << "=1+1";
}

void tst_SqlHelp::hostileTexts() {
    QFETCH(QString, text);
    open();
    database_->addOperateLog(text, at("2024-01-02T03:04:05"), text, text, text);
    QCOMPARE(all(SqlHelp::OperateLog), (QList<QStringList>{{"1", text, "2024-01-02 03:04:05", text, text, text}}));
    QCOMPARE(tables(), QLatin1String(allTables));
}

void tst_SqlHelp::queries_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("allTime");
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QString>("ids");
    const auto each = [](const char* name, bool allTime, int limit, int offset,
                         const std::array<const char*, 4>& ids) {
        for (int type = 0; type < 4; ++type)
            QTest::addRow("%s, log %d", name, type) << type << allTime << limit << offset << ids[std::size_t(type)];
    };
    // Row n of five was written n seconds after midnight; the range ends at rows 1 and 4 and leaves both out.
    each("everything", true, -1, -1, {"1 2 3 4 5", "1 2 3 4 5", "1 2 3 4 5", "1 2 3 4 5"});
    each("a range", false, -1, -1, {"", "2 3", "2 3", "2 3"});
    each("a part", true, 2, 3, {"4 5", "4 5", "4 5", "4 5"});
    each("a limit without an offset", true, 2, -1, {"1 2 3 4 5", "1 2 3 4 5", "1 2 3 4 5", "1 2 3 4 5"});
    each("a part of a range", false, 2, 0, {"", "", "", ""});
    each("a part behind the end", true, 2, 50, {"", "", "", ""});
    QTest::newRow("no such log") << 4 << true << -1 << -1 << "";
    QTest::newRow("no such log, a range") << -1 << false << -1 << -1 << "";
}

void tst_SqlHelp::queries() {
    QFETCH(int, type);
    QFETCH(bool, allTime);
    QFETCH(int, limit);
    QFETCH(int, offset);
    QFETCH(QString, ids);
    open();
    const QDateTime midnight = at("2024-01-01T00:00:00");
    for (int n = 1; n <= 5; ++n) {
        const QDateTime time = midnight.addSecs(n);
        database_->addFireLog("d", time, "t", "c", "m");
        database_->addOperateLog("u", time, "t", "c", "d");
        database_->addLoginLog("u", time, QVariant());
        run(file_, QStringLiteral("insert into errlogs(user,startDate,type,context) values('u','%1','t','c'); update "
                                  "loginLogs set startDate='%1' where id=%2;")
                       .arg(time.toString(Qt::ISODateWithMs))
                       .arg(n));
    }
    const MessageLog log;
    const QList<QStringList> rows =
        database_->queryLogs(type, midnight.addSecs(1), midnight.addSecs(4), allTime, limit, offset);
    QStringList found;
    for (const QStringList& row : rows) {
        found += row.constFirst();
        QCOMPARE(row.size(), (std::array<int, 4>{5, 4, 6, 5}[std::size_t(type)]));
    }
    QCOMPARE(found.join(' '), ids);
    const bool isValid = type >= 0 && type < 4 && (allTime || (limit == -1 && type != 0));
    QCOMPARE(log.count("QSqlError("), isValid ? 0 : 1);
}

void tst_SqlHelp::dateTimesAsTheyAreStored_data() {
    QTest::addColumn<QString>("stored"); ///< an SQL value
    QTest::newRow("ours") << "'2024-05-06T07:08:09.123'";
    QTest::newRow("same hour") << "'2024-05-06T07:59:59.999'";
    QTest::newRow("no fraction") << "'2024-05-06T07:08:09'";
    QTest::newRow("blank for T") << "'2024-05-06 07:08:09.123'";
    QTest::newRow("of the world's time") << "'2024-05-06T07:08:09.123Z'";
    QTest::newRow("of another zone") << "'2024-05-06T07:08:09.123+08:00'";
    QTest::newRow("no such minute") << "'2024-05-06T07:60:09.123'";
    QTest::newRow("letters") << "'2024-05-06T07:0x:09.123'";
    QTest::newRow("no such hour") << "'2024-05-06T25:08:09.123'";
    QTest::newRow("no such day") << "'2024-02-30T07:08:09.123'";
    QTest::newRow("end of a day") << "'2024-05-06T24:00:00.000'";
    QTest::newRow("date only") << "'2024-05-06'";
    QTest::newRow("text") << "'yesterday'";
    QTest::newRow("empty") << "''";
    QTest::newRow("null") << "null";
    QTest::newRow("number") << "1714979289";
}

// What is shown is what the toolkit's conversion makes of what is stored, also behind other rows of the same hour.
void tst_SqlHelp::dateTimesAsTheyAreStored() {
    QFETCH(QString, stored);
    open();
    const QString known = QStringLiteral("'2024-05-06T07:00:00.000'");
    for (const QString& value : {stored, known, stored, known, stored})
        run(file_, QStringLiteral("insert into errlogs(startDate) values(%1);").arg(value));
    QSqlQuery raw(QStringLiteral("select startDate from errlogs order by id"));
    const QList<QStringList> rows = all(SqlHelp::ErrorLog);
    QCOMPARE(rows.size(), 5);
    for (const QStringList& row : rows) {
        QVERIFY(raw.next());
        QCOMPARE(row[2], raw.value(0).toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    }
}

void tst_SqlHelp::readingInPieces() {
    open();
    run(file_,
        QStringLiteral("with recursive n(i) as (select 1 union all select i+1 from n where i<2500) insert into "
                       "errlogs(user) select 'u'||i from n;"));
    LogQuery query = database_->startLogQuery(SqlHelp::ErrorLog, {}, {}, true, -1, -1);
    LogRows rows = query.emptyRows();
    QVERIFY(query.fetch(rows, 1000));
    QCOMPARE(rows.rowCount(), 1000);
    QVERIFY(query.fetch(rows, 1000));
    QVERIFY(!query.fetch(rows, 1000));
    QCOMPARE(rows.rowCount(), 2500);
    QCOMPARE(rows.row(2499).mid(0, 2), (QStringList{"2500", "u2500"}));
    QVERIFY(!query.fetch(rows, 1000)); // and stays at its end
    QCOMPARE(rows.rowCount(), 2500);
}

// A long answer is read between other work, which may write into the same and into other tables.
void tst_SqlHelp::writingWhileReading() {
    run(file_,
        QStringLiteral("create table fireLogs(id integer primary key, fireDev varchar, startDate datetime, type "
                       "varchar, context varchar);"));
    open();
    run(file_,
        QStringLiteral("with recursive n(i) as (select 1 union all select i+1 from n where i<5000) insert into "
                       "fireLogs(fireDev) select 'd'||i from n;"));
    LogQuery query = database_->startLogQuery(SqlHelp::FireLog, {}, {}, true, -1, -1);
    LogRows rows = query.emptyRows();
    QVERIFY(query.fetch(rows, 10));
    database_->addFireLog("new", at("2024-01-01T00:00:00"), "t", "c", "m"); // adds the missing column, too
    database_->addOperateLog("u", at("2024-01-01T00:00:00"), "t", "c", "d");
    database_->clearInputDatas();
    while (query.fetch(rows, 1000)) {
    }
    QCOMPARE(run(file_, QStringLiteral("select fireDev,alarmMap from fireLogs where id>5000;")),
             QStringList{"new|m"});
    QCOMPARE(run(file_, QStringLiteral("select count(*) from operatelogs;")), QStringList{"1"});
    QVERIFY(rows.rowCount() >= 5000);
    QCOMPARE(rows.row(4999)[1], QStringLiteral("d5000"));
}

void tst_SqlHelp::damagedFiles_data() {
    QTest::addColumn<QByteArray>("head"); ///< written over the beginning
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("size"); ///< cut to, or -1
    QTest::newRow("text") << QByteArray("log of another program") << 0 << 22;
    QTest::newRow("one byte") << QByteArray() << 0 << 1;
    QTest::newRow("zeros") << QByteArray(4096, 0) << 0 << -1;
    QTest::newRow("other magic") << QByteArray("SQLite format 2") << 0 << -1;
    QTest::newRow("page size") << QByteArray("\x10\x01", 2) << 16 << -1;
    QTest::newRow("first page's type") << QByteArray("\x09", 1) << 100 << -1;
    QTest::newRow("cut within the header") << QByteArray() << 0 << 60;
    QTest::newRow("cut at a page") << QByteArray() << 0 << 4096;
    QTest::newRow("cut within a page") << QByteArray() << 0 << 5000;
    QTest::newRow("the list of tables") << QByteArray(200, '\xff') << 103 << -1;
}

void tst_SqlHelp::damagedFiles() {
    QFETCH(QByteArray, head);
    QFETCH(int, offset);
    QFETCH(int, size);
    open();
    database_->addOperateLog("u", at("2024-01-02T03:04:05"), "t", "c", "d");
    database_.reset();
    QFile file(file_);
    QVERIFY(file.open(QIODevice::ReadWrite));
    file.seek(offset);
    file.write(head);
    if (size >= 0)
        file.resize(size);
    file.seek(0);
    const QByteArray damaged = file.readAll();
    file.close();

    const MessageLog log;
    open();
    QCOMPARE(log.count("the database is damaged"), 1);
    QCOMPARE(tables(), QLatin1String(allTables));
    database_->addOperateLog("new", at("2024-01-02T03:04:05"), "t", "c", "d");
    QCOMPARE(all(SqlHelp::OperateLog).size(), 1);
    QCOMPARE(setAside().size(), 1);
    QFile kept(dir_->filePath(setAside().constFirst()));
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), damaged);
}

void tst_SqlHelp::soundFilesAreLeftAlone_data() {
    QTest::addColumn<QString>("statements");
    QTest::newRow("smallest pages") << "pragma page_size=512; create table a(x);";
    QTest::newRow("largest pages") << "pragma page_size=65536; create table a(x);";
    QTest::newRow("UTF-16") << "pragma encoding='UTF-16'; create table a(x);";
    QTest::newRow("write-ahead log") << "pragma journal_mode=wal; create table a(x);";
    QTest::newRow("large list of tables")
        << "create table a(x);" + QStringLiteral("create table %1(x varchar default '%2');")
                                      .repeated(1)
                                      .arg("b")
                                      .arg(QString(9000, 'y'));
    QTest::newRow("emptied") << "create table a(x); drop table a; vacuum;";
}

void tst_SqlHelp::soundFilesAreLeftAlone() {
    QFETCH(QString, statements);
    run(file_, statements);
    open();
    database_->addOperateLog("新", at("2024-01-02T03:04:05"), "t", "c", "d");
    QCOMPARE(setAside(), QStringList());
    QCOMPARE(run(file_, QStringLiteral("select user from operatelogs;")), QStringList{"新"});
}

// A journal without its file would be played back into the file that takes its place.
void tst_SqlHelp::journalGoesWithItsFile() {
    QFile file(file_);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
    file.close();
    QFile journal(file_ + QStringLiteral("-journal"));
    QVERIFY(journal.open(QIODevice::WriteOnly));
    journal.write("not a journal");
    journal.close();
    open();
    QCOMPARE(tables(), QLatin1String(allTables));
    QVERIFY(!setAside().isEmpty());
    QVERIFY(!journal.exists());
}

void tst_SqlHelp::whatCannotBeOpened_data() {
    QTest::addColumn<bool>("isFolder");
    QTest::newRow("a folder has the name") << true;
    QTest::newRow("no folder for it") << false;
}

void tst_SqlHelp::whatCannotBeOpened() {
    QFETCH(bool, isFolder);
    if (isFolder)
        QVERIFY(QDir().mkpath(file_));
    else
        file_ = dir_->filePath(QStringLiteral("missing/dataBase.db"));
    const MessageLog log;
    open();
    QCOMPARE(log.count("open db error"), 1);
    database_->addFireLog("d", QDateTime::currentDateTime(), "t", "c", "m");
    database_->addOperateLog("u", QDateTime::currentDateTime(), "t", "c", "d");
    database_->addInputData(1, "x");
    QCOMPARE(all(SqlHelp::OperateLog), QList<QStringList>());
    QCOMPARE(database_->getInputData(1) + database_->getPhoneAndPassword().phonenumber, QString());
    QCOMPARE(QFileInfo(file_).isDir(), isFolder);
}

QTEST_GUILESS_MAIN(tst_SqlHelp)
#include "tst_SqlHelp.moc"
