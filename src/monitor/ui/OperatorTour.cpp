#include "monitor/ui/OperatorTour.h"

#include "base/DataTree.h"
#include "base/DeviceModel.h"
#include "base/ScreenPoll.h"
#include "base/Settings.h"
#include "database/SqlHelp.h"
#include "logs/ui/Check_Log_Widget.h"
#include "logs/ui/LogTableView.h"
#include "monitor/ui/DevicePanel.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/settings/SettingsDialog.h"
#include "playback/PlaybackSession.h"
#include "playback/ui/PlaybackPage.h"
#include "recording/Recorder.h"
#include "storage/RecordingStorage.h"
#include "storage/ui/FileTableView.h"
#include "storage/ui/StoredFilesPage.h"
#include "storage/ui/TimelinePane.h"
#include "video/ui/ItemVideo.h"
#include "video/ui/TileMenu.h"

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QDebug>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QScreen>
#include <QTabBar>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int Tick = 50; // ms

/// Object names of the settings' pages.
QStringList settingsPages() {
    return {QStringLiteral("generalPage"), QStringLiteral("startPage"), QStringLiteral("videoPage"),
            QStringLiteral("recordPage"),  QStringLiteral("pollPage"),  QStringLiteral("alarmPage"),
            QStringLiteral("networkPage")};
}

QDialog* openDialog() {
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

void click(QWidget* parent, const char* objectName) {
    auto* const button = parent->findChild<QAbstractButton*>(QLatin1String(objectName));
    if (button == nullptr)
        qWarning() << "no button" << objectName;
    else
        button->click();
}

} // namespace

OperatorTour::OperatorTour(MonitorMainUI& window, QString folder, Extent extent, QObject* parent)
    : QObject(parent)
    , window_(window)
    , folder_(std::move(folder)) {
    timer_.setInterval(Tick);
    connect(&timer_, &QTimer::timeout, this, &OperatorTour::tick);
    if (extent == Extent::Short)
        planShort();
    else
        planEverything();
}

void OperatorTour::start() {
    QDir().mkpath(folder_);
    largeWindow();
    timer_.start();
}

void OperatorTour::largeWindow() {
    const QRect screen = window_.window()->screen()->availableGeometry();
    window_.window()->setGeometry(screen.adjusted(8, 8, -8, -8));
}

void OperatorTour::planShort() {
    signIn();
    layout(3, 3, QStringLiteral("live-9"));
    pause(6000); // until the texts over the pictures have gone
    picture(QStringLiteral("live-9-later"));
    layout(1, 1, QStringLiteral("live-1"));
    record(1);
    endRecording();
    steps_.push_back({QStringLiteral("the recording"),
                      [this] {
                          const QString copy = folder_ + QStringLiteral("/recording.avi");
                          QFile::remove(copy);
                          QFile::copy(recorded_.value(0).files.value(0), copy);
                      },
                      [this] {
                          return QFile::exists(folder_ + QStringLiteral("/recording.avi"));
                      }});
}

void OperatorTour::record(int devices) {
    steps_.push_back({QStringLiteral("recordings"),
                      [this, devices] {
                          for (const QString& id : window_.devices().ipncIds().mid(0, devices))
                              window_.recorder().start(id);
                      },
                      [this] {
                          const QStringList ids = window_.recorder().wanted();
                          return std::all_of(ids.begin(), ids.end(), [this](const QString& id) {
                              constexpr int longEnough = 6; // seconds
                              const auto since = window_.recorder().since(id);
                              return since && since->secsTo(QDateTime::currentDateTime()) >= longEnough;
                          });
                      }});
}

void OperatorTour::endRecording() {
    steps_.push_back(
        {QStringLiteral("recordings end"),
         [this] {
             for (const QString& id : window_.recorder().wanted()) {
                 recorded_.append({window_.devices().device(id)->displayName(), id, {window_.recorder().file(id)}});
                 window_.recorder().stop(id);
             }
         },
         [this] {
             return std::all_of(recorded_.begin(), recorded_.end(), [this](const auto& camera) {
                 return window_.recorder().file(camera.ipncId).isEmpty();
             });
         }});
}

