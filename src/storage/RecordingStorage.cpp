#include "storage/RecordingStorage.h"

#include "base/DataTree.h"
#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "storage/RoomMaker.h"
#include "storage/Rotation.h"

#include <QDebug>

namespace keys = corvanta::keys;
namespace storage = corvanta::storage;

namespace {

QStringList drivesOf(const SdkThreadSettings& settings, const QStringList& except = {}) {
    QStringList result;
    for (const std::string& drive : settings.drives) {
        if (const QString root = QString::fromStdString(drive); !except.contains(root))
            result += root;
    }
    return result;
}

} // namespace

RecordingStorage::RecordingStorage(Settings& settings, TaskQueue& queue, std::unique_ptr<DiskProbe> disks)
    : settings_(settings)
    , queue_(queue)
    , disks_(std::move(disks))
    , room_(std::make_unique<RoomMaker>(queue, *disks_)) {
    connect(room_.get(), &RoomMaker::sigSought, this, &RecordingStorage::sigRoomSought);
}

RecordingStorage::~RecordingStorage() = default;

void RecordingStorage::prepareDrives() {
    const auto rebuilt = storage::rebuiltDrives(settings_.get(keys::Drives).toStringList(), *disks_);
    if (!rebuilt)
        return;
    settings_.set(keys::Drives, *rebuilt);
    settings_.save();
}

int RecordingStorage::threshold() const {
    const int stored = settings_.forSdkThreads().driveThreshold;
    const int clamped = storage::clampedThreshold(stored);
    if (clamped != stored) {
        // What is stored belongs to the GUI thread; whoever asks meanwhile finds the same.
        queue_.post([this, clamped] {
            settings_.set(keys::DriveThreshold, clamped);
            settings_.save();
        });
    }
    return clamped;
}

QString RecordingStorage::chooseDrive(const QStringList& except) const {
    const QStringList drives = drivesOf(settings_.forSdkThreads(), except);
    QString drive = storage::chooseDrive(drives, threshold(), *disks_);
    if (!drive.isEmpty())
        room_->found();
    return drive;
}

void RecordingStorage::seekRoom(const QStringList& except) const {
    // On a drive that takes nothing, a deletion would make room for nobody.
    room_->seek(drivesOf(settings_.forSdkThreads(), except), threshold());
}

bool RecordingStorage::mayFindRoom() const {
    return room_->mayFind();
}

QString RecordingStorage::folderFor(const QString& kind, const QString& ipncid, const QString& day) const {
    return folderOn(
        [this] {
            const QString drive = chooseDrive();
            const bool made = drive.isEmpty() && room_->makeNow(drivesOf(settings_.forSdkThreads()), threshold());
            return made ? chooseDrive() : drive;
        },
        kind, ipncid, day);
}

QString RecordingStorage::folderAtOnce(const QString& kind, const QString& ipncid, const QString& day,
                                       const QStringList& except) const {
    return folderOn(
        [this, &except] {
            QString drive = chooseDrive(except);
            if (!drive.isEmpty())
                return drive;
            seekRoom(except);
            return mayFindRoom() ? storage::roomiestDrive(drivesOf(settings_.forSdkThreads(), except), *disks_)
                                 : QString();
        },
        kind, ipncid, day);
}

/// The folder on the drive that `drive` yields, which is asked only where there can be a folder.
QString RecordingStorage::folderOn(const std::function<QString()>& drive, const QString& kind, const QString& ipncid,
                                   const QString& day) const {
    // What can be no path is no reason to delete anything.
    if (!corvanta::dataTree::folder(QString(), kind, ipncid, day)) {
        qDebug() << "no folder for files of" << ipncid << kind << day;
        return {};
    }
    const QString root = drive();
    if (root.isEmpty())
        return {};
    return *corvanta::dataTree::folder(root, kind, ipncid,
                                       day.isEmpty() ? disks_->today().toString(corvanta::dataTree::DayFormat) : day);
}

QStringList RecordingStorage::searchedDrives() const {
    QStringList result = disks_->drives();
    for (const QString& drive : settings_.get(keys::Drives).toStringList()) {
        if (!result.contains(drive))
            result += drive;
    }
    return result;
}

int RecordingStorage::shownThreshold() const {
    return storage::clampedThreshold(settings_.forSdkThreads().driveThreshold);
}
