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
    /// Likewise where the act runs an event loop of its own, which the steps go on in.
    void inside(const QString& name, std::function<void()> act);
    /// The dialogs of single inputs and outputs.
    void ports(const QString& pictures);
    /// The dialogs in which cameras that measure are set up, with a picture that one of them has taken.
    void measuring(const QString& pictures);
    /// That for boards of a type; nothing where there is none.
    void openMeasuring(const QString& boardType);
    void close(const QString& what);

    MonitorMainUI& window_;
    TourScript& script_;
};
