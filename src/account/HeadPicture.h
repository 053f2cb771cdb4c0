#pragma once

#include <QImage>
#include <QString>

#include <optional>

class AppPaths;

/// Pictures of accounts: what may be one, and where they are kept.
namespace corvanta::account {

constexpr qint64 LargestHeadFile = 1048576; ///< bytes; a file has to be smaller
constexpr int LargestHeadSide = 4096;       ///< px; a small file may claim to be any size

/// A picture that was looked at, or why it cannot be one: a text for the user.
struct CheckedHead {
    QImage picture; ///< scaled into the side that was asked for, upright
    QString problem;

    bool isValid() const { return problem.isEmpty(); }
};

/// Looks at a file that the user chose: a PNG or JPEG by its content, small enough and whole. `side` in px.
CheckedHead checkHeadPicture(const QString& file, int side);

/// The picture in a file that is kept here, null when there is none that can be shown.
QImage readHeadPicture(const QString& file, int side);
/// `picture` as a round one of that side, as it is shown beside names.
QImage roundPicture(const QImage& picture, int side);

/// Where the picture of the signed-in account is kept; nothing when `phoneId` cannot be the name of a folder.
std::optional<QString> ownHeadFile(const AppPaths& paths, const QString& phoneId);
/// Where the picture of a friend is kept.
std::optional<QString> friendHeadFile(const AppPaths& paths, const QString& friendPhone);

} // namespace corvanta::account
