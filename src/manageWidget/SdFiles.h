#pragma once

#include <QDateTime>
#include <QString>
#include <QVariantMap>
#include <QVector>

namespace corvanta::manage {

/// A file or folder on a device's card.
struct SdFile {
    QString name;
    QString path;    ///< as the device knows it; goes back to it and nowhere else
    QString kind;    ///< "video", "image" or another
    qint64 size = 0; ///< bytes
    QDateTime time;
    bool isFolder = false;

    static QVector<SdFile> listFrom(const QVariant& sdlist);
};

/// The folder above one of the card; empty for the root and what lies in it.
QString folderAbove(const QString& folder);

/// A name for the file here: its own when that can be one, else a harmless one made from the device and the time.
QString localName(const SdFile& file, const QString& ipncId);

} // namespace corvanta::manage
