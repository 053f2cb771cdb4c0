#include "database/SqlHelp.h"

#include "database/DatabaseFile.h"
#include "platform/RawFile.h"

#include <QDebug>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlRecord>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <utility>

namespace {

struct Table {
    const char* name;
    const char* creation;
};

// In the order in which they are made. Files of all ages have exactly these columns, `alarmMap` excepted.
constexpr Table tables[] = {
    {"fireLogs", "create table fireLogs(id integer primary key, fireDev varchar, startDate datetime, type varchar, "
                 "context varchar, alarmMap varchar)"},
    {"loginLogs", "create table loginLogs(id integer primary key, loginUser varchar, loginDate datetime, logoutDate "
                  "datetime, startDate datetime)"},
    {"operatelogs",
     "create table operatelogs(id integer primary key, user varchar, startDate datetime, type varchar, "
     "context varchar, context1 varchar)"},
    {"errlogs",
     "create table errlogs(id integer primary key, user varchar, startDate datetime, type varchar, context "
     "varchar)"},
    {"phonenumberAndpassword",
     "create table phonenumberAndpassword(phonenumber varchar primary key,password varchar)"},
    {"inputdatas", "create table inputdatas(id integer primary key,chartIndex integer,datavalue varchar)"},
    {"electronmaps", "create table electronmaps(id integer primary key,mapindex integer,mappid varchar,mapname "
                     "varchar)"},
};

// Result codes of SQLite for a file that is not a database, or not a whole one.
bool saysDamaged(const QSqlError& error) {
    const QString code = error.nativeErrorCode();
    return code == QLatin1String("11") || code == QLatin1String("26");
}

/// Whether a statement may succeed later: another program has the file, or the disk takes nothing.
bool mayPass(const QSqlError& error) {
    bool isNumber = false;
    const int code = error.nativeErrorCode().toInt(&isNumber) & 0xff; // the rest says more of the same
    constexpr std::array passing{5, 6, 8, 10, 13}; // busy, locked, read-only, input and output, full
    return isNumber && std::find(passing.begin(), passing.end(), code) != passing.end();
}

/// While it lives, statements wait for other programs no longer than a person notices.
class Impatience final {
public:
    Impatience() { set(50); }
    ~Impatience() { set(5000); }
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;

private:
    static void set(int milliseconds) { QSqlQuery(QStringLiteral("pragma busy_timeout=%1").arg(milliseconds)); }
};

/// The statement of a log query. Its blanks are as they are: with `allTime` clear the condition follows the part's
/// clause, so a part of a range is no valid statement, and for the alarm log the blank before "where" is missing, so
/// a range of alarms is none either. Callers show nothing for these, and count on it.
QString logStatement(int type, bool allTime, const QString& part) {
    switch (type) {
    case SqlHelp::FireLog:
        return allTime ? QStringLiteral("select * from fireLogs ") + part
                       : QStringLiteral("select * from fireLogs") + part +
                             QStringLiteral("where startDate>? and startDate<?");
    case SqlHelp::LoginLog:
        return allTime ? QStringLiteral("select * from loginLogs") + part
                       : QStringLiteral("select * from loginLogs ") + part +
                             QStringLiteral("where startDate>? and startDate<?");
    case SqlHelp::OperateLog:
        return allTime ? QStringLiteral("select * from operatelogs") + part
                       : QStringLiteral("select * from operatelogs ") + part +
                             QStringLiteral(" where startDate>? and startDate<?");
    case SqlHelp::ErrorLog:
        return allTime ? QStringLiteral("select * from errlogs") + part
                       : QStringLiteral("select * from errlogs ") + part +
                             QStringLiteral(" where startDate>? and startDate<?");
    default:
        return {};
    }
}

/// Executes a prepared statement with `values`; a statement that could not be prepared does nothing. What comes of it
/// is told to nobody, as of every write.
bool execute(QSqlQuery& query, const QString& statement, const QVariantList& values) {
    if (!query.prepare(statement))
        return false;
    for (const QVariant& value : values)
        query.addBindValue(value);
    return query.exec();
}

/// The first row of an answer, empty when there is none. Older rows come first: what was written twice keeps its
/// first value.
QSqlRecord firstRow(const QString& statement) {
    QSqlQuery query;
    query.setForwardOnly(true);
    return query.exec(statement) && query.next() ? query.record() : QSqlRecord();
}

QString textOf(const QSqlRecord& row, const char* field) {
    return row.isEmpty() ? QString() : row.value(QLatin1String(field)).toString();
}

} // namespace

