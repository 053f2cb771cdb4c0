#include "storage/ui/Thumbnails.h"

#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QPainter>

#include <memory>

namespace theme = corvanta::theme;

Thumbnails::Thumbnails(QObject* parent)
    : QObject(parent)
    , pictures_(MostKept)
    , unreadable_(10 * MostKept)
    , video_(drawn(QStringLiteral("video")))
    , empty_(drawn(QString()))
    , missing_(drawn(QStringLiteral("picture-off"))) {
    connect(&loader_, &PictureLoader::sigLoaded, this, [this](const QString& path, const QImage& image) {
        if (image.isNull())
            unreadable_.insert(path, std::make_unique<bool>(true).release()); // the cache owns it
        else
            pictures_.insert(path, std::make_unique<QPixmap>(QPixmap::fromImage(image)).release());
        emit sigReady(path);
    });
}

QPixmap Thumbnails::drawn(const QString& drawing) {
    QPixmap result(Size);
    result.fill(theme::Bar);
    if (!drawing.isEmpty()) {
        QPainter painter(&result);
        const QRect place(Size.width() / 2 - theme::IconSize / 2, Size.height() / 2 - theme::IconSize / 2,
                          theme::IconSize, theme::IconSize);
        corvanta::svgIcon(drawing, theme::FaintOnDark).paint(&painter, place);
    }
    return result;
}

QPixmap Thumbnails::of(const corvanta::storage::FileRecord& file) {
    if (!file.isPicture())
        return video_;
    if (const QPixmap* const picture = pictures_.object(file.path))
        return *picture;
    if (unreadable_.contains(file.path))
        return missing_;
    loader_.request(file.path, Size);
    return empty_;
}
