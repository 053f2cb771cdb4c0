#include "monitor/ui/tour/LinkageTour.h"

#include "base/DeviceModel.h"
#include "linkage/AlarmInbox.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LinkageControl.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"

#include <QComboBox>
#include <QDateTime>
#include <QDialog>
#include <QTabWidget>
#include <QTreeWidget>

#include <array>
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

/// Chooses the first of everything that a dialog lets choose.
void chooseFirst(const char* dialog) {
    QDialog* const open = on(dialog);
    if (open == nullptr)
        return;
    for (const char* const name : {"sensor", "port"}) {
        if (auto* const combo = open->findChild<QComboBox*>(QLatin1String(name)))
            combo->setCurrentIndex(0);
    }
}

void selectFirst(const char* dialog) {
    QDialog* const open = on(dialog);
    auto* const list = open == nullptr ? nullptr : open->findChild<QTreeWidget*>(QStringLiteral("list"));
    if (list != nullptr && list->topLevelItemCount() > 0)
        list->setCurrentItem(list->topLevelItem(0));
}

/// One that has plans, else one that has a tile.
QString deviceWithPlans(const DeviceModel& devices) {
    for (const QString& ipncId : devices.ipncIds()) {
        if (!devices.device(ipncId)->linkages.isEmpty())
            return ipncId;
    }
    return devices.deviceOfTile(0).value_or(QString());
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
    constexpr auto list = "NewSet_Linkage_Dialog";
    constexpr auto editor = "AddAndSet_Linkage_Dialog";
    struct Part {
        const char* picture; ///< its plural is that of the combination
        const char* add;
        const char* picker;
        const char* tabs;
        const char* addUnion;
        const char* unionDialog;
    };
    static constexpr std::array parts{Part{"linkage-condition", "inputAdd", "LinkageSignalConditionDialog",
                                           "planConditions", "inputUnionAdd", "LinkageComboxConditionDialog"},
                                      Part{"linkage-action", "outputAdd", "LinkageSignalActionDialog", "planActions",
                                           "outputUnionAdd", "LinkageComboxlActionDialog"}};
    shown(pictures + QStringLiteral("linkage"),
          [this] { window_.linkage().openPlans(deviceWithPlans(window_.devices())); });
    shown(pictures + QStringLiteral("linkage-plan"), [] {
        selectFirst(list);
        click(list, "planEdit");
    });
    for (const Part& part : parts) {
        const QString picture = pictures + QLatin1String(part.picture);
        shown(picture, [part] {
            click(editor, part.add);
            chooseFirst(part.picker);
        });
        close(part.picker);
        shown(picture + QLatin1Char('s'), [part] {
            showTab(editor, part.tabs, 1);
            click(editor, part.addUnion);
            click(part.unionDialog, "unionAdd");
            chooseFirst(part.picker);
            click(part.picker, "pickSave");
        });
        close(part.unionDialog);
    }
    close(editor);
    close(list);
}

void LinkageTour::dialogs(const QString& pictures) {
    plans(pictures);
    shown(pictures + QStringLiteral("notices"), [this] { window_.linkage().openRules(); });
    shown(pictures + QStringLiteral("notices-rule"), [] {
        selectFirst("Set_Notify_Dialog");
        click("Set_Notify_Dialog", "ruleEdit");
    });
    shown(pictures + QStringLiteral("notices-devices"), [] { click("NewSet_Notify_Dialog", "ruleDevicesPick"); });
    close("CheckPicker");
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
