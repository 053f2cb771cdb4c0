#pragma once

#include "storage/DiskProbe.h"

#include <QObject>

#include <functional>
#include <memory>

class RoomMaker;
class Settings;
class TaskQueue;

/// Where the files of devices are kept: the drives of the settings, and the folder for a new file on one of them.
///
/// Where no drive has room, the oldest days are deleted: by whoever asks for a folder, or in the background for
/// recordings, which must not wait.
///
/// Lives in the GUI thread. Folders may be asked for by any thread: the settings are read as SDK threads do, and what
/// would be stored is handed to the GUI thread.
class RecordingStorage final : public QObject {
    Q_OBJECT
public:
    /// `settings` and `queue` (which lives in the GUI thread) outlive the storage.
    RecordingStorage(Settings& settings, TaskQueue& queue, std::unique_ptr<DiskProbe> disks);
    /// Ends a deletion after the file that is being deleted.
    ~RecordingStorage() override;

    /// Once at the start: drives that are gone leave the list of the settings, which is built anew then.
    void prepareDrives();

    /// The drive for the next file; empty when none has room. Drives in `except` are passed over. Any thread.
    QString chooseDrive(const QStringList& except = {}) const;
    /// The folder for a file of a device, ending with a slash. Not made yet. While no drive has room the oldest day
    /// is deleted, on the calling thread. Empty when nothing is left to delete, or a text cannot be part of a path.
    /// An empty day means today. Any thread.
    QString folderFor(const QString& kind, const QString& ipncid, const QString& day = {}) const;
    /// The same without waiting for a deletion: where no drive has room, room is sought in the background,
    /// and the folder is on the drive with the most space, in what is kept free otherwise. Empty also when that is
    /// too little or nothing could be deleted the last time. Drives in `except` are passed over. Any thread.
    QString folderAtOnce(const QString& kind, const QString& ipncid, const QString& day,
                         const QStringList& except) const;

    /// Begins to delete the oldest days in the background, on those drives that are not in `except`, until one of
    /// them has room; nothing while that is under way. Any thread.
    void seekRoom(const QStringList& except = {}) const;
    /// False when no room could be made the last time that it was sought, and no drive has had room since. Any
    /// thread.
    bool mayFindRoom() const;

    const DiskProbe& disks() const { return *disks_; }
    /// Every drive that may hold files: those that are there, and those of the settings. GUI thread.
    QStringList searchedDrives() const;
    /// Free space, MiB, up to which a drive takes no files, as it counts now. GUI thread.
    int shownThreshold() const;

signals:
    /// The search for room came to its end: `made` when a drive has room now. GUI thread.
    void sigRoomSought(bool made);

private:
    int threshold() const;
    QString folderOn(const std::function<QString()>& drive, const QString& kind, const QString& ipncid,
                     const QString& day) const;

    Settings& settings_;
    TaskQueue& queue_;
    std::unique_ptr<DiskProbe> disks_;
    std::unique_ptr<RoomMaker> room_; ///< uses the disks
};
