#include "map/ui/MapCanvas.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "map/ui/MapLabel.h"
#include "map/ui/SensorMimeData.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvanta::map {
namespace {

constexpr double StepFactor = 1.25;   // of a notch of the wheel
constexpr double LargestScale = 16;   // px of the screen for one of the picture
constexpr double SmallestOfFit = 0.5; // of the scale at which all is seen
constexpr int LabelRoom = 48;         // px round a fitted box
constexpr int FoldingDelay = 30;      // ms

} // namespace

MapCanvas::MapCanvas(QWidget* parent)
    : QGraphicsView(parent) {
    setObjectName(QStringLiteral("mapCanvas"));
    wordedName(this, [] { return tr("地图"); });
    scene_.setItemIndexMethod(QGraphicsScene::NoIndex); // nearly all is seen, or moves
    setScene(&scene_);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCacheMode(CacheBackground); // a label that changes does not have the picture drawn anew
    setDragMode(ScrollHandDrag);
    viewport()->setCursor(Qt::ArrowCursor);
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(AnchorViewCenter);
    setViewportUpdateMode(SmartViewportUpdate);
    setOptimizationFlags(DontAdjustForAntialiasing | DontSavePainterState);
    setAcceptDrops(true);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    folding_.setSingleShot(true);
    folding_.setInterval(FoldingDelay);
    connect(&folding_, &QTimer::timeout, this, &MapCanvas::foldLabels);
}

MapCanvas::~MapCanvas() {
    scene_.clear();    // labels give their movies back
    setScene(nullptr); // now: it scrolls, and that must find a whole canvas
}

void MapCanvas::setCount(int count) {
    cancelDrag();
    hovered_ = -1;
    current_ = -1;
    for (MapLabel* const label : labels_)
        delete label;
    labels_.clear();
    for (int i = 0; i < count; ++i) {
        labels_.push_back(new MapLabel);
        scene_.addItem(labels_.back());
        watch(*labels_.back());
    }
}

void MapCanvas::watch(MapLabel& label) {
    connect(&label, &MapLabel::sigRoomChanged, this, &MapCanvas::foldSoon);
    connect(&label, &MapLabel::xChanged, this, &MapCanvas::foldSoon);
    connect(&label, &MapLabel::yChanged, this, &MapCanvas::foldSoon);
    connect(&label, &MapLabel::zChanged, this, &MapCanvas::foldSoon);
    connect(&label, &QObject::destroyed, this, &MapCanvas::foldSoon);
}

/// Not put off by the next change: labels that never stand still are folded, too.
void MapCanvas::foldSoon() {
    if (!folding_.isActive())
        folding_.start();
}

/// Values are seen where they cover no other marker and no other label: those of alarms first, then in the markers'
/// order. Names are always seen.
void MapCanvas::foldLabels() {
    struct Seen {
        QPointF place; ///< px
        QRectF label;
    };
    std::vector<Seen> all;
    all.reserve(labels_.size());
    std::vector<std::size_t> order;
    const QRectF seen = viewport()->rect();
    for (MapLabel* const one : labels_) {
        const QPointF onView = mapFromScene(one->pos());
        one->setInside(seen.contains(onView) ? seen.translated(-onView) : QRectF());
        const QPointF place = one->pos() * scale();
        if (one->fullRoom() != one->nameRoom())
            order.push_back(all.size());
        all.push_back({place, one->nameRoom().translated(place)});
    }
    std::stable_partition(order.begin(), order.end(),
                          [this](std::size_t index) { return labels_[index]->alarm() != nullptr; });
    for (const std::size_t index : order) {
        const QRectF room = labels_[index]->fullRoom().translated(all[index].place);
        const bool isFree = std::none_of(all.begin(), all.end(), [&](const Seen& other) {
            return &other != &all[index] &&
                   (room.intersects(other.label) || room.intersects(MapLabel::iconRoom().translated(other.place)));
        });
        labels_[index]->setFolded(!isFree);
        if (isFree)
            all[index].label = room;
    }
}

