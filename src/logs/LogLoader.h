#pragma once

#include "database/LogQuery.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <optional>

/// Reads the answer of a log query to its end in short pieces between the other events of the GUI thread, which has
/// the database's only connection: a million rows take a second or two, and the pictures go on.
class LogLoader final : public QObject {
    Q_OBJECT
public:
    explicit LogLoader(QObject* parent = nullptr);

    /// Reads `query`, instead of what was being read.
    void start(LogQuery query);
    /// Ends with the rows that are there; nothing when nothing is being read.
    void stop();
    /// Forgets what is being read, without a signal.
    void abandon();

    bool isRunning() const { return query_.has_value(); }
    int rowCount() const { return rows_.rowCount(); }
    /// The rows of the last reading, once, from `sigFinished` on.
    LogRows takeRows() { return std::move(rows_); }

signals:
    /// More rows have been read; some times a second.
    void sigProgress(int rows);
    /// All rows are there, or, when `complete` is not set, those that were until `stop`.
    void sigFinished(bool complete);

private:
    void step();
    void finish(bool complete);

    std::optional<LogQuery> query_;
    LogRows rows_;
    QTimer timer_;
    QElapsedTimer sinceProgress_;
};
