#include "account/RememberedLogins.h"

#include "account/PasswordVault.h"
#include "database/SqlHelp.h"

#include <QDebug>
#include <QPointer>

RememberedLogins::RememberedLogins(SqlHelp& database, PasswordVault& vault, QObject* parent)
    : QObject(parent)
    , database_(database)
    , vault_(vault) {}

QStringList RememberedLogins::numbers() const {
    QStringList result;
    for (const SqlHelp::PhoneAndPassword& row : database_.phonesAndPasswords())
        result += row.phonenumber;
    return result;
}

void RememberedLogins::password(const QString& number, std::function<void(const QString&)> then) {
    QString stored;
    for (const SqlHelp::PhoneAndPassword& row : database_.phonesAndPasswords()) {
        if (row.phonenumber == number)
            stored = row.password;
    }
    vault_.reveal(stored, this, [this, number, then = std::move(then)](const PasswordVault::Revealed& revealed) {
        if (!revealed.password)
            qDebug() << "the remembered password cannot be read";
        const QString password = revealed.password.value_or(QString());
        if (revealed.wasReadable && !password.isEmpty()) {
            vault_.protect(password, &database_, [&database = database_, number](const QString& text) {
                if (!text.isEmpty())
                    database.replacePassword(number, text);
            });
        }
        then(password);
    });
}

void RememberedLogins::remember(const corvanta::account::Credentials& credentials) {
    // The dialog that asks for it is gone before the answer comes.
    vault_.protect(credentials.password, &database_,
                   [&database = database_, number = credentials.phoneNumber](const QString& stored) {
                       if (stored.isEmpty())
                           qDebug() << "nothing can protect the password, so it is not remembered";
                       else
                           database.savePhoneAndPassword(number, stored);
                   });
}

void RememberedLogins::forget(const QString& number) {
    database_.forgetPhone(number);
}
