#include "map/ui/MapMarkVideoDiolag.h"

#include "base/ui/Worded.h"
#include "video/live/LivePane.h"
#include "video/ui/ItemVideo.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta::map {
namespace {
const QSize Usual(640, 420);    // px
const QSize Smallest(320, 180); // px, of the picture
} // namespace

MapMarkVideoDiolag::MapMarkVideoDiolag(const AppContext& context, const MapMarker& marker, QWidget* parent)
    : FramedDialog({}, parent)
    , live_(new video::LivePane(context, marker.ipncId, this))
    , toggle_(addButton({}, QStringLiteral("mapVideoToggle"), false)) {
    setObjectName(QStringLiteral("MapMarkVideoDiolag"));
    setSizeGripEnabled(true);
    auto* const name = new QLabel(marker.name.left(100).simplified(), this);
    name->setObjectName(QStringLiteral("mapVideoName"));
    name->setTextFormat(Qt::PlainText);
    name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    body()->addWidget(name);
    live_->tile().setMinimumSize(Smallest);
    body()->addWidget(live_, 1);
    connect(live_, &video::LivePane::sigOpenChanged, this, &MapMarkVideoDiolag::setWords);
    connect(toggle_, &QPushButton::clicked, live_, &video::LivePane::toggle);
    auto* const close = addButton({}, QStringLiteral("mapVideoClose"), true);
    wordedText(close, [] { return tr("关闭"); });
    wordedName(close, [] { return tr("关闭"); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    worded(this, [this] { setWords(); });
    resize(Usual);
    live_->toggle();
}

void MapMarkVideoDiolag::setWords() {
    setWindowTitle(tr("实时视频"));
    setAccessibleName(windowTitle());
    toggle_->setText(live_->isOpen() ? tr("关闭视频") : tr("打开视频"));
    toggle_->setAccessibleName(toggle_->text());
}

ItemVideo& MapMarkVideoDiolag::tile() const {
    return live_->tile();
}

void MapMarkVideoDiolag::done(int result) {
    live_->stop();
    FramedDialog::done(result);
}

} // namespace corvanta::map
