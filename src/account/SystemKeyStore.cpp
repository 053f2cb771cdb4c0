#include "account/KeyStore.h"

#ifdef Q_OS_WIN

std::unique_ptr<KeyStore> systemKeyStore() {
    return nullptr; // the system protects data without a key of ours
}

#else

#include "account/SealedText.h"

#include <QDebug>
#include <QFileInfo>
#include <QStandardPaths>
#include <qt5keychain/keychain.h>

namespace {

const QString Service = QStringLiteral("Corvanta");
const QString Entry = QStringLiteral("remembered sign-in");

/// Without a session there is nobody to ask, and the libraries below would try to start one.
bool hasSession() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

class SecretService final : public KeyStore {
public:
    void fetch(Answer answer) override {
        if (!hasSession()) {
            answer(std::nullopt);
            return;
        }
        auto* const job = new QKeychain::ReadPasswordJob(Service); // deletes itself
        job->setKey(Entry);
        QObject::connect(job, &QKeychain::Job::finished, job, [job, answer = std::move(answer)] {
            const QByteArray key = job->binaryData();
            if (job->error() == QKeychain::NoError && corvanta::account::isKey(key)) {
                answer(key);
            } else if (job->error() == QKeychain::NoError || job->error() == QKeychain::EntryNotFound) {
                store(corvanta::account::makeKey(), answer);
            } else {
                qDebug() << "no secret service:" << job->errorString();
                answer(std::nullopt);
            }
        });
        job->start();
    }

private:
    static void store(const QByteArray& key, const Answer& answer) {
        auto* const job = new QKeychain::WritePasswordJob(Service); // deletes itself
        job->setKey(Entry);
        job->setBinaryData(key);
        QObject::connect(job, &QKeychain::Job::finished, job, [job, key, answer] {
            if (job->error() != QKeychain::NoError)
                qDebug() << "the secret service does not take the key:" << job->errorString();
            answer(job->error() == QKeychain::NoError ? std::optional(key) : std::nullopt);
        });
        job->start();
    }
};

} // namespace

std::unique_ptr<KeyStore> systemKeyStore() {
    return std::make_unique<SecretService>();
}

#endif
