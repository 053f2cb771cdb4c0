#include "monitor/ui/tour/SettingsTour.h"

#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/settings/SettingsDialog.h"
#include "monitor/ui/tour/TourScript.h"

#include <QAction>
#include <QDialog>
#include <QTimer>

namespace tour = corvanta::tour;

QStringList SettingsTour::names() {
    return {QStringLiteral("generalPage"),   QStringLiteral("startPage"),   QStringLiteral("videoPage"),
            QStringLiteral("recordPage"),    QStringLiteral("pollPage"),    QStringLiteral("alarmPage"),
            QStringLiteral("onlineMapPage"), QStringLiteral("networkPage"), QStringLiteral("updatePage")};
}

void SettingsTour::pages(const QString& pictures) {
    for (const QString& one : names())
        page(pictures + one, one);
}

void SettingsTour::help() {
    script_.dialog(
        QStringLiteral("help"), [this] { window_.findChild<QAction*>(QStringLiteral("helpKeys"))->trigger(); },
        [] { tour::openDialog()->reject(); });
}

void SettingsTour::page(const QString& name, const QString& objectName) {
    const auto open = [this, objectName] {
        QTimer::singleShot(0, &window_, [objectName] {
            if (auto* const settings = qobject_cast<SettingsDialog*>(tour::openDialog()))
                settings->showPage(objectName);
        });
        tour::click(&window_, "settingsButton");
    };
    script_.dialog(name, open, [] { tour::openDialog()->reject(); });
}
