#include "account/AccountFlags.h"

#include "base/JsonText.h"
#include "base/WholeFile.h"

#include <QDebug>
#include <QFile>

namespace {
const QString AutoLogin = QStringLiteral("autoLogin");
const QString SavePassword = QStringLiteral("savePassword");
} // namespace

AccountFlags::AccountFlags(QString path)
    : file_(std::move(path)) {
    QFile file(file_);
    if (!file.open(QIODevice::ReadOnly))
        return;
    bool parsed = false;
    const QVariantMap map = corvanta::json::parseObject(file.readAll(), parsed);
    if (!parsed)
        qDebug() << "account flags could not be read" << file_;
    autoLogin_ = map.value(AutoLogin).toBool();
    savePassword_ = map.value(SavePassword).toBool();
}

void AccountFlags::setAutoLogin(bool on) {
    autoLogin_ = on;
    save();
}

void AccountFlags::setSavePassword(bool on) {
    savePassword_ = on;
    save();
}

void AccountFlags::save() const {
    const QByteArray text =
        QByteArray::fromStdString(corvanta::json::toText({{AutoLogin, autoLogin_}, {SavePassword, savePassword_}}));
    if (const QString problem = corvanta::writeWholeFile(file_, text); !problem.isEmpty())
        qDebug() << "account flags could not be saved" << problem;
}
