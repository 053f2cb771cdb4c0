#pragma once

#include <QString>

#include <functional>

class MonitorMainUI;
class TourScript;

/// The modules of data and charts, and the dialogs of sensors.
class SensorTour final {
public:
    /// Both outlive it, and it outlives the walk.
    SensorTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    /// The table, charts of the first inputs, data files of alarms. `pictures` begins their names.
    void pages(const QString& pictures);
    void dialogs(const QString& pictures);

private:
    QString firstDevice() const;
    void shown(const QString& name, std::function<void()> act);
    void close(const QString& what);

    MonitorMainUI& window_;
    TourScript& script_;
};
