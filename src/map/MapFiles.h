#pragma once

#include "map/MapRecord.h"

#include <QMetaType>
#include <QString>

#include <optional>

namespace corvanta::map {

/// A picture of the icon library. A value.
struct MapIcon {
    QString fileName;
    QString hash; ///< of the content, lower-case hex SHA-256; empty: not told
    qint64 size = 0;
    bool isPublic = false;
    QString filePath; ///< where it is here, once it is there
};

/// Icons of the account's document, in either of the forms that services send; the public ones first.
QList<MapIcon> iconsOf(const QVariantMap& document);

/// Where files of the account's document are kept: below `folder` (ends with a slash), named after their content
/// where that is known, so that accounts share what is the same and never mistake what is not; else apart by
/// `account`, the owner. Empty for a name that can be no file's.
QString mapPath(const QString& folder, const MapRecord& map, const QString& account);
QString iconPath(const QString& folder, const MapIcon& icon, const QString& account);

/// Whether a file is there, as large as it is told to be (0: unknown).
bool isThere(const QString& path, qint64 size);

} // namespace corvanta::map

Q_DECLARE_METATYPE(corvanta::map::MapIcon)
