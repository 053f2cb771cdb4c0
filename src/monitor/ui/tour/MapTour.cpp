#include "monitor/ui/tour/MapTour.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "map/SensorIndex.h"
#include "map/ui/FwidgetElectronMap.h"
#include "map/ui/ItemMapWidget.h"
#include "map/ui/MapSession.h"
#include "map/ui/MapView.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MapControl.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"

#include <QDialog>
#include <QPushButton>

#include <utility>

namespace map = corvanta::map;
namespace tour = corvanta::tour;

namespace {
constexpr int Settled = 2500; // ms; until pictures are read and values are there
} // namespace

map::FwidgetElectronMap* MapTour::page() const {
    return window_.maps().page();
}

map::ItemMapWidget* MapTour::cell(int number) const {
    return page() == nullptr ? nullptr : page()->cell(number);
}

void MapTour::shown(const QString& name, std::function<void()> act) {
    script_.step({name, std::move(act), [] {
                      return true;
                  }});
    script_.pause(Settled);
    script_.picture(name);
}

void MapTour::openMaps() {
    // Two pictures, the map of the world, and a friend's picture.
    constexpr int shownPictures = 2;
    int pictures = 0;
    for (const map::MapRecord& one : page()->document().maps()) {
        if (one.type == map::MapType::Online)
            cell(shownPictures)->openMap(one.id);
        else if (pictures < shownPictures)
            cell(pictures++)->openMap(one.id);
        else
            cell(shownPictures + 1)->openMap(one.id);
    }
}

void MapTour::raiseAlarm() {
    const map::SensorIndex index(window_.devices());
    int level = 0;
    for (int number = 0; number < 3; ++number) {
        const map::MapSession* const session = cell(number)->session();
        for (int i = 0; session != nullptr && i < session->markers().size() && level < 4; ++i) {
            const auto inputs = index.inputsOf(session->markers()[i]);
            if (inputs.isEmpty() || session->markers()[i].isCamera())
                continue;
            emit window_.context().events.sig_triggerAlarm(
                {{QStringLiteral("input"), inputs[0].pid}, {QStringLiteral("threshold"), ++level}});
        }
    }
}

int MapTour::markerOf(bool isCamera) const {
    const map::MapSession* const session = cell(0) == nullptr ? nullptr : cell(0)->session();
    for (int i = 0; session != nullptr && i < session->markers().size(); ++i) {
        if (session->markers()[i].isCamera() == isCamera)
            return i;
    }
    return -1;
}

void MapTour::pages(const QString& pictures) {
    shown(pictures + QStringLiteral("maps-empty"), [this] {
        tour::click(&window_, "mapModule");
        tour::click(&window_, "mapLayout4");
    });
    shown(pictures + QStringLiteral("maps-4"), [this] { openMaps(); });
    shown(pictures + QStringLiteral("maps-alarm"), [this] { raiseAlarm(); });
    shown(pictures + QStringLiteral("maps-fitted"), [this] {
        for (int number = 0; number < 3; ++number) {
            if (cell(number)->view() != nullptr)
                cell(number)->view()->fitMarkers();
        }
    });
    shown(pictures + QStringLiteral("maps-1"), [this] { tour::click(&window_, "mapLayout1"); });
    shown(pictures + QStringLiteral("maps-zoomed"), [this] {
        for (int i = 0; i < 4 && cell(0)->view() != nullptr; ++i)
            cell(0)->view()->zoomIn();
    });
    shown(pictures + QStringLiteral("maps-9"), [this] { tour::click(&window_, "mapLayout9"); });
    script_.step({QStringLiteral("the videos behind the maps"),
                  [this] {
                      tour::click(&window_, "mapLayout1");
                      tour::click(&window_, "videoModule");
                  },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}

void MapTour::dialog(const QString& name, std::function<void()> open) {
    shown(name, std::move(open));
    script_.step({QStringLiteral("closing ") + name,
                  [this] {
                      constexpr int most = 5; // lie over each other
                      for (int i = 0; i < most && tour::openDialog() != nullptr; ++i)
                          tour::openDialog()->reject();
                      if (page() == nullptr)
                          return;
                      for (QDialog* const left : page()->findChildren<QDialog*>())
                          left->reject(); // those that are not modal
                  },
                  [] {
                      return true;
                  }});
    script_.pause(100);
}

void MapTour::dialogs(const QString& pictures) {
    dialog(pictures + QStringLiteral("map-list"), [this] {
        tour::click(&window_, "mapModule");
        page()->openManager();
    });
    dialog(pictures + QStringLiteral("map-add"), [this] { emit cell(0)->sigAdd(0); });
    const auto onMarker = [this](bool isCamera, void (map::MapView::*signal)(int)) {
        if (const int index = markerOf(isCamera); index >= 0)
            emit(cell(0)->view()->*signal)(index);
    };
    dialog(pictures + QStringLiteral("map-marker"), [onMarker] { onMarker(false, &map::MapView::sigEditMarker); });
    dialog(pictures + QStringLiteral("map-icons"), [this, onMarker] {
        onMarker(false, &map::MapView::sigEditMarker);
        if (auto* const button = page()->findChild<QPushButton*>(QStringLiteral("markSetIcon")))
            button->click();
    });
    dialog(pictures + QStringLiteral("map-data"), [onMarker] { onMarker(false, &map::MapView::sigMarkerActivated); });
    dialog(pictures + QStringLiteral("map-video"), [onMarker] { onMarker(true, &map::MapView::sigMarkerActivated); });
    script_.step({QStringLiteral("the videos behind the dialogs"), [this] { tour::click(&window_, "videoModule"); },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}