void OperatorTour::planEverything() {
    planWindow();
    signIn();
    picture(QStringLiteral("signed-in"));
    layout(1, 1, QStringLiteral("layout-1"));
    layout(2, 2, QStringLiteral("layout-4"));
    layout(3, 3, QStringLiteral("layout-9"));
    planFiles(QString()); // while there are pictures to store
    planViewer();
    record(4);
    picture(QStringLiteral("recording"));
    planMenus();
    planTreeMenus();
    endRecording();
    planPolling();
    planSettings();
    planLogs(QString());
    planExport();
    planPlayback();
    layout(4, 4, QStringLiteral("layout-16"));
    layout(3, 6, QStringLiteral("layout-18"));
    layout(5, 5, QStringLiteral("layout-25"));
    layout(6, 6, QStringLiteral("layout-36"));
    layout(8, 8, QStringLiteral("layout-64"));
    steps_.push_back({QStringLiteral("smallest window"),
                      [this] { window_.window()->resize(window_.window()->minimumSizeHint()); },
                      [this] {
                          return window_.width() <= MonitorMainUI::SmallestWidth + 8;
                      }});
    pause(500);
    picture(QStringLiteral("smallest-64"));
    layout(3, 3, QStringLiteral("smallest-9"));
    for (const QString& page : settingsPages())
        settingsPage(QStringLiteral("smallest-settings-") + page, page);
    planLogs(QStringLiteral("smallest-"));
    planFiles(QStringLiteral("smallest-"));
    tip();
}

void OperatorTour::planWindow() {
    steps_.push_back({QStringLiteral("the window"), [] {},
                      [this] {
                          return window_.isVisible();
                      }});
    pause(300);
    picture(QStringLiteral("start"));
}

void OperatorTour::signIn() {
    // The dialog's own event loop runs inside the click, so it is left for the loop to come to.
    steps_.push_back({QStringLiteral("the sign-in dialog"),
                      [this] { QTimer::singleShot(0, &window_, [this] { click(&window_, "accountButton"); }); },
                      [] {
                          return openDialog() != nullptr;
                      }});
    pause(300);
    picture(QStringLiteral("sign-in"));
    steps_.push_back({QStringLiteral("signing in"), [] { click(openDialog(), "signIn"); },
                      [this] {
                          return openDialog() == nullptr && !window_.devicePanel().tree().isEmpty();
                      }});
}

void OperatorTour::layout(int rows, int columns, const QString& name) {
    steps_.push_back({QStringLiteral("%1 x %2 live pictures").arg(rows).arg(columns),
                      [this, rows, columns] {
                          window_.grid().setLayout(rows, columns, false);
                          openShown();
                      },
                      [this] { return onlineDevices().size() == runningStreams(); }, 120000});
    pause(800);
    picture(name);
}

void OperatorTour::menu(const QString& name, std::function<void()> open) {
    steps_.push_back({name, [this, open = std::move(open)] { QTimer::singleShot(0, &window_, open); },
                      [] {
                          return QApplication::activePopupWidget() != nullptr;
                      }});
    pause(200);
    picture(name);
    steps_.push_back({QStringLiteral("no menu"), [] { QApplication::activePopupWidget()->close(); },
                      [] {
                          return QApplication::activePopupWidget() == nullptr;
                      }});
}

void OperatorTour::dialog(const QString& name, std::function<void()> open, std::function<void()> close) {
    steps_.push_back({name, [this, open = std::move(open)] { QTimer::singleShot(0, &window_, open); },
                      [] {
                          return openDialog() != nullptr;
                      }});
    pause(300);
    picture(name);
    steps_.push_back({QStringLiteral("no dialog"), std::move(close), [] {
                          return openDialog() == nullptr;
                      }});
}

void OperatorTour::planMenus() {
    menu(QStringLiteral("menu-layout"), [this] { window_.grid().onMenu(); });
    menu(QStringLiteral("menu-tile"), [this] {
        ItemVideo* const tile = window_.grid().tile(4);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint());
        QCoreApplication::sendEvent(tile, &event);
    });
}

void OperatorTour::planTreeMenus() {
    DeviceTree& tree = window_.devicePanel().tree();
    const auto open = [&tree](const QModelIndex& index) {
        tree.setCurrentIndex(index);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint());
        QCoreApplication::sendEvent(tree.viewport(), &event);
    };
    menu(QStringLiteral("menu-group"), [&tree, open] { open(tree.model()->index(0, 0)); });
    menu(QStringLiteral("menu-device"),
         [&tree, open] { open(tree.model()->index(1, 0, tree.model()->index(0, 0))); });
}

void OperatorTour::planSettings() {
    dialog(
        QStringLiteral("help"), [this] { click(&window_, "helpButton"); }, [] { openDialog()->reject(); });
    for (const QString& page : settingsPages())
        settingsPage(QStringLiteral("settings-") + page, page);
}

void OperatorTour::planPlayback() {
    steps_.push_back({QStringLiteral("the playback page"), [this] { click(&window_, "playbackModule"); },
                      [this] {
                          return window_.playback().isVisible();
                      }});
    pause(300);
    picture(QStringLiteral("playback-empty"));
    steps_.push_back({QStringLiteral("four recordings"), [this] { window_.showPlayback(recorded_); },
                      [this] {
                          return window_.playback().session() != nullptr;
                      }});
    pause(1500); // until the files have been looked through
    steps_.push_back({QStringLiteral("they play"), [this] { window_.playback().session()->play(); },
                      [this] {
                          return window_.playback().session()->isPlaying();
                      }});
    pause(3000);
    picture(QStringLiteral("playback-4"));
    steps_.push_back({QStringLiteral("nothing to play"), [this] { window_.playback().close(); },
                      [this] {
                          return window_.playback().session() == nullptr;
                      }});
    steps_.push_back({QStringLiteral("the wall again"), [this] { click(&window_, "videoModule"); },
                      [this] {
                          return window_.grid().isVisible();
                      }});
}

