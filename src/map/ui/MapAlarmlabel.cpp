#include "map/ui/MapAlarmlabel.h"

#include "map/MarkerRules.h"

#include <QDebug>
#include <QPainter>

namespace corvanta::map {
namespace {
constexpr double Side = 64; // px, round the marker's icon
} // namespace

QMovie* AlarmMovies::take(int level) {
    const QString picture = alarmPicture(level);
    if (picture.isEmpty())
        return nullptr;
    Entry& entry = entries_[level];
    if (entry.movie == nullptr) {
        entry.movie = std::make_unique<QMovie>(picture);
        entry.movie->setCacheMode(QMovie::CacheAll);
        if (!entry.movie->isValid())
            qDebug() << "no picture of an alarm" << picture;
    }
    if (entry.users++ == 0)
        entry.movie->start();
    return entry.movie.get();
}

void AlarmMovies::release(int level) {
    const auto entry = entries_.find(level);
    if (entry != entries_.end() && --entry->second.users == 0)
        entry->second.movie->stop();
}

MapAlarmlabel::MapAlarmlabel(AlarmMovies& movies, QGraphicsItem* parent)
    : QGraphicsObject(parent)
    , movies_(movies) {
    setFlag(ItemStacksBehindParent);
    setAcceptedMouseButtons(Qt::NoButton);
}

MapAlarmlabel::~MapAlarmlabel() {
    drop();
}

void MapAlarmlabel::drop() {
    if (movie_ == nullptr)
        return;
    disconnect(movie_, nullptr, this, nullptr);
    movies_.release(level_);
    movie_ = nullptr;
}

void MapAlarmlabel::setLevel(int level) {
    drop();
    level_ = level;
    movie_ = movies_.take(level);
    if (movie_ != nullptr)
        connect(movie_, &QMovie::frameChanged, this, [this] { update(); });
    update();
}

QRectF MapAlarmlabel::boundingRect() const {
    return {-Side / 2, -Side / 2, Side, Side};
}

void MapAlarmlabel::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    if (movie_ == nullptr)
        return;
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    const QPixmap frame = movie_->currentPixmap();
    painter->drawPixmap(boundingRect(), frame, QRectF(frame.rect()));
}

} // namespace corvanta::map
