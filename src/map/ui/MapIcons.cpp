#include "map/ui/MapIcons.h"

#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QFile>
#include <QImageReader>
#include <QPixmapCache>

namespace corvanta::map {
namespace {

constexpr qint64 LargestFile = 4LL << 20; // bytes
constexpr qint64 MostPixels = 4096LL * 4096;
const QColor SensorColor(70, 168, 98);

} // namespace

QPixmap readIcon(const QString& path, int side) {
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly) || file.size() > LargestFile)
        return {};
    const QByteArray begin = file.peek(8);
    QImageReader reader(&file, begin.startsWith("\x89PNG") ? "png" : "jpg");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > MostPixels)
        return {};
    reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    return QPixmap::fromImage(reader.read());
}

QIcon usualIcon(const QString& drawing) {
    return svgIcon(drawing, drawing == QLatin1String("map-camera")      ? theme::Selection
                            : drawing == QLatin1String("map-reference") ? theme::Warning
                                                                        : SensorColor);
}

QPixmap usualPixmap(const QString& drawing, int side) {
    const QString key = QStringLiteral("%1 %2").arg(drawing).arg(side);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = usualIcon(drawing).pixmap(QSize(side, side));
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

QIcon markerIcon(const MapMarker& marker) {
    constexpr int side = 64; // px
    const QPixmap own = readIcon(marker.iconPath, side);
    if (!own.isNull())
        return QIcon(own);
    return usualIcon(marker.isCamera()        ? QStringLiteral("map-camera")
                     : marker.isPositioning() ? QStringLiteral("map-position")
                                              : QStringLiteral("map-sensor"));
}

} // namespace corvanta::map
