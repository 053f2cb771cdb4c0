#include "account/PasswordVault.h"

#include "account/SealedText.h"
#include "platform/DataProtection.h"

#include <QDebug>
#include <QPointer>
#include <QTimer>

#include <utility>

namespace account = corvanta::account;
namespace platform = corvanta::platform;

namespace {

// How a stored text begins; none of these fits into a password.
const QString BySystem = QStringLiteral("corvanta-vault:system:");
const QString ByStore = QStringLiteral("corvanta-vault:store:");
const QString ByFile = QStringLiteral("corvanta-vault:file:");

} // namespace

PasswordVault::PasswordVault(QString keyFile, std::unique_ptr<KeyStore> store, std::chrono::milliseconds limit,
                             QObject* parent)
    : QObject(parent)
    , keyFile_(std::move(keyFile))
    , keyStore_(std::move(store))
    , limit_(limit) {}

void PasswordVault::protect(const QString& password, QObject* receiver, OnProtected then) {
    whenStoreAnswered(receiver, [this, password, then = std::move(then)] { then(protectNow(password)); });
}

void PasswordVault::reveal(const QString& stored, QObject* receiver, OnRevealed then) {
    if (stored.startsWith(ByStore))
        whenStoreAnswered(receiver, [this, stored, then = std::move(then)] { then(revealNow(stored)); });
    else // needs no store
        QTimer::singleShot(0, receiver, [this, stored, then = std::move(then)] { then(revealNow(stored)); });
}

void PasswordVault::whenStoreAnswered(QObject* receiver, Task task) {
    waiting_.emplace_back([guarded = QPointer<QObject>(receiver), task = std::move(task)] {
        if (guarded != nullptr)
            task();
    });
    if (state_ == Store::Answered || (state_ == Store::NotAsked && keyStore_ == nullptr)) {
        state_ = Store::Answered;
        QTimer::singleShot(0, this, [this] { storeAnswered(storeKey_); });
    } else if (state_ == Store::NotAsked) {
        state_ = Store::Asked;
        QTimer::singleShot(limit_, this, [this] {
            if (state_ == Store::Asked) {
                qDebug() << "the secret service does not answer";
                storeAnswered(std::nullopt);
            }
        });
        keyStore_->fetch([self = QPointer<PasswordVault>(this)](std::optional<QByteArray> key) {
            if (self != nullptr && self->state_ == Store::Asked)
                QTimer::singleShot(0, self.data(), [self, key = std::move(key)] {
                    if (self->state_ == Store::Asked)
                        self->storeAnswered(key);
                });
        });
    }
}

void PasswordVault::storeAnswered(std::optional<QByteArray> key) {
    state_ = Store::Answered;
    storeKey_ = std::move(key);
    for (const Task& task : std::exchange(waiting_, {}))
        task();
}

QString PasswordVault::protectNow(const QString& password) const {
    if (const auto bytes = platform::protectForUser(password.toStdString()))
        return BySystem + QString::fromLatin1(QByteArray::fromStdString(*bytes).toBase64());
    if (storeKey_)
        return ByStore + account::seal(*storeKey_, password);
    if (const auto key = account::keyFromFile(keyFile_))
        return ByFile + account::seal(*key, password);
    return {};
}

PasswordVault::Revealed PasswordVault::revealNow(const QString& stored) const {
    if (stored.startsWith(BySystem)) {
        const QByteArray bytes = QByteArray::fromBase64(stored.mid(BySystem.size()).toLatin1());
        const auto plain = platform::unprotectForUser(bytes.toStdString());
        return {plain ? std::optional(QString::fromStdString(*plain)) : std::nullopt};
    }
    if (stored.startsWith(ByStore))
        return {storeKey_ ? account::unseal(*storeKey_, stored.mid(ByStore.size())) : std::nullopt};
    if (stored.startsWith(ByFile)) {
        const auto key = account::keyFromFile(keyFile_);
        return {key ? account::unseal(*key, stored.mid(ByFile.size())) : std::nullopt};
    }
    return {stored, true};
}