SqlHelp::SqlHelp(const QString& file, QObject* parent)
    : QObject(parent)
    , file_(file)
    , columnCounts_{{FireLog, 5}, {LoginLog, 4}, {OperateLog, 6}, {ErrorLog, 5}}
    , dateTimeColumns_{{FireLog, {2}}, {LoginLog, {2, 3}}, {OperateLog, {2}}, {ErrorLog, {2}}} {
    constexpr int pause = 1000; // ms
    again_.setInterval(pause);
    connect(&again_, &QTimer::timeout, this, &SqlHelp::writeWaiting);
    initDatabase();
}

SqlHelp::~SqlHelp() {
    endTogether();
    writeWaiting();
    QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
}

QSqlError SqlHelp::initDatabase() {
    const auto ownersOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    QFile::setPermissions(file_, ownersOnly);
    const bool isReplaceable = !corvanta::database::looksDamaged(file_) || corvanta::database::setAside(file_);
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(file_);
    database.setConnectOptions(QString());
    if (!open(database, isReplaceable)) {
        qDebug() << "open db error";
        return database.lastError();
    }
    // A log that is written ahead needs the disk once a transaction instead of four times: the window waits for it.
    // Where the file cannot have one (a drive that is read-only) it goes on without.
    // It is brought to the disk by a thread (`keep`), in moments in which that takes long, too; until then a computer
    // that loses its power loses the last second, and nothing else.
    if (QSqlQuery mode(QStringLiteral("pragma journal_mode=wal"));
        mode.next() && mode.value(0).toString() == QLatin1String("wal"))
        database.exec(QStringLiteral("pragma synchronous=normal"));
    const QStringList present = database.tables();
    for (const Table& table : tables) {
        QSqlQuery query;
        if (!present.contains(QLatin1String(table.name)) && !query.exec(QLatin1String(table.creation)))
            return query.lastError();
    }
    QFile::setPermissions(file_, ownersOnly); // the file of a first start is only there now
    return {};
}

bool SqlHelp::open(QSqlDatabase& database, bool isReplaceable) {
    if (!database.open())
        return false;
    // A file that was written ahead asks for files beside it, which a drive that is read-only refuses. There it is
    // read as one that nobody changes.
    const auto sees = [] {
        return QSqlQuery(QStringLiteral("select count(*) from sqlite_master")).lastError();
    };
    constexpr auto cannotOpen = "14";
    if (sees().nativeErrorCode() == QLatin1String(cannotOpen)) {
        database.close();
        database.setDatabaseName(QUrl::fromLocalFile(file_).toString(QUrl::FullyEncoded) +
                                 QLatin1String("?immutable=1"));
        database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_OPEN_READONLY"));
        qDebug() << "the database can only be read";
        return database.open();
    }
    // Damage behind the header shows when the list of tables is first read.
    if (!isReplaceable || !saysDamaged(sees()))
        return true;
    database.close();
    corvanta::database::setAside(file_);
    return database.open();
}

void SqlHelp::writeTogether() {
    if (isTogether_)
        return;
    isTogether_ = QSqlDatabase::database().transaction();
    if (isTogether_) // else each row is written by itself
        QMetaObject::invokeMethod(this, &SqlHelp::endTogether, Qt::QueuedConnection);
}

