#include "map/ui/MapLabel.h"

#include "base/ui/Theme.h"
#include "map/ui/MapAlarmlabel.h"
#include "map/ui/MapIcons.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QIcon>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace corvanta::map {
namespace {

constexpr double IconSide = 32;     // px
constexpr double LabelGap = 2;      // px between icon and label
constexpr double LabelMargin = 4;   // px
constexpr double WidestLabel = 260; // px
constexpr double WidthStep = 8;     // px; a value that gets a digit seldom makes the label wider
constexpr int MostLines = 24;       // the rest is in the data table

QString drawingOf(MapLabel::Kind kind) {
    switch (kind) {
    case MapLabel::Kind::Camera:
        return QStringLiteral("map-camera");
    case MapLabel::Kind::Positioning:
        return QStringLiteral("map-position");
    case MapLabel::Kind::Reference:
        return QStringLiteral("map-reference");
    case MapLabel::Kind::Sensor:
        break;
    }
    return QStringLiteral("map-sensor");
}

/// Fonts of all labels; made when the first one is.
struct Fonts {
    Fonts() {
        line.setPixelSize(12);
        name = line;
        name.setBold(true);
        lineMetrics = QFontMetricsF(line);
        nameMetrics = QFontMetricsF(name);
    }
    QFont line = QApplication::font();
    QFont name;
    QFontMetricsF lineMetrics{QFont()};
    QFontMetricsF nameMetrics{QFont()};
};

const Fonts& fonts() {
    static const Fonts all;
    return all;
}

} // namespace

MapLabel::MapLabel() {
    setFlag(ItemIgnoresTransformations);
    setAcceptedMouseButtons(Qt::NoButton);
    layOut();
}

MapLabel::~MapLabel() = default;

void MapLabel::setIcon(const QString& path, Kind kind) {
    if (path == iconPath_ && kind == kind_ && !icon_.isNull())
        return;
    iconPath_ = path;
    kind_ = kind;
    icon_ = {};
    update();
}

void MapLabel::setLines(const QStringList& lines) {
    if (lines == lines_)
        return;
    lines_ = lines;
    text_ = {};
    layOut();
}

void MapLabel::setShowMode(ShowMode mode) {
    mode_ = mode;
    layOut();
}

void MapLabel::setHovered(bool on) {
    isHovered_ = on;
    raise();
}

void MapLabel::setCurrent(bool on) {
    isCurrent_ = on;
    raise();
}

void MapLabel::setDragged(bool on) {
    isDragged_ = on;
    raise();
}

void MapLabel::raise() {
    setZValue(isDragged_ ? 4 : isHovered_ ? 3 : isCurrent_ ? 2 : alarm_ != nullptr ? 1 : 0);
    layOut();
}

void MapLabel::showAlarm(int level, AlarmMovies& movies) {
    if (alarm_ == nullptr)
        alarm_ = new MapAlarmlabel(movies, this);
    alarm_->setLevel(level);
    raise();
}

void MapLabel::clearAlarm() {
    delete alarm_;
    alarm_ = nullptr;
    raise();
}

void MapLabel::setFolded(bool on) {
    if (on == isFolded_)
        return;
    isFolded_ = on;
    layOut();
}

QRectF MapLabel::iconRoom() {
    return {-IconSide / 2, -IconSide / 2, IconSide, IconSide};
}

void MapLabel::setInside(const QRectF& seen) {
    if (seen == inside_)
        return;
    inside_ = seen;
    layOut();
}

/// The room for lines of that size, px.
QRectF MapLabel::roomOf(double width, double height) const {
    const double wide = std::ceil((width + 2 * LabelMargin) / WidthStep) * WidthStep;
    QRectF room(-wide / 2, IconSide / 2 + LabelGap, wide, std::ceil(height) + LabelMargin);
    if (inside_.isEmpty())
        return room;
    const double above = -IconSide / 2 - LabelGap - room.height();
    if (room.bottom() > inside_.bottom() && above >= inside_.top())
        room.moveTop(above);
    if (room.width() <= inside_.width()) {
        room.moveLeft(std::max(room.left(), inside_.left()));
        room.moveRight(std::min(room.right(), inside_.right()));
    }
    return room;
}

