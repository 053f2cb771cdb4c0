#include "monitor/ui/tour/LinkageTour.h"

#include "base/DeviceModel.h"
#include "linkage/AlarmInbox.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LinkageControl.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"

#include <QDateTime>
#include <QDialog>
#include <QTabWidget>
#include <QTableView>

#include <utility>

namespace tour = corvanta::tour;
using corvanta::linkage::AlarmMessage;

namespace {

constexpr int Settled = 600; // ms; until what a dialog reads is there

/// The dialog of this name, without the tips that may lie over it about what the service has refused; null when it is
/// not there.
QDialog* on(const char* objectName) {
    for (QDialog* top = tour::openDialog(); top != nullptr; top = tour::openDialog()) {
        if (top->objectName() == QLatin1String(objectName))
            return top;
        if (top->objectName() != QLatin1String("TipDialog"))
            return nullptr;
        top->reject();
    }
    return nullptr;
}

void click(const char* dialog, const char* button) {
    if (QDialog* const open = on(dialog))
        tour::click(open, button);
}

void showTab(const char* dialog, const char* tabs, int page) {
    if (QDialog* const open = on(dialog))
        open->findChild<QTabWidget*>(QLatin1String(tabs))->setCurrentIndex(page);
}

AlarmMessage madeUp(const QString& ipncId, int plan) {
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    QVariantMap alarm{{QStringLiteral("ipncid"), ipncId}, {QStringLiteral("datetime"), time}};
    if (plan > 0)
        alarm.insert(QStringLiteral("trigger"), QVariantMap{{QStringLiteral("linkplanid"), plan},
                                                            {QStringLiteral("name"), QStringLiteral("水位过高")},
                                                            {QStringLiteral("threshold"), plan}});
    return AlarmMessage::fromMap(
        {{QStringLiteral("alarm"), alarm},
         {QStringLiteral("content"),
          plan > 0 ? QStringLiteral("水位 3.2 m，超过设定值 3.0 m") : QStringLiteral("设备离线")}});
}

} // namespace

void LinkageTour::shown(const QString& name, std::function<void()> act) {
    script_.step({name, std::move(act), [] {
                      return true;
                  }});
    script_.pause(Settled);
    script_.picture(name);
}

void LinkageTour::close(const char* dialog) {
    script_.step({QStringLiteral("closing ") + QLatin1String(dialog),
                  [dialog] {
                      if (QDialog* const open = on(dialog))
                          open->reject();
                  },
                  [] {
                      return true;
                  }});
    script_.pause(100);
}

void LinkageTour::plans(const QString& pictures) {
    shown(pictures + QStringLiteral("linkage"),
          [this] { window_.linkage().openPlans(window_.devices().deviceOfTile(0).value_or(QString())); });
    shown(pictures + QStringLiteral("linkage-plan"), [] { click("NewSet_Linkage_Dialog", "planAdd"); });
    shown(pictures + QStringLiteral("linkage-condition"), [] { click("AddAndSet_Linkage_Dialog", "inputAdd"); });
    close("LinkageSignalConditionDialog");
    shown(pictures + QStringLiteral("linkage-combination"), [] {
        showTab("AddAndSet_Linkage_Dialog", "planActions", 1);
        click("AddAndSet_Linkage_Dialog", "outputUnionAdd");
    });
    close("LinkageComboxlActionDialog");
    close("AddAndSet_Linkage_Dialog");
    close("NewSet_Linkage_Dialog");
}

void LinkageTour::dialogs(const QString& pictures) {
    plans(pictures);
    shown(pictures + QStringLiteral("notices"), [this] { window_.linkage().openRules(); });
    shown(pictures + QStringLiteral("notices-rule"), [] { click("Set_Notify_Dialog", "ruleAdd"); });
    shown(pictures + QStringLiteral("notices-template"),
          [] { tour::openDialog()->findChild<QTabWidget*>(QStringLiteral("ruleTabs"))->setCurrentIndex(1); });
    close("NewSet_Notify_Dialog");
    close("Set_Notify_Dialog");
    for (const int tab : {0, 1}) {
        shown(pictures + QStringLiteral("sms-manage-%1").arg(tab), [this, tab] {
            if (tab == 0)
                window_.linkage().openTextMessages();
            else
                showTab("SMSManageDialog", "smsTabs", 1);
        });
    }
    close("SMSManageDialog");
}

void LinkageTour::alarms(const QString& pictures) {
    shown(pictures + QStringLiteral("alarms"), [this] {
        const QStringList devices = window_.devices().ipncIds().mid(0, 4);
        for (const QString& ipncId : devices) {
            const int plan = devices.indexOf(ipncId);
            for (int count = 0; count <= plan; ++count)
                window_.context().alarms.add(madeUp(ipncId, plan), window_.devices().device(ipncId)->displayName());
        }
        tour::click(&window_, "alarmModule");
    });
    script_.step({QStringLiteral("the videos again"),
                  [this] {
                      window_.context().alarms.acknowledgeAll();
                      tour::click(&window_, "videoModule");
                  },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}
