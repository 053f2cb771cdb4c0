#pragma once

#include <QString>
#include <QVariant>

/// Where dialogs write down what their user did. The database implements it. GUI thread only.
///
/// Times are handed over as QDateTime values: logs are filtered by comparing them as the database stores those.
class OperationLog {
public:
    OperationLog() = default;
    OperationLog(const OperationLog&) = delete;
    OperationLog& operator=(const OperationLog&) = delete;
    virtual ~OperationLog() = default;

    /// An operation of an account: its kind, what it did, and what else is to be known of it.
    virtual void addOperateLog(const QString& user, const QVariant& startDate, const QString& type,
                               const QString& context, const QString& context1) = 0;

    /// A sign-in (`loginDate` valid) or a sign-out (`logoutDate` valid); each is a row of its own.
    virtual void addLoginLog(const QString& loginUser, const QVariant& loginDate, const QVariant& logoutDate) = 0;
};