void MapLabel::measure() {
    const QRectF before = fullRoom_;
    drawn_.clear();
    fullRoom_ = {};
    nameRoom_ = {};
    if (isLabelShown() && !lines_.isEmpty()) {
        const QFontMetricsF& nameMetrics = fonts().nameMetrics;
        const QFontMetricsF& metrics = fonts().lineMetrics;
        double width = 0;
        for (int i = 0; i < lines_.size() && i < MostLines; ++i) {
            const QFontMetricsF& used = i == 0 ? nameMetrics : metrics;
            drawn_ += used.elidedText(lines_[i], Qt::ElideRight, WidestLabel);
            width = std::max(width, used.horizontalAdvance(drawn_.constLast()));
            if (i == 0)
                nameRoom_ = roomOf(width, nameMetrics.height());
        }
        fullRoom_ = roomOf(width, nameMetrics.height() + metrics.height() * (drawn_.size() - 1));
    }
    if (fullRoom_ != before)
        emit sigRoomChanged();
}

void MapLabel::layOut() {
    constexpr double ring = 4; // px round the icon
    measure();
    const bool isOpen = !isFolded_ || isHovered_ || isCurrent_ || isDragged_;
    const QRectF label = isOpen ? fullRoom_ : nameRoom_;
    const QRectF bounds = iconRoom().adjusted(-ring, -ring, ring, ring) | label;
    if (bounds != bounds_) {
        prepareGeometryChange();
        bounds_ = bounds;
    }
    if (label.size() != labelRect_.size())
        text_ = {};
    labelRect_ = label;
    update();
}

bool MapLabel::contains(const QPointF& point) const {
    return iconRoom().contains(point) || labelRect_.contains(point);
}

void MapLabel::drawText(double ratio) {
    text_ = QPixmap((labelRect_.size() * ratio).toSize());
    text_.setDevicePixelRatio(ratio);
    text_.fill(Qt::transparent);
    QPainter painter(&text_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(40, 42, 45, 216));
    const QRectF area(QPointF(), labelRect_.size());
    painter.drawRoundedRect(area, 3, 3);
    painter.setPen(theme::TextOnDark);
    double y = LabelMargin / 2;
    for (int i = 0; i < drawn_.size() && y < area.height() - LabelMargin; ++i) {
        painter.setFont(i == 0 ? fonts().name : fonts().line);
        const double height = (i == 0 ? fonts().nameMetrics : fonts().lineMetrics).height();
        // Each line by itself: marks that turn the direction of writing end with it.
        painter.drawText(QRectF(0, y, area.width(), height), Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine,
                         drawn_[i]);
        y += height;
    }
}

void MapLabel::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    const double ratio = painter->device()->devicePixelRatioF();
    const QRectF icon = iconRoom();
    if (icon_.isNull() || icon_.devicePixelRatio() != ratio) {
        const int side = static_cast<int>(std::ceil(IconSide * ratio));
        icon_ = readIcon(iconPath_, side);
        if (icon_.isNull())
            icon_ = usualPixmap(drawingOf(kind_), side);
        icon_.setDevicePixelRatio(ratio);
    }
    if (isCurrent_ || isDragged_) {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(theme::Selection, 2, isDragged_ ? Qt::DashLine : Qt::SolidLine));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(icon.adjusted(-2, -2, 2, 2), 4, 4);
    }
    const QSizeF size = QSizeF(icon_.size()) / icon_.devicePixelRatio();
    painter->drawPixmap(QPointF(-size.width() / 2, -size.height() / 2), icon_);
    if (labelRect_.isEmpty())
        return;
    if (text_.isNull() || text_.devicePixelRatio() != ratio)
        drawText(ratio);
    painter->drawPixmap(labelRect_.topLeft(), text_);
}

} // namespace corvanta::map