MapLabel* MapCanvas::label(int index) const {
    return index >= 0 && index < count() ? labels_[static_cast<std::size_t>(index)] : nullptr;
}

void MapCanvas::removeLabel(int index) {
    if (label(index) == nullptr)
        return;
    cancelDrag();
    hovered_ = -1;
    current_ = -1;
    delete label(index);
    labels_.erase(labels_.begin() + index);
}

void MapCanvas::setReferences(std::vector<MapLabel*> labels) {
    for (MapLabel* const label : references_)
        delete label;
    references_ = std::move(labels);
    for (MapLabel* const label : references_) {
        scene_.addItem(label);
        label->setZValue(-0.5);
    }
}

void MapCanvas::setPicture(PicturePyramid picture) {
    sceneSize_ = QSizeF(picture.size()).expandedTo(QSizeF(1, 1));
    picture_ = std::move(picture);
    // Room around it, so that every place of it can come to every place of the view.
    const double x = sceneSize_.width();
    const double y = sceneSize_.height();
    setSceneRect(QRectF(-x, -y, 3 * x, 3 * y));
    fitPicture();
    resetCachedContent();
}

void MapCanvas::drawBackground(QPainter* painter, const QRectF& rect) {
    painter->fillRect(rect, theme::Panel);
    // From the level of the picture that fits the zoom, and of it what is to be drawn.
    const double pixels = scale() * painter->device()->devicePixelRatioF();
    const PicturePyramid::Part part = picture_.part(rect & QRectF(QPointF(), QSizeF(picture_.size())), pixels);
    if (part.image.isNull())
        return;
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(part.place, part.image);
}

QPointF MapCanvas::toScene(const QPointF& fraction) const {
    return {fraction.x() * sceneSize_.width(), fraction.y() * sceneSize_.height()};
}

QPointF MapCanvas::toFraction(const QPointF& scenePoint) const {
    return {std::clamp(scenePoint.x() / sceneSize_.width(), 0.0, 1.0),
            std::clamp(scenePoint.y() / sceneSize_.height(), 0.0, 1.0)};
}

double MapCanvas::fitScale() const {
    const QSizeF room = viewport()->size();
    return std::max(1e-6, std::min(room.width() / sceneSize_.width(), room.height() / sceneSize_.height()));
}

void MapCanvas::fitPicture() {
    setScale(fitScale());
    centerOn(toScene({0.5, 0.5}));
    isFitted_ = true;
    fittedBox_.reset();
}

void MapCanvas::setScale(double factor) {
    setTransform(QTransform::fromScale(factor, factor));
    foldSoon();
}

void MapCanvas::fitBox(const QRectF& fractions) {
    const QRectF box(toScene(fractions.topLeft()), toScene(fractions.bottomRight()));
    const QSizeF room = QSizeF(viewport()->size()) - QSizeF(2 * LabelRoom, 2 * LabelRoom);
    const double smallest = fitScale(); // no more than the whole picture
    const double wanted = std::min(std::max(room.width(), 1.0) / std::max(box.width(), 1.0),
                                   std::max(room.height(), 1.0) / std::max(box.height(), 1.0));
    // Of a single marker its surroundings are seen.
    const double factor = std::clamp(wanted, smallest, std::max(fitScale() * 4, smallest));
    setScale(factor);
    centerOn(box.center());
    isFitted_ = false;
    fittedBox_ = fractions;
}

