#pragma once

#include <QString>

#include <functional>

class MonitorMainUI;
class TourScript;

namespace corvanta::map {
class FwidgetElectronMap;
class ItemMapWidget;
} // namespace corvanta::map

/// The module of the maps, and its dialogs.
class MapTour final {
public:
    /// Both outlive it, and it outlives the walk.
    MapTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    /// Two maps on pictures and one of the world, four at once, with values and an alarm. `pictures` begins the
    /// names.
    void pages(const QString& pictures);
    void dialogs(const QString& pictures);

private:
    corvanta::map::FwidgetElectronMap* page() const;
    corvanta::map::ItemMapWidget* cell(int number) const;
    void openMaps();
    void raiseAlarm();
    int markerOf(bool isCamera) const;
    void shown(const QString& name, std::function<void()> act);
    void dialog(const QString& name, std::function<void()> open);

    MonitorMainUI& window_;
    TourScript& script_;
};
