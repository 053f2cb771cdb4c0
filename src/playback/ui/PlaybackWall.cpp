#include "playback/ui/PlaybackWall.h"

#include "base/ui/Worded.h"
#include "playback/ui/PlaybackTile.h"
#include "video/ui/GLYuvWidget.h"

#include <QEvent>
#include <QGridLayout>

#include <cmath>

namespace corvanta::playback {

namespace {
constexpr int PresentDelay = 8; // ms; cameras in step bring their pictures together
} // namespace

PlaybackWall::PlaybackWall(QWidget* parent)
    : QWidget(parent)
    , grid_(new QGridLayout(this)) {
    setObjectName(QStringLiteral("playbackWall"));
    corvanta::wordedName(this, [] { return tr("回放画面"); });
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(0);
    grid_->setSizeConstraint(QLayout::SetNoConstraint);
    presenting_.setSingleShot(true);
    presenting_.setInterval(PresentDelay);
    connect(&presenting_, &QTimer::timeout, this, &PlaybackWall::presentNow);
}

PlaybackWall::~PlaybackWall() {
    // Before the renderers that are drawn there.
    delete surfaceContainer_;
}

void PlaybackWall::setCameras(const QStringList& names) {
    delete surfaceContainer_; // with what it holds of the renderers
    surfaceContainer_ = nullptr;
    surface_ = nullptr;
    qDeleteAll(tiles_);
    tiles_.clear();
    for (const QString& name : names) {
        auto* const tile = new PlaybackTile(tiles_.size(), name, this);
        connect(tile, &PlaybackTile::sigPressed, this, &PlaybackWall::select);
        connect(tile, &PlaybackTile::sigDoubleClicked, this, &PlaybackWall::toggleZoom);
        tiles_ += tile;
    }
    zoomed_ = false;
    selected_ = 0;
    placeTiles();
    if (!tiles_.isEmpty())
        tiles_[0]->setSelected(true);
}

void PlaybackWall::placeTiles() {
    const int shown = zoomed_ ? 1 : tiles_.size();
    const int columns = std::max(1, static_cast<int>(std::ceil(std::sqrt(shown))));
    const int rows = std::max(1, (shown + columns - 1) / columns);
    for (PlaybackTile* tile : qAsConst(tiles_))
        grid_->removeWidget(tile);
    int place = 0;
    for (int number = 0; number < tiles_.size(); ++number) {
        const bool visible = !zoomed_ || number == selected_;
        if (visible) {
            grid_->addWidget(tiles_[number], place / columns, place % columns);
            ++place;
        }
        tiles_[number]->setVisible(visible);
    }
    for (int line = 0; line < std::max(grid_->rowCount(), grid_->columnCount()); ++line) {
        grid_->setRowStretch(line, line < rows ? 1 : 0);
        grid_->setColumnStretch(line, line < columns ? 1 : 0);
    }
    present();
}

void PlaybackWall::select(int number) {
    if (number < 0 || number >= tiles_.size() || number == selected_)
        return;
    tiles_[selected_]->setSelected(false);
    selected_ = number;
    tiles_[selected_]->setSelected(true);
    if (zoomed_)
        placeTiles();
    emit sigSelected(number);
}

void PlaybackWall::toggleZoom() {
    if (tiles_.size() < 2 && !zoomed_)
        return;
    zoomed_ = !zoomed_;
    placeTiles();
}

void PlaybackWall::addCover(QWidget& cover) {
    covers_ += QPointer<QWidget>(&cover);
    cover.installEventFilter(this);
}

bool PlaybackWall::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Show || type == QEvent::Hide || type == QEvent::Move || type == QEvent::Resize)
        present();
    return QWidget::eventFilter(watched, event);
}

WallSurface::Scene PlaybackWall::scene() const {
    WallSurface::Scene scene;
    for (const PlaybackTile* tile : tiles_) {
        const QRect place = tile->isVisible() ? tile->picturePlace() : QRect();
        if (!place.isEmpty())
            scene.pictures.push_back({place.translated(tile->pos()), tile->renderer()});
    }
    for (const QWidget* cover : covers_) {
        if (cover != nullptr && cover->isVisible())
            scene.covers += QRect(mapFromGlobal(cover->mapToGlobal(QPoint())), cover->size());
    }
    return scene;
}

void PlaybackWall::presentNow() {
    if (surface_ == nullptr && GLYuvWidget::isSupported()) {
        if (scene().pictures.empty())
            return; // nothing to be seen needs no OpenGL
        surface_ = new WallSurface([this] { return scene(); });
        surfaceContainer_ = surface_->embed(*this);
    }
    if (surface_ != nullptr)
        surface_->present();
}

void PlaybackWall::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (surfaceContainer_ != nullptr)
        surfaceContainer_->setGeometry(rect());
    present();
}

} // namespace corvanta::playback
