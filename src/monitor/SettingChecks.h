#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <optional>

/// Checks of what is entered in the settings: the text to show, or nothing when it is well.
namespace corvanta::settings {

/// Longest name of the application and of the company, characters.
inline constexpr int LongestName = 64;

std::optional<QString> checkApplicationName(const QString& name);
/// May be empty.
std::optional<QString> checkCompanyName(const QString& name);

/// "不限" in the language of the interface, or whole minutes from 1 to a day.
std::optional<QString> checkLongestOpening(const QString& text);
/// What is stored for a text that passed the check: a number, or "不限" in every language.
QVariant longestOpeningFromText(const QString& text);
/// The text for a stored value: "不限", translated, for what means no limit, else the value as it is.
QString longestOpeningText(const QVariant& stored);

/// The proxy's entries as the user writes them.
struct ProxyEntries {
    QString host;
    QString port;
    QString user;
    QString password;
};
std::optional<QString> checkProxy(const ProxyEntries& entries);

/// Endings of the sound files that can be chosen, without the dot, in lower case.
QStringList soundSuffixes();
/// An empty path is well: no sound. `type` is named in the text.
std::optional<QString> checkSoundFile(const QString& type, const QString& path);

} // namespace corvanta::settings
