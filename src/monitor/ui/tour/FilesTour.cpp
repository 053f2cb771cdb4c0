#include "monitor/ui/tour/FilesTour.h"

#include "base/DataTree.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/tour/TourScript.h"
#include "monitor/ui/tour/WallTour.h"
#include "storage/RecordingStorage.h"
#include "storage/ui/FileTableView.h"
#include "storage/ui/StoredFilesPage.h"
#include "storage/ui/TimelinePane.h"
#include "video/PreviewMessage.h"

#include <QDateTime>
#include <QDebug>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTabBar>

namespace tour = corvanta::tour;
namespace video = corvanta::video;

namespace {

constexpr int PictureWidth = 640; // px

} // namespace

FilesTour::~FilesTour() {
    gate_->close();
}

void FilesTour::page(const QString& pictures) {
    const auto page = [this] {
        return window_.findChild<StoredFilesPage*>();
    };
    const auto showView = [page](int view) {
        page()->findChild<QTabBar*>(QStringLiteral("fileTabs"))->setCurrentIndex(view);
    };
    script_.step({QStringLiteral("pictures of the last hour"), [this] { storePictures(); },
                  [this] {
                      return awaited_ == 0;
                  }});
    script_.step({QStringLiteral("the stored files"),
                  [this, page, showView] {
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

void FilesTour::storePictures() {
    // What a user's snapshots of the last hour would leave; only in folders of the tour's own, never on the disks.
    if (window_.context().settings.get(corvanta::keys::DriveFolders).toStringList().isEmpty())
        return;
    QDateTime time = QDateTime::currentDateTime().addSecs(-1);
    for (const QString& device : wall_.onlineDevices().mid(0, 6)) {
        const QString folder = window_.storage().folderFor(corvanta::dataTree::Capture, device);
        if (folder.isEmpty() || !QDir().mkpath(folder))
            continue;
        SdkGateway& gateway = window_.context().gateway;
        // On a thread of the SDK, whose memory is gone after the callback.
        const auto onMessage = [this, &gateway, folder, time](const std::string& text) {
            gateway.inGui(gate_, [this, folder, time, jpeg = video::readPreview(text).jpeg] {
                --awaited_;
                storePicture(jpeg, folder, time);
            });
        };
        if (gateway.RequestMessage(video::previewRequest(device, PictureWidth), onMessage, gate_) > 0)
            ++awaited_;
        time = time.addSecs(-97);
    }
}

void FilesTour::storePicture(const std::string& jpeg, const QString& folder, const QDateTime& time) {
    if (jpeg.empty())
        return;
    for (int number = 0; number < 8; ++number) {
        const QDateTime taken = time.addSecs(-420LL * number);
        if (taken.date() != time.date())
            break;
        QFile file(folder + taken.toString(corvanta::dataTree::FileTimeFormat) + QStringLiteral(".jpg"));
        if (!file.open(QIODevice::WriteOnly) || file.write(jpeg.data(), static_cast<qint64>(jpeg.size())) < 0)
            qDebug() << "no picture stored" << file.fileName() << file.errorString();
    }
}
