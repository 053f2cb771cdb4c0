#pragma once

#include <QString>

class MonitorMainUI;
class TourScript;

/// The page of the logs.
class LogsTour final {
public:
    /// Both outlive it, and it outlives the walk.
    LogsTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    /// The log of sign-ins, in which the walk's own stands. `pictures` begins their names.
    void page(const QString& pictures);
    void exportRows();

private:
    MonitorMainUI& window_;
    TourScript& script_;
};
