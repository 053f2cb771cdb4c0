#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Texts sealed with a secret key (libsodium's secretbox): unreadable and unchangeable without it.
namespace corvanta::account {

/// A new random key.
QByteArray makeKey();
bool isKey(const QByteArray& bytes);

/// `text` sealed, as text of the base64 alphabet. `key` is a key.
QString seal(const QByteArray& key, const QString& text);
/// Nothing when it was not sealed with this key, or is damaged.
std::optional<QString> unseal(const QByteArray& key, const QString& sealed);

/// The key in `file`, which is made, with its folder, when it is missing, and made anew when it is no key. Only its
/// owner can read it. Nothing, and a debug line, when it can neither be read nor made.
std::optional<QByteArray> keyFromFile(const QString& file);

} // namespace corvanta::account
