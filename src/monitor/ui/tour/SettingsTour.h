#pragma once

#include <QString>
#include <QStringList>

class MonitorMainUI;
class TourScript;

/// The settings, page by page, and the help.
class SettingsTour final {
public:
    /// Both outlive it, and it outlives the walk.
    SettingsTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    void help();
    /// `pictures` begins their names.
    void pages(const QString& pictures);

private:
    static QStringList names();
    void page(const QString& name, const QString& objectName);

    MonitorMainUI& window_;
    TourScript& script_;
};
