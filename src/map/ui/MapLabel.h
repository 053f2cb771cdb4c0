#pragma once

#include "map/MapMarker.h"

#include <QGraphicsObject>
#include <QPixmap>
#include <QStringList>

namespace corvanta::map {

class AlarmMovies;
class MapAlarmlabel;

/// A marker on a picture: its icon, centred on its place, and the label below it, or above it where it would be cut
/// off. As large at every zoom. It draws only; what the mouse does with it is the canvas's.
class MapLabel final : public QGraphicsObject {
    Q_OBJECT
public:
    enum class Kind { Camera, Sensor, Positioning, Reference };

    MapLabel();
    ~MapLabel() override;

    /// A local file or resource, or, empty or not readable, the drawing for the kind.
    void setIcon(const QString& path, Kind kind);
    /// Plain texts, shown as they are; the first stands out.
    void setLines(const QStringList& lines);
    const QStringList& lines() const { return lines_; }
    void setShowMode(ShowMode mode);
    /// Values give way to what stands beside them: only the name is seen, until somebody looks at the marker.
    void setFolded(bool on);
    bool isFolded() const { return isFolded_; }
    /// What is seen of the picture, in pixels from the marker's place: the label stays inside where that can be. An
    /// empty one sets no bounds.
    void setInside(const QRectF& seen);
    /// The room of the label, in pixels from the marker's place: with all lines, and with the name alone. Empty
    /// while it is not shown.
    const QRectF& fullRoom() const { return fullRoom_; }
    const QRectF& nameRoom() const { return nameRoom_; }
    /// That of the icon.
    static QRectF iconRoom();

    /// Whether the label is seen now.
    bool isLabelShown() const { return mode_ == ShowMode::Always || isHovered_ || isCurrent_; }

    /// The mouse is over it.
    void setHovered(bool on);
    /// The keyboard is on it, or it is shown to the user.
    void setCurrent(bool on);
    /// It follows the mouse.
    void setDragged(bool on);

    MapAlarmlabel* alarm() const { return alarm_; }
    void showAlarm(int level, AlarmMovies& movies);
    void clearAlarm();

    /// Whether a place, in pixels from the marker's own, belongs to it.
    bool contains(const QPointF& point) const override;
    QRectF boundingRect() const override { return bounds_; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

signals:
    /// The label wants more or less room.
    void sigRoomChanged();

private:
    QRectF roomOf(double width, double height) const;
    void measure();
    void layOut();
    void drawText(double ratio);
    void raise();

    QStringList lines_;
    QStringList drawn_; ///< lines, cut to the widest that is shown
    QRectF fullRoom_;
    QRectF nameRoom_;
    QRectF inside_;
    bool isFolded_ = false;
    QString iconPath_;
    Kind kind_ = Kind::Sensor;
    ShowMode mode_ = ShowMode::Always;
    bool isHovered_ = false;
    bool isCurrent_ = false;
    bool isDragged_ = false;
    QRectF bounds_;
    QRectF labelRect_;
    QPixmap text_; ///< the label as it was last drawn; null: to be drawn
    QPixmap icon_; ///< likewise
    MapAlarmlabel* alarm_ = nullptr;
};

} // namespace corvanta::map