void MapCanvas::zoomAt(const QPointF& place, double factor) {
    const double before = scale();
    const double fit = fitScale();
    const double after =
        std::clamp(before * factor, std::min(before, fit * SmallestOfFit), std::max({before, LargestScale, fit * 2}));
    if (after == before)
        return;
    // What is under `place` stays there: the view scrolls by whole pixels, in which it counts the scene.
    const QPointF offset(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const QPointF under = (offset + place) / before;
    isFitted_ = false;
    fittedBox_.reset();
    setScale(after);
    const QPointF now = under * after - place;
    horizontalScrollBar()->setValue(qRound(now.x()));
    verticalScrollBar()->setValue(qRound(now.y()));
}

void MapCanvas::zoomStep(int steps) {
    zoomAt(QRectF(viewport()->rect()).center(), std::pow(StepFactor, steps));
}

void MapCanvas::wheelEvent(QWheelEvent* event) {
    constexpr double notch = 120; // eighths of a degree
    zoomAt(event->position(), std::pow(StepFactor, event->angleDelta().y() / notch));
    event->accept();
}

int MapCanvas::labelAt(const QPoint& place) const {
    int found = -1;
    for (int i = 0; i < count(); ++i) {
        const MapLabel* const one = label(i);
        if (!one->contains(QPointF(place - mapFromScene(one->pos()))))
            continue;
        if (found < 0 || one->zValue() >= label(found)->zValue())
            found = i;
    }
    return found;
}

void MapCanvas::hover(int index) {
    if (index == hovered_)
        return;
    if (MapLabel* const left = label(hovered_))
        left->setHovered(false);
    hovered_ = index;
    if (MapLabel* const entered = label(index))
        entered->setHovered(true);
    viewport()->setCursor(index < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

void MapCanvas::setCurrent(int index) {
    if (MapLabel* const left = label(current_))
        left->setCurrent(false);
    current_ = label(index) == nullptr ? -1 : index;
    if (MapLabel* const entered = label(current_)) {
        entered->setCurrent(true);
        setAccessibleDescription(entered->lines().join(QLatin1Char('\n')));
    }
}

void MapCanvas::beginDrag(int index) {
    cancelDrag();
    MapLabel* const moved = label(index);
    if (moved == nullptr)
        return;
    drag_ = Drag{index, moved->pos()};
    moved->setDragged(true);
    viewport()->setCursor(Qt::SizeAllCursor);
    setFocus();
}

void MapCanvas::cancelDrag() {
    if (!drag_)
        return;
    const Drag drag = *std::exchange(drag_, std::nullopt);
    if (MapLabel* const moved = label(drag.index)) {
        moved->setPos(drag.begin);
        moved->setDragged(false);
    }
    viewport()->setCursor(Qt::ArrowCursor);
}

void MapCanvas::dragTo(const QPoint& place) {
    label(drag_->index)->setPos(toScene(toFraction(mapToScene(place))));
}

void MapCanvas::endDrag() {
    const Drag drag = *std::exchange(drag_, std::nullopt);
    MapLabel* const moved = label(drag.index);
    viewport()->setCursor(Qt::ArrowCursor);
    if (moved == nullptr)
        return;
    moved->setDragged(false);
    if (moved->pos() != drag.begin)
        emit sigMoved(drag.index, toFraction(moved->pos()));
}

void MapCanvas::mousePressEvent(QMouseEvent* event) {
    if (!drag_)
        QGraphicsView::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && !drag_)
        setCurrent(labelAt(event->pos()));
}

void MapCanvas::mouseMoveEvent(QMouseEvent* event) {
    if (drag_) {
        dragTo(event->pos());
        return;
    }
    if (event->buttons() == Qt::NoButton) {
        hover(labelAt(event->pos()));
    } else {
        isFitted_ = false;
        fittedBox_.reset();
    }
    QGraphicsView::mouseMoveEvent(event);
}

void MapCanvas::mouseReleaseEvent(QMouseEvent* event) {
    if (drag_) {
        if (event->button() == Qt::LeftButton) {
            dragTo(event->pos()); // where it is let go, whether the way there was told or not
            endDrag();
        } else {
            cancelDrag();
        }
        return;
    }
    QGraphicsView::mouseReleaseEvent(event);
    viewport()->setCursor(labelAt(event->pos()) < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

void MapCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || drag_)
        return;
    const int index = labelAt(event->pos());
    if (index >= 0)
        emit sigActivated(index);
    else
        emit sigDoubleClicked();
}

void MapCanvas::contextMenuEvent(QContextMenuEvent* event) {
    if (drag_) {
        cancelDrag();
        return;
    }
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const int index = byMouse ? labelAt(event->pos()) : current_;
    const QPoint place = byMouse      ? event->globalPos()
                         : index >= 0 ? viewport()->mapToGlobal(mapFromScene(label(index)->pos()))
                                      : viewport()->mapToGlobal(viewport()->rect().center());
    if (index >= 0)
        emit sigMarkerMenu(index, place);
    else
        emit sigMapMenu(place);
}

bool MapCanvas::dragKey(QKeyEvent* event) {
    if (!drag_)
        return false;
    const double step = (event->modifiers().testFlag(Qt::ShiftModifier) ? 10 : 1) / scale();
    QPointF place = label(drag_->index)->pos();
    switch (event->key()) {
    case Qt::Key_Escape:
        cancelDrag();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        endDrag();
        return true;
    case Qt::Key_Left:
        place.rx() -= step;
        break;
    case Qt::Key_Right:
        place.rx() += step;
        break;
    case Qt::Key_Up:
        place.ry() -= step;
        break;
    case Qt::Key_Down:
        place.ry() += step;
        break;
    default:
        return false;
    }
    label(drag_->index)->setPos(toScene(toFraction(place)));
    return true;
}

bool MapCanvas::markerKey(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_PageDown ? 1 : event->key() == Qt::Key_PageUp ? -1 : 0;
    if (step != 0 && count() > 0) {
        setCurrent(current_ < 0 ? (step > 0 ? 0 : count() - 1) : (current_ + step + count()) % count());
        ensureVisible(QRectF(label(current_)->pos(), QSizeF(0, 0)), LabelRoom, LabelRoom);
        return true;
    }
    if (current_ < 0)
        return false;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit sigActivated(current_);
        return true;
    case Qt::Key_Delete:
        emit sigDelete(current_);
        return true;
    case Qt::Key_F2:
        emit sigEdit(current_);
        return true;
    default:
        return false;
    }
}

void MapCanvas::keyPressEvent(QKeyEvent* event) {
    if (dragKey(event) || markerKey(event))
        return;
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomStep(1);
        break;
    case Qt::Key_Minus:
        zoomStep(-1);
        break;
    case Qt::Key_0:
        fitPicture();
        break;
    case Qt::Key_Home:
        emit sigFitMarkers();
        break;
    default:
        QGraphicsView::keyPressEvent(event);
    }
}

