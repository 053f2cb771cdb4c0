#pragma once

#include <QObject>

namespace corvanta::map {

/// The object "bridge" that the map's page talks to: each slot raises a signal, and that is all. What it is told
/// comes from the page, so who takes the signals checks indices and numbers. Positions are longitude, then latitude.
class bridge final : public QObject {
    Q_OBJECT
public:
    explicit bridge(QObject* parent = nullptr);

public slots:
    void OnSendDragMarklnglat(double lng, double lat) { emit sig_SendDragMarklnglat(lng, lat); }
    void OpenManageMapDialog(const QString& dialogType) { emit openDialog(dialogType); }
    void WebViewMouseDoubleClicked() { emit sig_WebViewMouseDoubleClicked(); }
    void DeleteMarkFromIndex(int index) { emit sig_DeleteMarkFromIndex(index); }
    void ManageMarkDialog(int index) { emit sig_ManageMarkDialog(index); }
    void DragMarkEnd(int index, double lng, double lat) { emit sig_DragMarkEnd(index, lng, lat); }
    void MarkDoubleClicked(int index) { emit sig_MarkDoubleClicked(index); }
    void ClearAlarm(int index) { emit sig_ClearAlarm(index); }

signals:
    /// Where a dropped item is to be placed.
    void sig_SendDragMarklnglat(double lng, double lat);
    /// A map dialog is wanted, by its text in the page's sources: "添加地图" and the like.
    void openDialog(QString dialogType);
    /// A double click where no marker is.
    void sig_WebViewMouseDoubleClicked();
    void sig_DeleteMarkFromIndex(int index);
    void sig_ManageMarkDialog(int index);
    /// A marker was put down elsewhere.
    void sig_DragMarkEnd(int index, double lng, double lat);
    void sig_MarkDoubleClicked(int index);
    void sig_ClearAlarm(int index);
};

} // namespace corvanta::map
