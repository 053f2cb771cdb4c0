#include "map/MapFiles.h"

#include "base/DataTree.h"

#include <QDebug>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

namespace corvanta::map {
namespace {

bool isHash(const QString& text) {
    static const QRegularExpression hash(QStringLiteral("^[0-9a-f]{64}$"));
    return hash.match(text).hasMatch();
}

QString apart(const QString& folder, const QString& owner, const QString& name) {
    const auto part = dataTree::pathComponent(owner);
    const auto file = dataTree::pathComponent(name);
    if (part && file)
        return folder + *part + QLatin1Char('/') + *file;
    qDebug() << "no name for a file" << name.left(80);
    return {};
}

void addIcons(const QVariant& list, bool isPublic, QList<MapIcon>& icons) {
    QSet<QString> seen;
    const QVariantList entries = list.toList();
    for (const QVariant& entry : entries) {
        const QVariantMap map = entry.toMap();
        MapIcon icon;
        icon.fileName = map.value(QStringLiteral("filename")).toString();
        icon.hash = map.value(QStringLiteral("hash")).toString();
        icon.size = map.value(QStringLiteral("size")).toLongLong();
        icon.isPublic = isPublic;
        if (icon.fileName.isEmpty() || seen.contains(icon.fileName))
            continue;
        seen.insert(icon.fileName);
        icons += icon;
    }
}

} // namespace

QList<MapIcon> iconsOf(const QVariantMap& document) {
    const auto below = [](const QVariantMap& map, const char* key) {
        return map.value(QLatin1String(key)).toMap();
    };
    QList<MapIcon> icons;
    for (const char* const kind : {"public", "user"}) {
        const bool isPublic = qstrcmp(kind, "public") == 0;
        const QVariantMap first = below(below(document, "fileinfo"), "icons");
        const QVariantMap second = below(below(document, kind), "icons");
        addIcons(first.contains(QLatin1String(kind)) ? first.value(QLatin1String(kind))
                                                     : second.value(QStringLiteral("fileinfo")),
                 isPublic, icons);
    }
    return icons;
}

QString mapPath(const QString& folder, const MapRecord& map, const QString& account) {
    const QString name = map.fileName;
    const QString below = folder + QStringLiteral("maps/");
    const auto file = dataTree::pathComponent(name);
    if (file && isHash(name.section(QLatin1Char('.'), 0, 0)))
        return below + *file;
    return apart(below, map.ownerId.isEmpty() ? account : map.ownerId, name);
}

QString iconPath(const QString& folder, const MapIcon& icon, const QString& account) {
    const QString below = folder + QStringLiteral("icons/");
    if (isHash(icon.hash)) {
        const bool isJpeg = icon.fileName.endsWith(QLatin1String(".jpg"), Qt::CaseInsensitive) ||
                            icon.fileName.endsWith(QLatin1String(".jpeg"), Qt::CaseInsensitive);
        return below + icon.hash + (isJpeg ? QStringLiteral(".jpg") : QStringLiteral(".png"));
    }
    return apart(below, icon.isPublic ? QStringLiteral("public") : account, icon.fileName);
}

bool isThere(const QString& path, qint64 size) {
    const QFileInfo file(path);
    return file.isFile() && file.size() > 0 && (size <= 0 || file.size() == size);
}

} // namespace corvanta::map
