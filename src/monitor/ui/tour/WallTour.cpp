#include "monitor/ui/tour/WallTour.h"

#include "base/DeviceModel.h"
#include "base/ScreenPoll.h"
#include "monitor/ui/DevicePanel.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"
#include "recording/Recorder.h"
#include "video/ui/ItemVideo.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QDialog>

#include <chrono>

namespace tour = corvanta::tour;

void WallTour::layout(int rows, int columns, const QString& name) {
    script_.step({QStringLiteral("%1 x %2 live pictures").arg(rows).arg(columns),
                  [this, rows, columns] {
                      window_.grid().setLayout(rows, columns, false);
                      openShown();
                  },
                  [this] { return onlineDevices().size() == runningStreams(); }, 120000});
    script_.pause(800);
    script_.picture(name);
}

void WallTour::menus() {
    script_.menu(QStringLiteral("menu-layout"), [this] { window_.grid().onMenu(); });
    script_.menu(QStringLiteral("menu-tile"), [this] {
        ItemVideo* const tile = window_.grid().tile(4);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint());
        QCoreApplication::sendEvent(tile, &event);
    });
}

void WallTour::treeMenus() {
    DeviceTree& tree = window_.devicePanel().tree();
    const auto open = [&tree](const QModelIndex& index) {
        tree.setCurrentIndex(index);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint());
        QCoreApplication::sendEvent(tree.viewport(), &event);
    };
    script_.menu(QStringLiteral("menu-group"), [&tree, open] { open(tree.model()->index(0, 0)); });
    script_.menu(QStringLiteral("menu-device"),
                 [&tree, open] { open(tree.model()->index(1, 0, tree.model()->index(0, 0))); });
}

void WallTour::polling() {
    const auto set = [this](ScreenPoll::Mode mode) {
        return [this, mode] {
            ScreenPoll& poll = window_.context().poll;
            poll.setEntries({{QStringLiteral("巡视"), onlineDevices(), {}}});
            poll.setPollValue(mode);
        };
    };
    script_.step({QStringLiteral("preview pictures"),
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
    script_.pause(200);
    script_.picture(QStringLiteral("poll-previews"));
    script_.dialog(
        QStringLiteral("poll-question"), [this] { tour::click(&window_, "stopAll"); },
        [] { tour::openDialog()->accept(); });
}

void WallTour::record(int devices) {
    script_.step({QStringLiteral("recordings"),
                  [this, devices] {
                      for (const QString& id : window_.devices().ipncIds().mid(0, devices))
                          window_.recorder().start(id);
                  },
                  [this] {
                      const QStringList ids = window_.recorder().wanted();
                      return std::all_of(ids.begin(), ids.end(), [this](const QString& id) {
                          constexpr std::chrono::seconds longEnough{6};
                          const auto lasting = window_.recorder().lasting(id);
                          return lasting && *lasting >= longEnough;
                      });
                  }});
}

void WallTour::endRecording() {
    script_.step(
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

QStringList WallTour::onlineDevices() const {
    const DeviceModel& devices = window_.devices();
    QStringList result;
    for (int index = 0; index < window_.grid().grid().poolSize(); ++index) {
        const auto device = devices.deviceOfTile(index);
        if (device && window_.grid().isIndexShown(index) && devices.device(*device)->isOnline())
            result += *device;
    }
    return result;
}

int WallTour::runningStreams() const {
    int running = 0;
    for (int index = 0; index < window_.grid().grid().poolSize(); ++index) {
        const ItemVideo& tile = *window_.grid().tile(index);
        running += tile.isVisible() && tile.requestId() > 0 && tile.frameSize().width > 0 ? 1 : 0;
    }
    return running;
}

void WallTour::openShown() const {
    for (const QString& device : onlineDevices()) {
        if (!window_.live().isOpen(device))
            window_.live().open(device);
    }
}
