#include "map/ui/ElectronMapwidget.h"

#include "base/ui/Worded.h"
#include "map/MapFiles.h"
#include "map/MarkerRules.h"
#include "map/ui/MapCanvas.h"
#include "map/ui/MapLabel.h"
#include "map/ui/MapPictureLoader.h"
#include "map/ui/MapSession.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace corvanta::map {
namespace {

MapLabel::Kind kindOf(const MapMarker& marker) {
    return marker.isCamera()        ? MapLabel::Kind::Camera
           : marker.isPositioning() ? MapLabel::Kind::Positioning
                                    : MapLabel::Kind::Sensor;
}

MapMarker placeOf(const QPointF& fraction) {
    MapMarker place;
    place.x = fraction.x();
    place.y = fraction.y();
    return place;
}

} // namespace

ElectronMapwidget::ElectronMapwidget(QWidget* parent)
    : MapView(parent)
    , canvas_(new MapCanvas(this))
    , loading_(new QLabel(this)) {
    setObjectName(QStringLiteral("ElectronMapwidget"));
    setFocusProxy(canvas_);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(canvas_);
    loading_->setObjectName(QStringLiteral("mapLoading"));
    loading_->setAlignment(Qt::AlignCenter);
    loading_->setAttribute(Qt::WA_TransparentForMouseEvents);
    loading_->setProperty("role", QStringLiteral("faint"));
    connectCanvas();
    worded(this, [this] {
        loading_->setText(tr("正在加载地图..."));
        setAccessibleName(map_.name.isEmpty() ? tr("自定义地图") : map_.name);
        placeReferences(); // they have names
    });
}

ElectronMapwidget::~ElectronMapwidget() {
    if (loader_ != nullptr)
        loader_->letGo();
}

void ElectronMapwidget::connectCanvas() {
    connect(canvas_, &MapCanvas::sigDropped, this,
            [this](const QString& ipncId, const QString& sensorPid, const QPointF& fraction) {
                emit sigDropped(ipncId, sensorPid, placeOf(fraction));
            });
    connect(canvas_, &MapCanvas::sigMoved, this,
            [this](int index, const QPointF& fraction) { emit sigMarkerMoved(index, placeOf(fraction)); });
    connect(canvas_, &MapCanvas::sigActivated, this, &MapView::sigMarkerActivated);
    connect(canvas_, &MapCanvas::sigMarkerMenu, this, &MapView::sigMarkerMenu);
    connect(canvas_, &MapCanvas::sigMapMenu, this, &MapView::sigMapMenu);
    connect(canvas_, &MapCanvas::sigDelete, this, &MapView::sigDeleteMarker);
    connect(canvas_, &MapCanvas::sigEdit, this, &MapView::sigEditMarker);
    connect(canvas_, &MapCanvas::sigDoubleClicked, this, &MapView::sigDoubleClicked);
    connect(canvas_, &MapCanvas::sigFitMarkers, this, &ElectronMapwidget::fitMarkers);
}

void ElectronMapwidget::setSession(MapSession* session) {
    session_ = session;
}

void ElectronMapwidget::setMap(const MapRecord& map) {
    const bool isOther = map.filePath != map_.filePath;
    const QList<MapMarker> shown = map_.markers;
    map_ = map;
    map_.markers = shown;
    setAccessibleName(map.name);
    if (isOther)
        hasPicture_ = false;
    if (!hasPicture_)
        readPicture();
    placeReferences();
}

void ElectronMapwidget::readPicture() {
    if (loader_ != nullptr || !isThere(map_.filePath, 0))
        return; // the one who fetches it tells when it is there
    loader_ = new MapPictureLoader(map_.filePath, this);
    connect(loader_, &BackgroundThread::finished, this, [this] {
        MapPictureLoader* const loader = loader_;
        loader_ = nullptr;
        PicturePyramid picture = loader->take();
        loader->deleteLater();
        if (picture.isEmpty())
            emit sigFailed(tr("地图图片无法读取!"));
        else
            setPicture(std::move(picture));
    });
    loader_->start();
}

