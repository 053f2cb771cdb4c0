#pragma once

#include "map/PicturePyramid.h"
#include "map/ui/MapAlarmlabel.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace corvanta::map {

class MapLabel;

/// The picture with its markers, by mouse, wheel and keyboard: zoomed about the cursor, moved, fitted. A marker's
/// place is a point of the scene, which counts the picture's own pixels, so it is exact at every zoom.
class MapCanvas final : public QGraphicsView {
    Q_OBJECT
public:
    explicit MapCanvas(QWidget* parent);
    ~MapCanvas() override;

    /// Whose markers stand on it, by index; `count` new ones without place or look.
    void setCount(int count);
    MapLabel* label(int index) const;
    int count() const { return static_cast<int>(labels_.size()); }
    void removeLabel(int index);
    /// Labels that are no markers.
    void setReferences(std::vector<MapLabel*> labels);
    AlarmMovies& movies() { return movies_; }

    void setPicture(PicturePyramid picture);
    QSizeF pictureSize() const { return sceneSize_; }

    /// Fractions of the picture, and the marker's place in the scene.
    QPointF toScene(const QPointF& fraction) const;
    QPointF toFraction(const QPointF& scenePoint) const;

    /// The whole picture, as large as it can be; until the user zooms or moves it, also when the size changes.
    void fitPicture();
    /// The same of a part of it.
    void fitBox(const QRectF& fractions);
    /// About a point of the viewport.
    void zoomAt(const QPointF& place, double factor);
    void zoomStep(int steps);
    /// Pixels of the screen, not of the device, for one of the picture.
    double scale() const { return transform().m11(); }

    void beginDrag(int index);
    bool isDragging() const { return drag_.has_value(); }
    /// The marker goes back to where it was.
    void cancelDrag();
    /// The keyboard's marker; -1: none.
    void setCurrent(int index);
    int current() const { return current_; }

signals:
    void sigDropped(const QString& ipncId, const QString& sensorPid, const QPointF& fraction);
    void sigMoved(int index, const QPointF& fraction);
    void sigActivated(int index);
    void sigMarkerMenu(int index, const QPoint& global);
    void sigMapMenu(const QPoint& global);
    void sigDelete(int index);
    void sigEdit(int index);
    void sigDoubleClicked();
    void sigFitMarkers();

protected:
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct Drag {
        int index = -1;
        QPointF begin; ///< of the scene
    };

    int labelAt(const QPoint& place) const;
    void hover(int index);
    /// Puts what is dragged to a place of the viewport; only while there is a drag.
    void dragTo(const QPoint& place);
    void endDrag();
    bool dragKey(QKeyEvent* event);
    bool markerKey(QKeyEvent* event);
    bool isOnPicture(const QPoint& place) const;
    double fitScale() const;
    void setScale(double factor);
    void watch(MapLabel& label);
    void foldSoon();
    void foldLabels();

    QGraphicsScene scene_;
    PicturePyramid picture_;
    QSizeF sceneSize_{1, 1};
    AlarmMovies movies_;
    std::vector<MapLabel*> labels_;     ///< the scene's
    std::vector<MapLabel*> references_; ///< likewise
    std::optional<Drag> drag_;
    int hovered_ = -1;
    int current_ = -1;
    bool isFitted_ = true;
    std::optional<QRectF> fittedBox_; ///< fractions; what was fitted, until the user moves or zooms
    QTimer folding_;                  ///< labels are looked at once for many changes
};

} // namespace corvanta::map
