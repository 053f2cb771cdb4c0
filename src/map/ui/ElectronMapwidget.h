#pragma once

#include "map/MapRecord.h"
#include "map/PicturePyramid.h"
#include "map/ui/MapView.h"

#include <QPointer>
#include <QVariantList>
#include <QVariantMap>

class QLabel;

namespace corvanta::map {

class MapCanvas;
class MapLabel;
class MapPictureLoader;
class MapSession;

/// A map on a picture. The picture is read in a thread of its own; markers can be told meanwhile.
class ElectronMapwidget final : public MapView {
    Q_OBJECT
public:
    explicit ElectronMapwidget(QWidget* parent = nullptr);
    ~ElectronMapwidget() override;

    /// Alarms and values that come by its slots are this session's to deal with; null: nobody's.
    void setSession(MapSession* session);
    /// The picture and its extent, by which reference points are placed. A picture that is not there yet is read
    /// when it is told of again.
    void setMap(const MapRecord& map);
    /// `sigFailed` tells when it cannot be read.
    void readPicture();
    void setPicture(PicturePyramid picture);
    bool hasPicture() const { return hasPicture_; }

    MapCanvas& canvas() const { return *canvas_; }
    /// Null for an index that does not exist.
    MapLabel* label(int index) const;

    void setMarkers(const QList<corvanta::map::MapMarker>& markers) override;
    void setMarkerText(int index, const QStringList& lines) override;
    void showAlarm(int index, int level) override;
    void clearAlarm(int index) override;
    void moveMarker(int index, const corvanta::map::MapMarker& marker) override;
    void removeMarker(int index) override;
    void fitMarkers() override;
    void zoomIn() override;
    void zoomOut() override;
    void showMarker(int index) override;
    void beginDrag(int index) override;
    void setEditable(bool editable) override;

public slots:
    /// An alarm is to be shown where its sensor is.
    void OntriggerAlarm(const QVariantMap& triggerMap);
    /// New values of inputs.
    void UpdateSensorInputData(const QString& time, const QVariantList& datalist);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void place(int index);
    void placeReferences();
    void connectCanvas();

    MapCanvas* canvas_;
    QLabel* loading_;
    QPointer<MapSession> session_;
    QPointer<MapPictureLoader> loader_;
    MapRecord map_; ///< its markers are those that are shown
    bool hasPicture_ = false;
    bool isEditable_ = true;
};

} // namespace corvanta::map