void OperatorTour::settingsPage(const QString& name, const QString& page) {
    const auto open = [this, page] {
        QTimer::singleShot(0, &window_, [page] {
            if (auto* const settings = qobject_cast<SettingsDialog*>(openDialog()))
                settings->showPage(page);
        });
        click(&window_, "settingsButton");
    };
    dialog(name, open, [] { openDialog()->reject(); });
}

void OperatorTour::planLogs(const QString& pictures) {
    steps_.push_back({QStringLiteral("the log of sign-ins"),
                      [this] {
                          click(&window_, "logModule");
                          window_.findChild<QTabBar*>(QStringLiteral("logTabs"))->setCurrentIndex(SqlHelp::LoginLog);
                      },
                      [this] {
                          const auto* const page = window_.findChild<Check_Log_Widget*>();
                          return !page->isSearching() && page->table().pager().rowCount() > 0;
                      }});
    pause(200);
    picture(pictures + QStringLiteral("logs"));
    steps_.push_back({QStringLiteral("the videos again"), [this] { click(&window_, "videoModule"); },
                      [this] {
                          return window_.grid().isVisible();
                      }});
}

void OperatorTour::planExport() {
    steps_.push_back({QStringLiteral("the log page again"), [this] { click(&window_, "logModule"); },
                      [this] {
                          return window_.findChild<Check_Log_Widget*>()->isVisible();
                      }});
    menu(QStringLiteral("menu-logs"), [this] { click(&window_, "logMenu"); });
    dialog(
        QStringLiteral("logs-export"), [this] { click(&window_, "exportButton"); }, [] { openDialog()->reject(); });
    steps_.push_back({QStringLiteral("the videos once more"), [this] { click(&window_, "videoModule"); },
                      [this] {
                          return window_.grid().isVisible();
                      }});
}

void OperatorTour::planFiles(const QString& pictures) {
    const auto page = [this] {
        return window_.findChild<StoredFilesPage*>();
    };
    const auto showView = [page](int view) {
        page()->findChild<QTabBar*>(QStringLiteral("fileTabs"))->setCurrentIndex(view);
    };
    steps_.push_back({QStringLiteral("the stored files"),
                      [this, page, showView] {
                          storePictures();
                          click(&window_, "filesModule");
                          page()->search();
                          showView(0);
                      },
                      [page] {
                          return !page()->isSearching();
                      }});
    pause(200);
    picture(pictures + QStringLiteral("files"));
    steps_.push_back({QStringLiteral("their timeline"), [showView] { showView(1); },
                      [page] {
                          return page()->timeline().isVisible();
                      }});
    pause(500); // the small pictures come
    picture(pictures + QStringLiteral("files-timeline"));
    steps_.push_back({QStringLiteral("the videos after the files"), [this] { click(&window_, "videoModule"); },
                      [this] {
                          return window_.grid().isVisible();
                      }});
}

void OperatorTour::planViewer() {
    steps_.push_back({QStringLiteral("the stored files again"),
                      [this] {
                          click(&window_, "filesModule");
                          auto* const page = window_.findChild<StoredFilesPage*>();
                          page->findChild<QTabBar*>(QStringLiteral("fileTabs"))->setCurrentIndex(0);
                          page->table().selectRow(0);
                      },
                      [this] {
                          return window_.findChild<StoredFilesPage*>()->isVisible();
                      }});
    dialog(
        QStringLiteral("files-picture"), [this] { click(&window_, "fileOpen"); }, [] { openDialog()->reject(); });
    dialog(
        QStringLiteral("files-delete"), [this] { click(&window_, "fileDelete"); }, [] { openDialog()->reject(); });
    steps_.push_back({QStringLiteral("the videos after the viewer"), [this] { click(&window_, "videoModule"); },
                      [this] {
                          return window_.grid().isVisible();
                      }});
}

