#include "client/TileCounts.h"

#include "monitor/ui/Fwidget.h"
#include "video/ui/GLYuvWidget.h"
#include "video/ui/ItemVideo.h"

#include <QCoreApplication>
#include <QEvent>

TileCounts::TileCounts(const Fwidget& grid)
    : grid_(grid)
    , counted_(static_cast<std::size_t>(grid.grid().poolSize())) {
    for (int index = 0; index < grid_.grid().poolSize(); ++index)
        watch(*grid_.tile(index));
    QCoreApplication::instance()->installEventFilter(this);
}

void TileCounts::watch(const ItemVideo& tile) {
    PictureCounts& counts = counted_[static_cast<std::size_t>(tile.tileIndex())];
    connect(&tile, &ItemVideo::sigYuv, this, [&counts] { ++counts.received; });
}

bool TileCounts::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        if (const auto* const renderer = qobject_cast<GLYuvWidget*>(watched)) {
            const auto* const tile = qobject_cast<ItemVideo*>(renderer->parent());
            if (tile != nullptr)
                ++counted_[static_cast<std::size_t>(tile->tileIndex())].painted;
        }
    }
    return QObject::eventFilter(watched, event);
}

PictureCounts TileCounts::ofTile(int index) const {
    PictureCounts counts = counted_[static_cast<std::size_t>(index)];
    counts.overwritten = counts.received > counts.painted ? counts.received - counts.painted : 0;
    return counts;
}

PictureCounts TileCounts::total() const {
    PictureCounts sum;
    for (int index = 0; index < grid_.grid().poolSize(); ++index) {
        const PictureCounts one = ofTile(index);
        sum.received += one.received;
        sum.overwritten += one.overwritten;
        sum.painted += one.painted;
    }
    return sum;
}
