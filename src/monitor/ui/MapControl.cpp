#include "monitor/ui/MapControl.h"

#include "base/AppEvents.h"
#include "map/ui/FwidgetElectronMap.h"

#include <QWidget>

#include <utility>

namespace map = corvanta::map;

MapControl::MapControl(const AppContext& context, QWidget& window)
    : QObject(&window)
    , context_(context) {
    AppEvents& events = context_.events;
    connect(&events, &AppEvents::sig_showAlarmOnMap, this, &MapControl::showAlarm);
    connect(&events, &AppEvents::sig_triggerAlarm, this, [this](const QVariantMap& trigger) {
        const int input = trigger.value(QStringLiteral("input")).toInt();
        if (page_ == nullptr && input > 0)
            missed_.insert(input, trigger);
    });
    connect(&events, &AppEvents::sig_logout, this, [this] { missed_.clear(); });
}

map::FwidgetElectronMap* MapControl::makePage(QWidget* parent) {
    page_ = new map::FwidgetElectronMap(context_, parent);
    // What has come before there was a map to show it.
    const auto missed = std::exchange(missed_, {});
    for (const QVariantMap& trigger : missed)
        page_->takeAlarm(trigger);
    return page_;
}

map::FwidgetElectronMap* MapControl::page() const {
    return page_;
}

void MapControl::showAlarm(const QString& ipncId, const QVariantMap& trigger) {
    emit sigShowMaps();
    if (page_ != nullptr)
        page_->showAlarm(ipncId, trigger);
}
