#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

/// What an update server says of the newest version: "versionMd5.json".
namespace corvanta::update {

/// A file of the installation.
struct ListedFile {
    QString path;   ///< relative to the installation folder, with "/"; every part of it can be a file's name
    QByteArray md5; ///< of the content, 32 lower-case hexadecimal digits
};

/// A description of which everything has been checked: no path leaves the folder, none is there twice (without
/// regard to case), none is the users' (`isUserData`).
struct UpdateDescription {
    int version = 0;
    QString updaterName;           ///< the name of a file; empty only when the version is not newer than this build
    std::vector<ListedFile> files; ///< in the order of the server's list
};

/// What reading came to. Without a description `problem` says why, for the user.
struct ParsedDescription {
    std::optional<UpdateDescription> description;
    QString problem;
};

/// The text for a server that cannot be asked, or answers with something else than a description.
QString noDescriptionText();

/// Most that a description may have, bytes and entries.
inline constexpr qint64 LargestDescription = 64LL << 20;
inline constexpr int MostEntries = 1'000'000;

/// Reads a description that came from outside. Of a version that is not newer than this build only the number is
/// read. Takes its time with a large one; any thread.
ParsedDescription parseDescription(const QByteArray& text);

/// Writes "versionMd5.json" into `folder` from what the folder contains: this build's version and every file but the
/// users'. Links are left out. Returns what went wrong, for who publishes the version. Takes its time; any thread.
std::optional<QString> writeDescription(const QString& folder);

} // namespace corvanta::update
