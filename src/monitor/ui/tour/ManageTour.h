#pragma once

#include <QString>

#include <functional>

class MonitorMainUI;
class QDialog;
class TourScript;

/// The dialogs of devices: adding, managing, configuring, moving.
class ManageTour final {
public:
    /// Both outlive it, and it outlives the walk.
    ManageTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    /// Needs an account that is signed in. `pictures` begins the names.
    void dialogs(const QString& pictures);
    /// The pad over a tile that is shown alone, and the dialog beside it.
    void ptz(const QString& pictures);

private:
    void shown(const QString& name, std::function<void()> act);
    void close(const QString& what);
    void showConfigPage(int number);
    QString firstDevice() const;

    MonitorMainUI& window_;
    TourScript& script_;
};
