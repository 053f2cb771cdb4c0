#include "vision/CodePicture.h"

#include "playback/NumberedVideo.h"

#include <QPainter>
#include <QTemporaryDir>
#include <qrencode.h>

#include <memory>

namespace codePicture {

QImage make(QSize size, QPointF centre, int modulePx, const QString& text) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(qRgb(170, 160, 150));
    add(picture, centre, modulePx, text);
    return picture;
}

void add(QImage& picture, QPointF centre, int modulePx, const QString& text) {
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
        QRcode_encodeString(text.toUtf8().constData(), 1, QR_ECLEVEL_M, QR_MODE_8, 1), &QRcode_free);
    if (code == nullptr || code->width != Modules)
        qFatal("no code of this size");
    constexpr int quiet = 4; // modules
    QPainter painter(&picture);
    painter.translate(centre);
    painter.scale(modulePx, modulePx);
    painter.translate(-Modules / 2.0, -Modules / 2.0);
    painter.fillRect(-quiet, -quiet, Modules + 2 * quiet, Modules + 2 * quiet, Qt::white);
    for (int row = 0; row < Modules; ++row) {
        for (int column = 0; column < Modules; ++column) {
            if ((code->data[row * Modules + column] & 1) != 0)
                painter.fillRect(column, row, 1, 1, Qt::black);
        }
    }
}

QImage makeBars(QSize size) {
    // EAN-13 of 4006381333931: guards and digits as runs of dark and light, written out.
    const QByteArray bars =
        "10100011010100111010111101111010001001011001101010100001010000101000010111010010000101100110101";
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    const int width = size.width() / (bars.size() + 20);
    for (int i = 0; i < bars.size(); ++i) {
        if (bars[i] == '1')
            painter.fillRect((10 + i) * width, size.height() / 4, width, size.height() / 2, Qt::black);
    }
    return picture;
}

bool makeVideo(const QString& file, const QVector<QImage>& pictures, const QStringList& options) {
    const QTemporaryDir folder;
    for (int i = 0; i < pictures.size(); ++i)
        pictures[i].save(folder.filePath(QStringLiteral("%1.png").arg(i)));
    const QStringList coding =
        options.isEmpty() ? QStringList{QStringLiteral("-c:v"), QStringLiteral("libx264"),  QStringLiteral("-g"),
                                        QStringLiteral("5"),    QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p")}
                          : options;
    const QStringList input{QStringLiteral("-v"),
                            QStringLiteral("error"),
                            QStringLiteral("-y"),
                            QStringLiteral("-framerate"),
                            QStringLiteral("25"),
                            QStringLiteral("-i"),
                            folder.filePath(QStringLiteral("%d.png"))};
    return !numbered::run(QStringLiteral("ffmpeg"), input + coding + QStringList{file}).isNull();
}

} // namespace codePicture
