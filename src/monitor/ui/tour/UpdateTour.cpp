#include "monitor/ui/tour/UpdateTour.h"

#include "base/AppPaths.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/settings/SettingsDialog.h"
#include "monitor/ui/tour/TourScript.h"
#include "monitor/ui/tour/TourUpdateServer.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>

namespace tour = corvanta::tour;

void UpdateTour::setServer(const QString& address) {
    QTimer::singleShot(0, &window_, [address] {
        auto* const settings = qobject_cast<SettingsDialog*>(tour::openDialog());
        if (settings == nullptr)
            return;
        settings->findChild<QLineEdit*>(QStringLiteral("updateServer"))->setText(address);
        tour::click(settings, "settingsOk");
    });
    tour::click(&window_, "settingsButton");
}

void UpdateTour::close(const QString& what) {
    script_.step({QStringLiteral("closing ") + what, [] { tour::openDialog()->reject(); },
                  [] {
                      return true;
                  }});
    script_.pause(100);
}

void UpdateTour::open(const QString& pictures) {
    script_.openDialog(pictures + QStringLiteral("update"),
                       [this] { window_.findChild<QAction*>(QStringLiteral("helpUpdate"))->trigger(); });
}

void UpdateTour::check(const QString& pictures) {
    open(pictures);
    script_.openDialog(pictures + QStringLiteral("update-found"),
                       [] { tour::click(tour::openDialog(), "checkUpdate"); });
}

void UpdateTour::dialogs(const QString& pictures) {
    if (pictures.isEmpty())
        script_.menu(QStringLiteral("menu-help"), [this] { tour::click(&window_, "helpButton"); });
    if (AppPaths::isSystemFolder(QCoreApplication::applicationDirPath())) {
        // Packages bring updates there: the dialog says so, and there is nothing else to be seen.
        open(pictures);
        close(QStringLiteral("the update dialog"));
        return;
    }
    script_.step({QStringLiteral("an update server"),
                  [this] {
                      if (server_ == nullptr)
                          server_ = new TourUpdateServer(&window_);
                      server_->listen();
                      server_->setLarge(true);
                      setServer(server_->address());
                  },
                  [] {
                      return tour::openDialog() == nullptr;
                  }});
    check(pictures);
    script_.step({QStringLiteral("an update"), [] { tour::click(tour::openDialog(), "tipOk"); },
                  [this] {
                      return window_.findChild<QWidget*>(QStringLiteral("updateProgress"))->isVisible();
                  }});
    script_.pause(3000); // until its speed is known
    script_.picture(pictures + QStringLiteral("update-progress"));
    close(QStringLiteral("the update dialog"));
    script_.picture(pictures + QStringLiteral("update-background"));
    script_.step({QStringLiteral("no update"), [this] { tour::click(&window_, "updateCancel"); },
                  [this] {
                      return !window_.findChild<QWidget*>(QStringLiteral("updateProgress"))->isVisible();
                  }});
    script_.step({QStringLiteral("a small update"), [this] { server_->setLarge(false); },
                  [] {
                      return true;
                  }});
    check(pictures);
    script_.openDialog(pictures + QStringLiteral("update-ready"), [] { tour::click(tour::openDialog(), "tipOk"); });
    close(QStringLiteral("the question"));
    close(QStringLiteral("the update dialog"));
    script_.step({QStringLiteral("no update server"), [this] { setServer({}); },
                  [] {
                      return tour::openDialog() == nullptr;
                  }});
}
