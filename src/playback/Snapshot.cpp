#include "playback/Snapshot.h"

#include <QDebug>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

#include <algorithm>

namespace corvanta::playback {

namespace {

constexpr int JpegQuality = 92;

int level(double value) {
    return static_cast<int>(std::clamp(value + 0.5, 0.0, 255.0));
}

} // namespace

QImage toImage(const Picture& picture) {
    const auto width = static_cast<int>(picture.size.width);
    const auto height = static_cast<int>(picture.size.height);
    QImage image(width, height, QImage::Format_RGB32);
    const std::uint8_t* luma = picture.bytes.data();
    const std::uint8_t* const blue = luma + static_cast<std::ptrdiff_t>(width) * height;
    const std::uint8_t* const red = blue + static_cast<std::ptrdiff_t>(width / 2) * (height / 2);
    for (int y = 0; y < height; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y)); // a line of RGB32 is an array of these
        const std::ptrdiff_t chroma = static_cast<std::ptrdiff_t>(y / 2) * (width / 2);
        for (int x = 0; x < width; ++x) {
            const std::ptrdiff_t sample = chroma + x / 2; // one for two by two points
            const double u = blue[sample] - 127.5;
            const double v = red[sample] - 127.5;
            const double light = *luma++;
            line[x] = qRgb(level(light + 1.13983 * v), level(light - 0.39465 * u - 0.58060 * v),
                           level(light + 2.03211 * u));
        }
    }
    return image;
}

bool saveSnapshot(const QImage& picture, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) { // what a full disk did not take is noticed
        qDebug() << "no picture written to" << path << file.errorString();
        return false;
    }
    const bool png = QFileInfo(path).suffix().compare(QLatin1String("png"), Qt::CaseInsensitive) == 0;
    QImageWriter writer(&file, png ? "png" : "jpg");
    writer.setQuality(png ? -1 : JpegQuality);
    if (writer.write(picture) && file.commit())
        return true;
    qDebug() << "no picture written to" << path << writer.errorString() << file.errorString();
    return false;
}

bool saveSnapshot(const Picture& picture, const QString& path) {
    return saveSnapshot(toImage(picture), path);
}

} // namespace corvanta::playback
