#include "monitor/ui/OperatorTour.h"

#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/MonitorMainUI.h"

#include <QDialog>
#include <QFile>
#include <QScreen>

namespace tour = corvanta::tour;

OperatorTour::OperatorTour(MonitorMainUI& window, QString folder, Extent extent, QObject* parent)
    : QObject(parent)
    , window_(window)
    , script_(window, std::move(folder), this)
    , wall_(window, script_)
    , settings_(window, script_)
    , files_(window, script_, wall_)
    , logs_(window, script_)
    , playback_(window, script_, wall_)
    , account_(window, script_)
    , manage_(window, script_)
    , linkage_(window, script_)
    , sensors_(window, script_)
    , maps_(window, script_)
    , update_(window, script_) {
    connect(&script_, &TourScript::sigEnded, &window_, [this] { window_.live().stopAll(); });
    if (extent == Extent::Short)
        planShort();
    else
        planEverything();
}

void OperatorTour::start() {
    largeWindow();
    script_.run();
}

void OperatorTour::largeWindow() {
    const QRect screen = window_.window()->screen()->availableGeometry();
    window_.window()->setGeometry(screen.adjusted(8, 8, -8, -8));
}

void OperatorTour::planShort() {
    account_.signIn();
    wall_.layout(3, 3, QStringLiteral("live-9"));
    script_.pause(6000); // until the texts over the pictures have gone
    script_.picture(QStringLiteral("live-9-later"));
    wall_.layout(1, 1, QStringLiteral("live-1"));
    wall_.record(1);
    wall_.endRecording();
    const QString copy = script_.folder() + QStringLiteral("/recording.avi");
    script_.step({QStringLiteral("the recording"),
                  [this, copy] {
                      QFile::remove(copy);
                      QFile::copy(wall_.recorded().value(0).files.value(0), copy);
                  },
                  [copy] {
                      return QFile::exists(copy);
                  }});
}

void OperatorTour::planEverything() {
    planWindow();
    account_.signedOut();
    account_.signIn();
    script_.picture(QStringLiteral("signed-in"));
    account_.signedIn(QString());
    manage_.dialogs(QString());
    linkage_.dialogs(QString());
    sensors_.dialogs(QString());
    sensors_.pages(QString());
    maps_.pages(QString());
    maps_.dialogs(QString());
    planLayouts();
    planSmallest();
    tip();
}

void OperatorTour::planLayouts() {
    wall_.layout(1, 1, QStringLiteral("layout-1"));
    wall_.layout(2, 2, QStringLiteral("layout-4"));
    wall_.layout(3, 3, QStringLiteral("layout-9"));
    manage_.ptz(QString());
    files_.page(QString()); // while there are pictures to store
    files_.viewer();
    wall_.record(4);
    script_.picture(QStringLiteral("recording"));
    wall_.menus();
    wall_.treeMenus();
    wall_.endRecording();
    wall_.polling();
    settings_.help();
    settings_.pages(QStringLiteral("settings-"));
    update_.dialogs(QString());
    logs_.page(QString());
    logs_.exportRows();
    linkage_.alarms(QString());
    playback_.page();
    wall_.layout(4, 4, QStringLiteral("layout-16"));
    wall_.layout(3, 6, QStringLiteral("layout-18"));
    wall_.layout(5, 5, QStringLiteral("layout-25"));
    wall_.layout(6, 6, QStringLiteral("layout-36"));
    wall_.layout(8, 8, QStringLiteral("layout-64"));
}

void OperatorTour::planSmallest() {
    script_.step({QStringLiteral("smallest window"),
                  [this] { window_.window()->resize(window_.window()->minimumSizeHint()); },
                  [this] {
                      return window_.width() <= MonitorMainUI::SmallestWidth + 8;
                  }});
    script_.pause(500);
    script_.picture(QStringLiteral("smallest-64"));
    wall_.layout(3, 3, QStringLiteral("smallest-9"));
    settings_.pages(QStringLiteral("smallest-settings-"));
    logs_.page(QStringLiteral("smallest-"));
    files_.page(QStringLiteral("smallest-"));
    linkage_.alarms(QStringLiteral("smallest-"));
    sensors_.pages(QStringLiteral("smallest-"));
    sensors_.dialogs(QStringLiteral("smallest-"));
    maps_.pages(QStringLiteral("smallest-"));
    maps_.dialogs(QStringLiteral("smallest-"));
    update_.dialogs(QStringLiteral("smallest-"));
}

void OperatorTour::planWindow() {
    script_.step({QStringLiteral("the window"), [] {},
                  [this] {
                      return window_.isVisible();
                  }});
    script_.pause(300);
    script_.picture(QStringLiteral("start"));
}

void OperatorTour::tip() {
    script_.dialog(
        QStringLiteral("close-question"), [this] { window_.window()->close(); },
        [] { tour::openDialog()->reject(); });
}
