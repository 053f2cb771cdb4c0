#include "account/AccountFlags.h"

#include "base/JsonText.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

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
    QFileInfo(file_).dir().mkpath(QStringLiteral("."));
    QSaveFile file(file_);
    file.setDirectWriteFallback(true);
    const std::string text = corvanta::json::toText({{AutoLogin, autoLogin_}, {SavePassword, savePassword_}});
    if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), static_cast<qint64>(text.size())) < 0 ||
        !file.commit())
        qDebug() << "account flags could not be saved" << file.errorString();
}
