#pragma once

#include <QWebEngineView>

namespace corvanta::map {

/// The browser's widget. Of what is dragged over it, it takes cameras and sensors, and hands nothing to the page
/// itself.
class MapWebView final : public QWebEngineView {
    Q_OBJECT
public:
    explicit MapWebView(QWidget* parent);

signals:
    /// `at` in px of this widget.
    void sigSensorDropped(const QString& ipncId, const QString& sensorPid, const QPoint& at);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
};

} // namespace corvanta::map
