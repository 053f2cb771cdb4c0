#pragma once

#include "account/SignIn.h"

#include <QObject>
#include <QStringList>

#include <functional>

class PasswordVault;
class SqlHelp;

/// The sign-ins that the user wants remembered: their numbers, and their passwords protected by the vault. What lies
/// readable in an older file is taken, and replaced by a protected text. GUI thread.
class RememberedLogins final : public QObject {
    Q_OBJECT
public:
    /// Both outlive it.
    RememberedLogins(SqlHelp& database, PasswordVault& vault, QObject* parent = nullptr);

    /// The numbers, the one remembered first comes first.
    QStringList numbers() const;
    bool isRemembered(const QString& number) const { return numbers().contains(number); }
    /// Hands over the password of a number, later, while this object lives; an empty one when it cannot be read.
    void password(const QString& number, std::function<void(const QString& password)> then);

    /// Remembers this pair and no other.
    void remember(const corvanta::account::Credentials& credentials);
    void forget(const QString& number);

private:
    SqlHelp& database_;
    PasswordVault& vault_;
};
