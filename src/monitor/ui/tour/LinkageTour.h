#pragma once

#include <QString>

#include <functional>

class MonitorMainUI;
class TourScript;

/// Linkage plans, notification rules, text messages, and the alarm centre.
class LinkageTour final {
public:
    /// Both outlive it, and it outlives the walk.
    LinkageTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    /// Needs an account that is signed in. `pictures` begins the names.
    void dialogs(const QString& pictures);
    /// The page of alarms, with some made up.
    void alarms(const QString& pictures);

private:
    void shown(const QString& name, std::function<void()> act);
    void close(const char* dialog);
    void plans(const QString& pictures);

    MonitorMainUI& window_;
    TourScript& script_;
};