void ElectronMapwidget::setPicture(PicturePyramid picture) {
    hasPicture_ = true;
    loading_->hide();
    canvas_->setPicture(std::move(picture));
    for (int i = 0; i < map_.markers.size(); ++i)
        place(i);
    placeReferences();
}

MapLabel* ElectronMapwidget::label(int index) const {
    return canvas_->label(index);
}

void ElectronMapwidget::place(int index) {
    const MapMarker& marker = map_.markers[index];
    MapLabel* const shown = canvas_->label(index);
    shown->setIcon(marker.iconPath, kindOf(marker));
    shown->setShowMode(marker.showMode);
    shown->setPos(canvas_->toScene({marker.x, marker.y}));
    shown->setVisible(hasPicture_);
}

void ElectronMapwidget::placeReferences() {
    std::vector<MapLabel*> references;
    for (const MapMarker& marker : qAsConst(map_.markers)) {
        for (int i = 0; hasPicture_ && marker.isPositioning() && i < marker.locations.size(); ++i) {
            const auto fraction = fractionOf(marker.locations[i], map_);
            if (!fraction)
                continue;
            auto* const shown = new MapLabel; // the scene's
            shown->setIcon({}, MapLabel::Kind::Reference);
            shown->setLines({referenceName(i)});
            shown->setPos(canvas_->toScene(*fraction));
            references.push_back(shown);
        }
    }
    canvas_->setReferences(std::move(references));
}

void ElectronMapwidget::setMarkers(const QList<MapMarker>& markers) {
    map_.markers = markers;
    canvas_->setCount(markers.size());
    for (int i = 0; i < markers.size(); ++i) {
        canvas_->label(i)->setLines({markers[i].name});
        place(i);
    }
    placeReferences();
}

void ElectronMapwidget::setMarkerText(int index, const QStringList& lines) {
    if (MapLabel* const shown = label(index))
        shown->setLines(lines);
}

void ElectronMapwidget::showAlarm(int index, int level) {
    if (MapLabel* const shown = label(index))
        shown->showAlarm(level, canvas_->movies());
}

void ElectronMapwidget::clearAlarm(int index) {
    if (MapLabel* const shown = label(index))
        shown->clearAlarm();
}

void ElectronMapwidget::moveMarker(int index, const MapMarker& marker) {
    if (label(index) == nullptr)
        return;
    const bool hadReferences = map_.markers[index].isPositioning() || marker.isPositioning();
    map_.markers[index] = marker;
    place(index);
    if (hadReferences)
        placeReferences();
}

void ElectronMapwidget::removeMarker(int index) {
    if (label(index) == nullptr)
        return;
    map_.markers.removeAt(index);
    canvas_->removeLabel(index);
    placeReferences();
}

void ElectronMapwidget::fitMarkers() {
    if (const auto box = boundsOf(map_.markers))
        canvas_->fitBox(*box);
    else
        canvas_->fitPicture();
}

void ElectronMapwidget::zoomIn() {
    canvas_->zoomStep(1);
}

void ElectronMapwidget::zoomOut() {
    canvas_->zoomStep(-1);
}

void ElectronMapwidget::showMarker(int index) {
    MapLabel* const shown = label(index);
    if (shown == nullptr)
        return;
    canvas_->setCurrent(index);
    if (hasPicture_ && !canvas_->viewport()->rect().contains(canvas_->mapFromScene(shown->pos())))
        canvas_->centerOn(shown->pos());
}

void ElectronMapwidget::beginDrag(int index) {
    if (isEditable_ && hasPicture_)
        canvas_->beginDrag(index);
}

void ElectronMapwidget::setEditable(bool editable) {
    isEditable_ = editable;
    if (!editable)
        canvas_->cancelDrag();
}

void ElectronMapwidget::OntriggerAlarm(const QVariantMap& triggerMap) {
    if (session_ != nullptr)
        session_->OntriggerAlarm(triggerMap);
}

void ElectronMapwidget::UpdateSensorInputData(const QString& time, const QVariantList& datalist) {
    if (session_ != nullptr)
        session_->UpdateSensorInputData(time, datalist);
}

void ElectronMapwidget::resizeEvent(QResizeEvent* event) {
    MapView::resizeEvent(event);
    loading_->setGeometry(rect());
}

} // namespace corvanta::map