void SqlHelp::endTogether() {
    if (!isTogether_)
        return;
    QSqlDatabase database = QSqlDatabase::database();
    isTogether_ = !database.commit();
    if (!isTogether_) {
        keep();
        return;
    }
    // Another process reads the file for long, or the disk is full. The rows wait in the transaction.
    constexpr int again = 1000; // ms
    qDebug() << "rows are not written yet:" << database.lastError();
    QTimer::singleShot(again, this, &SqlHelp::endTogether);
}

void SqlHelp::keep() {
    constexpr std::chrono::seconds later{1};
    disk_.post("log", later, [file = std::filesystem::path((file_ + QStringLiteral("-wal")).toStdU16String())] {
        corvanta::platform::RawFile::flush(file);
    });
}

void SqlHelp::addFireLog(const QString& fireDev, const QVariant& startDate, const QString& type,
                         const QString& context, const QVariant& alarmMap) {
    addRow({QStringLiteral("insert into fireLogs(fireDev, startDate, type, context,alarmMap) values(?, ?, ?, ?, "
                           "?)"),
            {fireDev, startDate, type, context, alarmMap},
            true});
}

void SqlHelp::addRow(Row row) {
    if (waiting_.empty() && write(row))
        return;
    constexpr std::size_t mostWaiting = 10000;
    waiting_.push_back(std::move(row));
    if (waiting_.size() > mostWaiting) {
        qDebug() << "a row is given up, too many wait";
        waiting_.pop_front();
    }
    if (!again_.isActive())
        again_.start();
}

bool SqlHelp::write(const Row& row) {
    const Impatience impatience;
    QSqlQuery query;
    if (row.isAlarm) {
        // Asked for every alarm: files made before the column existed are brought up to date when they first need it.
        const bool known = query.exec(QStringLiteral("select * from sqlite_master where name='fireLogs' and sql like "
                                                     "'%alarmMap%'")) &&
                           query.next();
        query.finish();
        if (!known && !query.exec(QStringLiteral("alter table fireLogs add column alarmMap varchar")))
            return !mayPass(query.lastError());
    }
    if (execute(query, row.statement, row.values)) {
        keep();
        return true;
    }
    if (!mayPass(query.lastError()))
        return true;
    if (waiting_.empty())
        qDebug() << "a row is not written yet:" << query.lastError();
    return false;
}

void SqlHelp::writeWaiting() {
    while (!waiting_.empty() && write(waiting_.front()))
        waiting_.pop_front();
    if (waiting_.empty())
        again_.stop();
}

void SqlHelp::addLoginLog(const QString& loginUser, const QVariant& loginDate, const QVariant& logoutDate) {
    // An absent time is an empty text, not null: older readers of the file expect a text.
    const auto given = [](const QVariant& time) {
        const bool isTime = time.isValid() && !time.isNull();
        return isTime ? time : QVariant(QLatin1String(""));
    };
    addRow({QStringLiteral("insert into loginLogs(loginUser, loginDate, logoutDate,startDate) values(?, ?, ?, "
                           "?)"),
            {loginUser, given(loginDate), given(logoutDate), QDateTime::currentDateTime()}});
}

void SqlHelp::addOperateLog(const QString& user, const QVariant& startDate, const QString& type,
                            const QString& context, const QString& context1) {
    addRow({QStringLiteral("insert into operatelogs(user, startDate, type, context, context1) values(?, ?, ?, "
                           "?, ?)"),
            {user, startDate, type, context, context1}});
}

void SqlHelp::addInputData(int chartIndex, const QString& datavalue) {
    QSqlQuery query;
    if (!query.prepare(QStringLiteral("insert into inputdatas(chartIndex,datavalue) values(?, ?)")))
        return;
    query.addBindValue(chartIndex);
    query.addBindValue(datavalue);
    const bool done = query.exec();
    qDebug() << "successsuccess" << done << query.lastError();
}

