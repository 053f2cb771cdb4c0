#include "map/web/MapWebView.h"

#include "map/ui/SensorMimeData.h"

#include <QDropEvent>

namespace corvanta::map {

namespace {

void acceptSensor(QDropEvent& event) {
    if (event.mimeData() != nullptr && !SensorMimeData::read(*event.mimeData()).ipncId.isEmpty())
        event.acceptProposedAction();
    else
        event.ignore();
}

} // namespace

MapWebView::MapWebView(QWidget* parent)
    : QWebEngineView(parent) {
    setObjectName(QStringLiteral("mapWebView"));
    setContextMenuPolicy(Qt::PreventContextMenu); // the page has its own menus
    setAcceptDrops(true);
}

void MapWebView::dragEnterEvent(QDragEnterEvent* event) {
    acceptSensor(*event);
}

void MapWebView::dragMoveEvent(QDragMoveEvent* event) {
    acceptSensor(*event);
}

void MapWebView::dragLeaveEvent(QDragLeaveEvent* event) {
    event->accept();
}

void MapWebView::dropEvent(QDropEvent* event) {
    acceptSensor(*event);
    if (!event->isAccepted())
        return;
    const auto dragged = SensorMimeData::read(*event->mimeData());
    emit sigSensorDropped(dragged.ipncId, dragged.sensorPid, event->pos());
}

} // namespace corvanta::map
