#pragma once

#include <QString>

class MonitorMainUI;
class TourScript;
class TourUpdateServer;

/// An update that is found, fetched and cancelled.
class UpdateTour final {
public:
    /// Both outlive it, and it outlives the walk.
    UpdateTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    /// `pictures` begins the names.
    void dialogs(const QString& pictures);

private:
    void setServer(const QString& address);
    void open(const QString& pictures);
    void check(const QString& pictures);
    void close(const QString& what);

    MonitorMainUI& window_;
    TourScript& script_;
    TourUpdateServer* server_ = nullptr; ///< the window's
};
