// Draws a vector picture as an icon file: MakeIcon PICTURE.svg ICON.ico

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

namespace {

/// Width and height in pixels of the pictures in the file: what desktops and title bars ask for.
constexpr int sizes[] = {16, 20, 24, 32, 40, 48, 64, 128, 256};

QByteArray drawn(QSvgRenderer& picture, int size) {
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    picture.render(&painter);
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

/// The ICO container: a head of 6 bytes, an entry of 16 bytes a picture, then the pictures, here as PNG.
/// Little-endian.
QByteArray iconFile(QSvgRenderer& picture) {
    const auto count = static_cast<quint16>(std::size(sizes));
    QByteArray head;
    QByteArray pictures;
    QDataStream stream(&head, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << quint16(0) << quint16(1) << count;
    for (const int size : sizes) {
        const QByteArray png = drawn(picture, size);
        const auto edge = static_cast<quint8>(size % 256); // 0 stands for 256
        stream << edge << edge << quint8(0) << quint8(0) << quint16(1) << quint16(32) << quint32(png.size())
               << quint32(6 + 16 * count + pictures.size());
        pictures += png;
    }
    return head + pictures;
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("MakeIcon PICTURE.svg ICON.ico\n", stderr);
        return 2;
    }
    QSvgRenderer picture(arguments[1]);
    QFile file(arguments[2]);
    if (!picture.isValid() || !file.open(QIODevice::WriteOnly)) {
        std::fputs("The picture cannot be read or the icon not be written.\n", stderr);
        return 1;
    }
    const QByteArray bytes = iconFile(picture);
    return file.write(bytes) == bytes.size() ? 0 : 1;
}
