#include "monitor/ui/settings/PictureFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>

namespace corvanta {

namespace {

constexpr qint64 MostPixels = 100'000'000;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(PictureFile)
};

} // namespace

PictureFile PictureFile::read(const QString& path, const QSize& bounds) {
    if (!QFileInfo(path).isFile())
        return {{}, Texts::tr("图片文件不存在")};
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid()) {
        if (qint64{size.width()} * size.height() > MostPixels)
            return {{}, Texts::tr("图片过大")};
        // A picture that stands on its side is turned after it was scaled.
        const bool turned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
        const QSize room = turned ? bounds.transposed() : bounds;
        if (size.width() > room.width() || size.height() > room.height())
            reader.setScaledSize(size.scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    }
    const QImage picture = reader.read();
    if (picture.isNull())
        return {{}, Texts::tr("无法读取该图片")};
    if (picture.width() > bounds.width() || picture.height() > bounds.height())
        return {picture.scaled(bounds, Qt::KeepAspectRatio, Qt::SmoothTransformation), {}};
    return {picture, {}};
}

QString pictureFilter() {
    return Texts::tr("图片") + QStringLiteral(" (*.png *.jpg *.jpeg *.bmp *.gif *.svg)");
}

} // namespace corvanta
