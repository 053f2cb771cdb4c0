#pragma once

#include "map/MapMarker.h"

#include <QPoint>
#include <QStringList>
#include <QWidget>

namespace corvanta::map {

/// What shows one map with its markers, a picture or a web page. It knows neither devices nor requests: `MapSession`
/// tells it what to show and hears what the user does.
///
/// A marker is addressed by its index, its place in the list of `setMarkers`; indices that do not exist are ignored.
/// A view that is not ready yet, or has lost what it draws with, remembers what it was told and shows it when it can.
/// All texts are plain: whatever looks like markup in them is shown as it is.
///
/// Everything is inline, so that a plugin needs this header and the meta object code made from it, nothing else. As a
/// plugin has a meta object of its own, `qobject_cast` and `findChild` to this class do not work across that border.
class MapView : public QWidget {
    Q_OBJECT
public:
    explicit MapView(QWidget* parent = nullptr)
        : QWidget(parent) {}

    /// The whole list, in place of what was shown; labels are the markers' names, and there are no alarms until told.
    virtual void setMarkers(const QList<corvanta::map::MapMarker>& markers) = 0;
    /// The label: the name, then a line for each value, then the line of the time.
    virtual void setMarkerText(int index, const QStringList& lines) = 0;
    /// The animated picture of a level 1 to 4, in place of the one before; any other level has an alarm without
    /// picture.
    virtual void showAlarm(int index, int level) = 0;
    virtual void clearAlarm(int index) = 0;
    /// Shows the marker as it now is: place, icon, when its label is seen. Also puts one back whose move was refused.
    virtual void moveMarker(int index, const corvanta::map::MapMarker& marker) = 0;
    /// Those behind it move up by one.
    virtual void removeMarker(int index) = 0;
    /// Shows the box around all markers, as large as it can be.
    virtual void fitMarkers() = 0;
    virtual void zoomIn() = 0;
    virtual void zoomOut() = 0;
    /// Brings a marker into view and marks it for a moment.
    virtual void showMarker(int index) = 0;
    /// From now on this marker follows the mouse, until it is put down (`sigMarkerMoved`) or Escape is pressed.
    virtual void beginDrag(int index) = 0;
    /// Whether markers may be placed and moved; menus leave such actions out when not.
    virtual void setEditable(bool editable) = 0;

signals:
    /// A camera (empty pid) or sensor was dropped; of `place` only the position is filled.
    void sigDropped(const QString& ipncId, const QString& sensorPid, const corvanta::map::MapMarker& place);
    /// A marker was put down elsewhere; of `place` only the position is filled. The view shows it there already.
    void sigMarkerMoved(int index, const corvanta::map::MapMarker& place);
    /// A double click, or Enter.
    void sigMarkerActivated(int index);
    /// The marker's menu is wanted.
    void sigMarkerMenu(int index, const QPoint& global);
    void sigDeleteMarker(int index);
    void sigEditMarker(int index);
    void sigClearAlarm(int index);
    /// The menu of the cell is wanted.
    void sigMapMenu(const QPoint& global);
    /// A dialog by its name, in every language: "添加地图", "打开地图", "关闭地图", "管理地图", "自适应标记点".
    void sigOpenDialog(const QString& dialogType);
    /// A double click where no marker is.
    void sigDoubleClicked();
    /// The map cannot be shown; a sentence for the user says why.
    void sigFailed(const QString& reason);
};

} // namespace corvanta::map
