#include "map/web/MarkerPictures.h"

#include <QBuffer>
#include <QDebug>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

namespace corvanta::map {

namespace {

/// As an address that holds the picture, empty when it cannot be read.
QString addressOf(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    constexpr int LargestEdge = 4096; // px
    if (size.isEmpty() || size.width() > LargestEdge || size.height() > LargestEdge) {
        qDebug() << "a marker's icon cannot be used" << size << reader.errorString();
        return {};
    }
    const QSize edge(MarkerPictures::Edge, MarkerPictures::Edge);
    const bool isDrawing = reader.format() == "svg";
    if (isDrawing || size.width() > edge.width() || size.height() > edge.height())
        reader.setScaledSize(size.scaled(edge, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    const QImage image = reader.read();
    QBuffer png;
    if (image.isNull() || !png.open(QIODevice::WriteOnly) || !image.save(&png, "PNG")) {
        qDebug() << "a marker's icon cannot be read" << reader.errorString();
        return {};
    }
    return QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.data().toBase64());
}

} // namespace

MarkerPictures::Picture& MarkerPictures::pictureAt(const QString& path) {
    Picture& picture = pictures_[path];
    const QDateTime changed = QFileInfo(path).lastModified();
    if (picture.name.isEmpty() || picture.changed != changed)
        picture = {changed, QStringLiteral("picture-") + QString::number(++count_), addressOf(path)};
    return picture;
}

QString MarkerPictures::nameFor(const MapMarker& marker, const Define& define) {
    QString own = marker.isCamera() ? QStringLiteral("camera.svg") : QStringLiteral("sensor.svg");
    if (marker.iconPath.isEmpty())
        return own;
    const Picture& picture = pictureAt(marker.iconPath);
    if (picture.address.isEmpty())
        return own;
    if (!defined_.contains(picture.name)) {
        defined_.insert(picture.name);
        define(picture.name, picture.address);
    }
    return picture.name;
}

} // namespace corvanta::map