QString SqlHelp::getInputData(int chartIndex) {
    const QSqlRecord row =
        firstRow(QStringLiteral("select datavalue from inputdatas where chartIndex=%1").arg(chartIndex));
    return textOf(row, "datavalue");
}

void SqlHelp::clearInputDatas() {
    QSqlQuery(QStringLiteral("delete from inputdatas"));
}

void SqlHelp::addElectronMap(int mapindex, const QString& mappid, const QString& mapname) {
    QSqlQuery query;
    execute(query, QStringLiteral("insert into electronmaps(mapindex, mappid, mapname) values(?, ?, ?)"),
            {mapindex, mappid, mapname});
}

SqlHelp::ElectronMap SqlHelp::getElectronMap(int mapindex) {
    const QSqlRecord row = firstRow(QStringLiteral("select * from electronmaps where mapindex=%1").arg(mapindex));
    return {textOf(row, "mappid"), textOf(row, "mapname")};
}

void SqlHelp::clearElectronMaps() {
    QSqlQuery(QStringLiteral("delete from electronmaps"));
}

void SqlHelp::savePhoneAndPassword(const QString& phonenumber, const QString& password) {
    QSqlQuery query;
    query.exec(QStringLiteral("delete from phonenumberAndpassword")); // at most one sign-in is remembered
    execute(query, QStringLiteral("insert into phonenumberAndpassword(phonenumber, password) values(?, ?)"),
            {phonenumber, password});
    keep();
}

SqlHelp::PhoneAndPassword SqlHelp::getPhoneAndPassword() {
    const QSqlRecord row = firstRow(QStringLiteral("select * from phonenumberAndpassword"));
    return {textOf(row, "phonenumber"), textOf(row, "password")};
}

QList<SqlHelp::PhoneAndPassword> SqlHelp::phonesAndPasswords() {
    QList<PhoneAndPassword> rows;
    QSqlQuery query;
    query.setForwardOnly(true);
    query.exec(QStringLiteral("select * from phonenumberAndpassword"));
    while (query.next())
        rows += {textOf(query.record(), "phonenumber"), textOf(query.record(), "password")};
    return rows;
}

void SqlHelp::replacePassword(const QString& phonenumber, const QString& password) {
    QSqlQuery query;
    execute(query, QStringLiteral("update phonenumberAndpassword set password=? where phonenumber=?"),
            {password, phonenumber});
    keep();
}

void SqlHelp::forgetPhone(const QString& phonenumber) {
    QSqlQuery query;
    execute(query, QStringLiteral("delete from phonenumberAndpassword where phonenumber=?"), {phonenumber});
    keep();
}

QList<QStringList> SqlHelp::queryLogs(int type, const QDateTime& start, const QDateTime& end, bool allTime, int limit,
                                      int offset) {
    LogQuery query = startLogQuery(type, start, end, allTime, limit, offset);
    QList<QStringList> result;
    for (bool more = true; more;) {
        LogRows rows = query.emptyRows();
        more = query.fetch(rows, 1000); // in pieces, so that the texts are not all held twice
        for (int row = 0; row < rows.rowCount(); ++row)
            result += rows.row(row);
    }
    return result;
}

LogQuery SqlHelp::startLogQuery(int type, const QDateTime& start, const QDateTime& end, bool allTime, int limit,
                                int offset) {
    QString part;
    if (limit != -1 && offset != -1)
        part = QStringLiteral(" order by id limit %1 offset %2 ").arg(limit).arg(offset);
    QSqlQuery query;
    query.setForwardOnly(true); // rows that were read are not kept a second time
    bool done = query.prepare(logStatement(type, allTime, part));
    if (done && !allTime) {
        query.addBindValue(start);
        query.addBindValue(end);
    }
    done = done && query.exec();
    if (!done)
        qDebug() << query.lastError();
    return {query, {columnCounts_.value(type), dateTimeColumns_.value(type)}};
}