void MapCanvas::leaveEvent(QEvent* event) {
    hover(-1);
    QGraphicsView::leaveEvent(event);
}

void MapCanvas::scrollContentsBy(int dx, int dy) {
    QGraphicsView::scrollContentsBy(dx, dy);
    foldSoon();
}

void MapCanvas::resizeEvent(QResizeEvent* event) {
    QGraphicsView::resizeEvent(event);
    foldSoon();
    if (isFitted_)
        fitPicture();
    else if (fittedBox_)
        fitBox(QRectF(*fittedBox_));
}

bool MapCanvas::isOnPicture(const QPoint& place) const {
    return QRectF(QPointF(), sceneSize_).contains(mapToScene(place));
}

void MapCanvas::dragEnterEvent(QDragEnterEvent* event) {
    if (SensorMimeData::read(*event->mimeData()).ipncId.isEmpty())
        return;
    event->setDropAction(Qt::CopyAction); // what is dragged stays where it is
    event->accept();
}

void MapCanvas::dragMoveEvent(QDragMoveEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(isOnPicture(event->pos()));
}

void MapCanvas::dropEvent(QDropEvent* event) {
    const SensorMimeData::Dragged dragged = SensorMimeData::read(*event->mimeData());
    if (dragged.ipncId.isEmpty() || !isOnPicture(event->pos()))
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    emit sigDropped(dragged.ipncId, dragged.sensorPid, toFraction(mapToScene(event->pos())));
}

} // namespace corvanta::map