void OperatorTour::storePictures() const {
    // What a user's snapshots of the last hour would leave; only in folders of the tour's own, never on the disks.
    if (window_.context().settings.get(corvanta::keys::DriveFolders).toStringList().isEmpty())
        return;
    QScreen* const screen = window_.window()->windowHandle()->screen();
    QDateTime time = QDateTime::currentDateTime().addSecs(-1);
    for (const QString& device : onlineDevices().mid(0, 6)) {
        const QString folder = window_.storage().folderFor(corvanta::dataTree::Capture, device);
        if (folder.isEmpty() || !QDir().mkpath(folder))
            continue;
        const ItemVideo& tile = *window_.grid().tile(window_.devices().device(device)->tileIndex);
        const QRect place(tile.mapToGlobal(QPoint()), tile.size());
        const QPixmap shown = screen->grabWindow(0, place.x(), place.y(), place.width(), place.height());
        for (int number = 0; number < 8; ++number) {
            const QDateTime taken = time.addSecs(-420LL * number);
            if (taken.date() == time.date())
                shown.save(folder + taken.toString(corvanta::dataTree::FileTimeFormat) + QStringLiteral(".jpg"),
                           "JPG");
        }
        time = time.addSecs(-97);
    }
}

void OperatorTour::planPolling() {
    const auto set = [this](ScreenPoll::Mode mode) {
        return [this, mode] {
            ScreenPoll& poll = window_.context().poll;
            poll.setEntries({{tr("巡视"), onlineDevices(), {}}});
            poll.setPollValue(mode);
        };
    };
    steps_.push_back({QStringLiteral("preview pictures"),
                      [this, set] {
                          window_.grid().setLayout(3, 3, false);
                          set(ScreenPoll::Mode::Previews)();
                      },
                      [this] {
                          int shown = 0;
                          for (int index = 0; index < 9; ++index)
                              shown += window_.grid().tile(index)->hasPreview() ? 1 : 0;
                          return shown == onlineDevices().size();
                      }});
    pause(200);
    picture(QStringLiteral("poll-previews"));
    dialog(
        QStringLiteral("poll-question"), [this] { click(&window_, "stopAll"); }, [] { openDialog()->accept(); });
}

void OperatorTour::tip() {
    dialog(
        QStringLiteral("close-question"), [this] { window_.window()->close(); }, [] { openDialog()->reject(); });
}

void OperatorTour::picture(const QString& name) {
    steps_.push_back({QStringLiteral("picture ") + name, [] {},
                      [this, name] {
                          return shoot(name);
                      }});
}

void OperatorTour::pause(int milliseconds) {
    // For what has no end to wait for: windows being drawn, a clock going on.
    steps_.push_back({QStringLiteral("a moment"), [] {},
                      [this, milliseconds] {
                          return sinceBegin_.elapsed() >= milliseconds;
                      }});
}

void OperatorTour::tick() {
    if (current_ >= steps_.size()) {
        finish(0);
        return;
    }
    Step& step = steps_[current_];
    if (!begun_) {
        begun_ = true;
        sinceBegin_.start();
        step.begin();
    }
    if (step.done()) {
        ++current_;
        begun_ = false;
    } else if (sinceBegin_.elapsed() > step.limit) {
        qWarning().noquote() << "tour: waited in vain for" << step.name;
        shoot(QStringLiteral("failed"));
        finish(1);
    }
}

void OperatorTour::finish(int code) {
    timer_.stop();
    while (QDialog* const dialog = openDialog())
        dialog->reject();
    window_.live().stopAll();
    QCoreApplication::exit(code);
}

bool OperatorTour::shoot(const QString& name) {
    const QWidget* const frame = window_.window();
    QScreen* const screen = frame->windowHandle()->screen();
    QRect place = frame->frameGeometry();
    for (const QWidget* over : {QApplication::activeModalWidget(), QApplication::activePopupWidget()}) {
        if (over != nullptr)
            place |= over->frameGeometry();
    }
    place &= screen->geometry();
    const QPixmap picture = screen->grabWindow(0, place.x(), place.y(), place.width(), place.height());
    const QString file = QDir(folder_).filePath(name + QStringLiteral(".png"));
    if (!picture.isNull() && picture.save(file))
        return true;
    qWarning() << "tour: no picture" << file;
    return false;
}

int OperatorTour::runningStreams() const {
    int running = 0;
    for (int index = 0; index < window_.grid().grid().poolSize(); ++index) {
        const ItemVideo& tile = *window_.grid().tile(index);
        running += tile.isVisible() && tile.requestId() > 0 && tile.frameSize().width > 0 ? 1 : 0;
    }
    return running;
}

QStringList OperatorTour::onlineDevices() const {
    const DeviceModel& devices = window_.devices();
    QStringList result;
    for (int index = 0; index < window_.grid().grid().poolSize(); ++index) {
        const auto device = devices.deviceOfTile(index);
        if (device && window_.grid().isIndexShown(index) && devices.device(*device)->isOnline())
            result += *device;
    }
    return result;
}

void OperatorTour::openShown() const {
    for (const QString& device : onlineDevices()) {
        if (!window_.live().isOpen(device))
            window_.live().open(device);
    }
}
