#include "account/SealedText.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <sodium.h>

namespace corvanta::account {
namespace {

unsigned char* bytesOf(QByteArray& array) {
    return reinterpret_cast<unsigned char*>(array.data());
}

const unsigned char* bytesOf(const QByteArray& array) {
    return reinterpret_cast<const unsigned char*>(array.constData());
}

constexpr auto OwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

} // namespace

QByteArray makeKey() {
    QByteArray key(crypto_secretbox_KEYBYTES, '\0');
    if (sodium_init() < 0)
        qFatal("no random numbers"); // nothing may be sealed with a key that can be guessed
    randombytes_buf(key.data(), static_cast<std::size_t>(key.size()));
    return key;
}

bool isKey(const QByteArray& bytes) {
    return bytes.size() == static_cast<int>(crypto_secretbox_KEYBYTES);
}

QString seal(const QByteArray& key, const QString& text) {
    Q_ASSERT(isKey(key));
    if (sodium_init() < 0)
        qFatal("no random numbers");
    const QByteArray plain = text.toUtf8();
    QByteArray nonce(crypto_secretbox_NONCEBYTES, '\0');
    randombytes_buf(nonce.data(), static_cast<std::size_t>(nonce.size()));
    QByteArray box(plain.size() + static_cast<int>(crypto_secretbox_MACBYTES), '\0');
    crypto_secretbox_easy(bytesOf(box), bytesOf(plain), static_cast<unsigned long long>(plain.size()), bytesOf(nonce),
                          bytesOf(key));
    return QString::fromLatin1((nonce + box).toBase64());
}

std::optional<QString> unseal(const QByteArray& key, const QString& sealed) {
    const QByteArray bytes = QByteArray::fromBase64(sealed.toLatin1());
    const int nonce = static_cast<int>(crypto_secretbox_NONCEBYTES);
    const int tag = static_cast<int>(crypto_secretbox_MACBYTES);
    if (!isKey(key) || bytes.size() < nonce + tag)
        return std::nullopt;
    QByteArray plain(bytes.size() - nonce - tag, '\0');
    const QByteArray box = bytes.mid(nonce);
    if (crypto_secretbox_open_easy(bytesOf(plain), bytesOf(box), static_cast<unsigned long long>(box.size()),
                                   bytesOf(bytes), bytesOf(key)) != 0)
        return std::nullopt;
    return QString::fromUtf8(plain);
}

std::optional<QByteArray> keyFromFile(const QString& file) {
    QFile known(file);
    if (known.open(QIODevice::ReadOnly)) {
        const QByteArray key = known.read(crypto_secretbox_KEYBYTES + 1);
        known.setPermissions(OwnerOnly);
        if (isKey(key))
            return key;
        qDebug() << "no key in" << file;
    } else if (known.exists()) {
        qDebug() << "the key cannot be read:" << known.errorString();
        return std::nullopt;
    }
    QFileInfo(file).dir().mkpath(QStringLiteral("."));
    QTemporaryFile made(file + QStringLiteral(".XXXXXX")); // its owner's alone from the beginning
    const QByteArray key = makeKey();
    known.close();
    QFile::remove(file);
    if (!made.open() || made.write(key) != key.size() || !made.flush() || !made.rename(file)) {
        qDebug() << "no key could be written:" << made.errorString();
        return std::nullopt;
    }
    made.setAutoRemove(false);
    QFile::setPermissions(file, OwnerOnly);
    return key;
}

} // namespace corvanta::account
