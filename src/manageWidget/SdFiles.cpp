#include "manageWidget/SdFiles.h"

#include "base/DataTree.h"

namespace corvanta::manage {

QVector<SdFile> SdFile::listFrom(const QVariant& sdlist) {
    QVector<SdFile> files;
    const QVariantList list = sdlist.toList();
    for (const QVariant& one : list) {
        const QVariantMap map = one.toMap();
        SdFile file;
        file.name = map.value(QStringLiteral("name")).toString();
        file.path = map.value(QStringLiteral("path")).toString();
        file.kind = map.value(QStringLiteral("kind")).toString();
        file.size = qMax(qint64{0}, map.value(QStringLiteral("size")).toLongLong());
        file.time = QDateTime::fromString(map.value(QStringLiteral("time")).toString(),
                                          QStringLiteral("yyyy-MM-dd hh:mm:ss"));
        file.isFolder = map.value(QStringLiteral("dir")).toBool();
        if (!file.path.isEmpty())
            files += file;
    }
    return files;
}

QString folderAbove(const QString& folder) {
    const QString plain = folder.endsWith(QLatin1Char('/')) ? folder.chopped(1) : folder;
    return plain.left(qMax(0, plain.lastIndexOf(QLatin1Char('/'))));
}

QString localName(const SdFile& file, const QString& ipncId) {
    if (const auto own = dataTree::pathComponent(file.name))
        return *own;
    const QString device = dataTree::pathComponent(ipncId).value_or(QStringLiteral("device"));
    const QString ending = file.kind == QLatin1String("image") ? QStringLiteral(".jpg") : QStringLiteral(".avi");
    return device + QLatin1Char('-') +
           (file.time.isValid() ? file.time : QDateTime::currentDateTime()).toString(dataTree::FileTimeFormat) +
           ending;
}

} // namespace corvanta::manage
