#include "monitor/ui/tour/AccountTour.h"

#include "account/ui/PhoneFlowPages.h"
#include "base/AppEvents.h"
#include "monitor/ui/AccountControl.h"
#include "monitor/ui/DevicePanel.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>

#include <utility>

namespace tour = corvanta::tour;

namespace {

QDialog* dialogNamed(const char* objectName) {
    QDialog* const open = tour::openDialog();
    return open != nullptr && open->objectName() == QLatin1String(objectName) ? open : nullptr;
}

} // namespace

void AccountTour::openSignIn() {
    // The dialog's own event loop runs inside the click, so it is left for the loop to come to.
    script_.step({QStringLiteral("the sign-in dialog"),
                  [this] { QTimer::singleShot(0, &window_, [this] { tour::click(&window_, "accountButton"); }); },
                  [] {
                      return dialogNamed("LoginDialog") != nullptr;
                  }});
    script_.pause(300);
}

void AccountTour::signIn() {
    openSignIn();
    script_.picture(QStringLiteral("sign-in"));
    script_.step({QStringLiteral("signing in"), [] { tour::click(tour::openDialog(), "signIn"); },
                  [this] {
                      return tour::openDialog() == nullptr && !window_.devicePanel().tree().isEmpty();
                  }});
}

void AccountTour::shown(const QString& name, std::function<void(QDialog&)> act) {
    script_.step({name, [act = std::move(act)] { act(*tour::openDialog()); },
                  [] {
                      return true;
                  }});
    script_.pause(200);
    script_.picture(name);
}

void AccountTour::close(const QString& what) {
    script_.step({QStringLiteral("closing ") + what, [] { tour::openDialog()->reject(); },
                  [] {
                      return true;
                  }});
    script_.pause(100);
}

void AccountTour::flow(const QString& name, const char* link, bool hasPassword) {
    script_.openDialog(name + QStringLiteral("-number"), [link] { tour::click(tour::openDialog(), link); });
    const auto page = [](int number) {
        return [number](QDialog& dialog) {
            dialog.findChild<QLineEdit*>(QStringLiteral("flowNumber"))->setText(QStringLiteral("13900139000"));
            dialog.findChild<PhoneFlowPages*>()->showPage(number);
        };
    };
    shown(name + QStringLiteral("-code"), page(1));
    if (hasPassword)
        shown(name + QStringLiteral("-password"), page(2));
    close(name);
}

void AccountTour::signedOut() {
    openSignIn();
    flow(QStringLiteral("register"), "register", true);
    flow(QStringLiteral("recover"), "recover", true);
    flow(QStringLiteral("rebind"), "rebind", false);
    script_.openDialog(QStringLiteral("sign-in-proxy"), [] { tour::click(tour::openDialog(), "proxy"); });
    close(QStringLiteral("the proxy"));
    script_.step({QStringLiteral("no number"),
                  [] { tour::openDialog()->findChild<QLineEdit*>(QStringLiteral("phoneNumber"))->clear(); },
                  [] {
                      return true;
                  }});
    script_.openDialog(QStringLiteral("sign-in-tip"), [] { tour::click(tour::openDialog(), "signIn"); });
    close(QStringLiteral("the tip"));
    close(QStringLiteral("the sign-in dialog"));
}

void AccountTour::person(const QString& pictures) {
    const QString name = pictures + QStringLiteral("account-person");
    script_.openDialog(name, [this] { window_.account().openPerson(); });
    shown(name + QStringLiteral("-password"),
          [](QDialog& dialog) { dialog.findChild<QTabWidget*>(QStringLiteral("personTabs"))->setCurrentIndex(1); });
    script_.openDialog(name + QStringLiteral("-unbind"), [] { tour::click(tour::openDialog(), "unbind"); });
    close(QStringLiteral("the question"));
    close(name);
}

void AccountTour::manage(const QString& pictures) {
    const QString groups = pictures + QStringLiteral("account-groups");
    script_.openDialog(groups, [this] { window_.account().openGroups(); });
    script_.openDialog(groups + QStringLiteral("-add"), [] { tour::click(tour::openDialog(), "groupAdd"); });
    close(QStringLiteral("the editor"));
    script_.openDialog(groups + QStringLiteral("-delete"), [] {
        auto* const list = tour::openDialog()->findChild<QTreeWidget*>(QStringLiteral("list"));
        list->setCurrentItem(list->topLevelItem(0));
        tour::click(tour::openDialog(), "groupDelete");
    });
    close(QStringLiteral("the question"));
    close(groups);
}

void AccountTour::friendsAndRights(const QString& pictures) {
    const QString friends = pictures + QStringLiteral("account-friends");
    script_.openDialog(friends, [this] { window_.account().openFriends(); });
    script_.openDialog(friends + QStringLiteral("-add"), [] { tour::click(tour::openDialog(), "friendAdd"); });
    close(QStringLiteral("the editor"));
    script_.openDialog(friends + QStringLiteral("-edit"), [] {
        auto* const list = tour::openDialog()->findChild<QTreeWidget*>(QStringLiteral("list"));
        list->clearSelection();
        list->setCurrentItem(list->topLevelItem(0));
        tour::click(tour::openDialog(), "friendEdit"); // a tip where there are no friends
    });
    close(QStringLiteral("the editor"));
    close(friends);
    const QString rights = pictures + QStringLiteral("account-rights");
    script_.openDialog(rights, [this] { window_.account().openRights(); });
    for (const int tab : {1, 2})
        shown(rights + QLatin1Char('-') + QString::number(tab), [tab](QDialog& dialog) {
            dialog.findChild<QTabWidget*>(QStringLiteral("shareTabs"))->setCurrentIndex(tab);
        });
    close(rights);
}

void AccountTour::messages(const QString& pictures) {
    const auto find = [this]() -> QWidget* {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* const one : windows) {
            if (one->objectName() == QLatin1String("SmsWindow"))
                return one;
        }
        return &window_;
    };
    script_.step(
        {QStringLiteral("a text message"),
         [this] {
             emit window_.context().events.sig_sms(
                 {{QStringLiteral("phonenumber"), QStringLiteral("13900139000")},
                  {QStringLiteral("text"), QStringLiteral("【监控平台】验证码：123456，60秒内有效，请勿告诉他人。")},
                  {QStringLiteral("time"), QStringLiteral("2026-01-01 08:00:00")}});
         },
         [find] {
             return find()->isVisible();
         }});
    script_.pause(300);
    script_.picture(pictures + QStringLiteral("sms"));
    script_.step({QStringLiteral("no text message"), [find] { find()->hide(); },
                  [] {
                      return true;
                  }});
}

void AccountTour::signedIn(const QString& pictures) {
    script_.menu(pictures + QStringLiteral("menu-account"), [this] { tour::click(&window_, "accountButton"); });
    person(pictures);
    manage(pictures);
    friendsAndRights(pictures);
    messages(pictures);
}
