#pragma once

#include "base/DiskWorker.h"
#include "base/OperationLog.h"
#include "database/LogQuery.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSqlError>
#include <QTimer>
#include <QVariant>

#include <deque>

class QSqlDatabase;

/// The local database "dataBase.db": four logs, cached chart samples and map names, the remembered sign-in.
///
/// One object, made with `AppManager`; it opens the file over Qt's default connection and nothing else does. GUI
/// thread only. Nothing of it is ever shown to the user: what fails is a debug line at most, and reads are empty.
///
/// Rows of logs that the file does not take now, because another program writes to it or the disk is full, wait here
/// and are written as soon as it does, in their order; nobody waits for that.
///
/// What is written survives the program's end at once, and the computer's within a second or so: the window does not
/// wait for the disk, a thread does.
///
/// The logs only grow. Cached samples and names live for one run: they are cleared when the user leaves.
class SqlHelp final : public QObject, public OperationLog {
    Q_OBJECT
public:
    /// Kinds of logs, as callers number them.
    enum LogType { FireLog = 0, LoginLog = 1, OperateLog = 2, ErrorLog = 3 };

    struct ElectronMap {
        QString mappid;  ///< identifier of the parent map
        QString mapname; ///< the name shown
    };
    struct PhoneAndPassword {
        QString phonenumber;
        QString password;
    };

    /// Opens `file`, which is made when it is missing and set aside when it is damaged.
    explicit SqlHelp(const QString& file, QObject* parent = nullptr);
    ~SqlHelp() override;

    /// What is written from now on, until the event loop goes on, becomes one transaction: rows in the order in which
    /// they are written, seen at once by reads of this object, and kept together. For who writes many.
    void writeTogether();

    /// An alarm; `startDate` as the device sent it, `alarmMap` the whole message.
    void addFireLog(const QString& fireDev, const QVariant& startDate, const QString& type, const QString& context,
                    const QVariant& alarmMap);
    void addLoginLog(const QString& loginUser, const QVariant& loginDate, const QVariant& logoutDate) override;
    void addOperateLog(const QString& user, const QVariant& startDate, const QString& type, const QString& context,
                       const QString& context1) override;

    /// Cached samples of a chart tile; the text is the tile's own. Of several the oldest is read.
    void addInputData(int chartIndex, const QString& datavalue);
    QString getInputData(int chartIndex);
    void clearInputDatas();

    /// Cached names of electronic maps. Of several the oldest is read.
    void addElectronMap(int mapindex, const QString& mappid, const QString& mapname);
    ElectronMap getElectronMap(int mapindex);
    void clearElectronMaps();

    /// The remembered sign-in: at most one.
    void savePhoneAndPassword(const QString& phonenumber, const QString& password);
    PhoneAndPassword getPhoneAndPassword();
    /// All rows: files of other programs may hold several.
    QList<PhoneAndPassword> phonesAndPasswords();
    /// Another text for the password of a number that is remembered; nothing happens for others.
    void replacePassword(const QString& phonenumber, const QString& password);
    void forgetPhone(const QString& phonenumber);

    /// All rows of a log as texts, in the order of their ids; date-times as "yyyy-MM-dd hh:mm:ss". With `allTime`
    /// clear only those between `start` and `end`, both excluded. A limit and an offset other than -1 ask for a part.
    /// Empty where the statement fails, which it does for the alarm log with `allTime` clear, and for every log with
    /// `allTime` clear and a part asked for.
    QList<QStringList> queryLogs(int type, const QDateTime& start, const QDateTime& end, bool allTime, int limit,
                                 int offset);
    /// The same question, to be read piece by piece.
    LogQuery startLogQuery(int type, const QDateTime& start, const QDateTime& end, bool allTime, int limit,
                           int offset);

private:
    QSqlError initDatabase();
    bool open(QSqlDatabase& database, bool isReplaceable);
    void endTogether();
    struct Row {
        QString statement;
        QVariantList values;
        bool isAlarm = false; ///< its table may lack a column yet
    };
    /// Writes a row of a log, now or behind those that wait.
    void addRow(Row row);
    /// False where that may be possible later: another program writes, the disk is full.
    bool write(const Row& row);
    void writeWaiting();
    /// Something was written that must get to the disk.
    void keep();

    QString file_;
    bool isTogether_ = false; ///< a transaction of `writeTogether` is open
    std::deque<Row> waiting_; ///< rows of logs that could not be written yet, in their order
    QTimer again_;            ///< they are tried again
    corvanta::DiskWorker disk_;
    QHash<int, int> columnCounts_;          ///< by log type
    QHash<int, QSet<int>> dateTimeColumns_; ///< by log type
};
