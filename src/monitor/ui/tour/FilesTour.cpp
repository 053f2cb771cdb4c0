#include "monitor/ui/tour/FilesTour.h"

#include "base/DataTree.h"
#include "base/DeviceModel.h"
#include "base/Settings.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"
#include "monitor/ui/tour/WallTour.h"
#include "storage/RecordingStorage.h"
#include "storage/ui/FileTableView.h"
#include "storage/ui/StoredFilesPage.h"
#include "storage/ui/TimelinePane.h"
#include "video/ui/ItemVideo.h"

#include <QDateTime>
#include <QDialog>
#include <QDir>
#include <QPixmap>
#include <QScreen>
#include <QTabBar>
#include <QWindow>

namespace tour = corvanta::tour;

void FilesTour::page(const QString& pictures) {
    const auto page = [this] {
        return window_.findChild<StoredFilesPage*>();
    };
    const auto showView = [page](int view) {
        page()->findChild<QTabBar*>(QStringLiteral("fileTabs"))->setCurrentIndex(view);
    };
    script_.step({QStringLiteral("the stored files"),
                  [this, page, showView] {
                      storePictures();
                      tour::click(&window_, "filesModule");
                      page()->search();
                      showView(0);
                  },
                  [page] {
                      return !page()->isSearching();
                  }});
    script_.pause(200);
    script_.picture(pictures + QStringLiteral("files"));
    script_.step({QStringLiteral("their timeline"), [showView] { showView(1); },
                  [page] {
                      return page()->timeline().isVisible();
                  }});
    script_.pause(500); // the small pictures come
    script_.picture(pictures + QStringLiteral("files-timeline"));
    script_.step({QStringLiteral("the videos after the files"), [this] { tour::click(&window_, "videoModule"); },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}

void FilesTour::viewer() {
    script_.step({QStringLiteral("the stored files again"),
                  [this] {
                      tour::click(&window_, "filesModule");
                      auto* const page = window_.findChild<StoredFilesPage*>();
                      page->findChild<QTabBar*>(QStringLiteral("fileTabs"))->setCurrentIndex(0);
                      page->table().selectRow(0);
                  },
                  [this] {
                      return window_.findChild<StoredFilesPage*>()->isVisible();
                  }});
    script_.dialog(
        QStringLiteral("files-picture"), [this] { tour::click(&window_, "fileOpen"); },
        [] { tour::openDialog()->reject(); });
    script_.dialog(
        QStringLiteral("files-delete"), [this] { tour::click(&window_, "fileDelete"); },
        [] { tour::openDialog()->reject(); });
    script_.step({QStringLiteral("the videos after the viewer"), [this] { tour::click(&window_, "videoModule"); },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}

void FilesTour::storePictures() const {
    // What a user's snapshots of the last hour would leave; only in folders of the tour's own, never on the disks.
    if (window_.context().settings.get(corvanta::keys::DriveFolders).toStringList().isEmpty())
        return;
    QScreen* const screen = window_.window()->windowHandle()->screen();
    QDateTime time = QDateTime::currentDateTime().addSecs(-1);
    for (const QString& device : wall_.onlineDevices().mid(0, 6)) {
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
