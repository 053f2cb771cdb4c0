#include "map/PicturePyramid.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace corvanta::map {
namespace {

constexpr int SmallestSide = 256;                   ///< px; smaller levels save nothing
constexpr qint64 LargeAsWords = 32LL * 1000 * 1000; ///< px; larger pictures are kept in three bytes a pixel

/// In a format that is halved and drawn quickly. What is transparent becomes white, like paper.
QImage asLevel(QImage picture) {
    if (picture.format() == QImage::Format_Grayscale8)
        return picture;
    if (picture.isGrayscale() && !picture.hasAlphaChannel())
        return picture.convertToFormat(QImage::Format_Grayscale8);
    const bool isLarge = qint64(picture.width()) * picture.height() > LargeAsWords;
    const QImage::Format format = isLarge ? QImage::Format_RGB888 : QImage::Format_RGB32;
    if (!picture.hasAlphaChannel())
        return picture.convertToFormat(format);
    QImage paper(picture.size(), QImage::Format_RGB32);
    if (paper.isNull())
        return {};
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(0, 0, picture);
    return paper.convertToFormat(format);
}

int bytesOf(const QImage& image) {
    return image.depth() / 8;
}

/// Half as large: each pixel is the mean of four. An odd row or column at the end is repeated.
QImage halved(const QImage& from) {
    QImage to((from.width() + 1) / 2, (from.height() + 1) / 2, from.format());
    if (to.isNull())
        return to;
    const int bytes = bytesOf(from);
    const std::ptrdiff_t twoPixels = std::ptrdiff_t{2} * bytes;
    const int whole = from.width() / 2;
    for (int y = 0; y < to.height(); ++y) {
        const uchar* upper = from.constScanLine(2 * y);
        const uchar* lower = from.constScanLine(std::min(2 * y + 1, from.height() - 1));
        uchar* out = to.scanLine(y);
        for (int x = 0; x < to.width(); ++x) {
            const int next = x < whole ? bytes : 0;
            for (int c = 0; c < bytes; ++c)
                out[c] = static_cast<uchar>((upper[c] + upper[c + next] + lower[c] + lower[c + next] + 2) >> 2);
            out += bytes;
            upper += twoPixels;
            lower += twoPixels;
        }
    }
    return to;
}

} // namespace

PicturePyramid PicturePyramid::of(QImage picture) {
    PicturePyramid pyramid;
    QImage level = asLevel(std::move(picture));
    while (!level.isNull()) {
        const bool isLast = std::max(level.width(), level.height()) <= SmallestSide;
        pyramid.levels_.push_back(level);
        level = isLast ? QImage() : halved(level);
    }
    return pyramid;
}

PicturePyramid PicturePyramid::read(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > LargestFile) {
        qDebug() << "no picture of a map" << path;
        return {};
    }
    // The first bytes tell which of the two it is; no other reader is let at the file.
    const QByteArray begin = file.peek(8);
    const QByteArray format = begin.startsWith("\x89PNG") ? "png" : begin.startsWith("\xff\xd8\xff") ? "jpg" : "";
    QImageReader reader(&file, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize size = format.isEmpty() ? QSize() : reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > MostPixels) {
        qDebug() << "no picture that can be shown" << path << size;
        return {};
    }
    QImage picture = reader.read();
    if (picture.isNull())
        qDebug() << "the picture of a map cannot be read" << path << reader.errorString();
    return of(std::move(picture));
}

PicturePyramid::Part PicturePyramid::part(const QRectF& wanted, double scale) const {
    if (isEmpty() || !(scale > 0))
        return {};
    const int deepest = static_cast<int>(levels_.size()) - 1;
    const int number = std::clamp(static_cast<int>(std::floor(std::log2(1 / scale) + 1e-6)), 0, deepest);
    const QImage& level = levels_[static_cast<std::size_t>(number)];
    // An odd row or column counts for two: levels are a little wider than the picture divided.
    const double step = std::ldexp(1.0, number);
    constexpr int margin = 2; // px, that filters look at
    const QRectF inLevel(wanted.topLeft() / step, wanted.size() / step);
    const QRect area = inLevel.toAlignedRect().adjusted(-margin, -margin, margin, margin).intersected(level.rect());
    if (area.isEmpty())
        return {};
    const uchar* const begin = level.constScanLine(area.y()) + qptrdiff(area.x()) * bytesOf(level);
    return {QImage(begin, area.width(), area.height(), level.bytesPerLine(), level.format()),
            QRectF(QPointF(area.topLeft()) * step, QSizeF(area.size()) * step)};
}

} // namespace corvanta::map
