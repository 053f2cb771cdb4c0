#pragma once

#include "storage/DiskProbe.h"

#include <QObject>

#include <memory>

class Settings;
class TaskQueue;

/// Where the files of devices are kept: the drives of the settings, and the folder for a new file on one of them.
///
/// Lives in the GUI thread. `folderFor` may be asked by any thread: it reads the settings as SDK threads do, and what
/// it would store is handed to the GUI thread.
class RecordingStorage final : public QObject {
    Q_OBJECT
public:
    /// `settings` and `queue` (which lives in the GUI thread) outlive the storage.
    RecordingStorage(Settings& settings, TaskQueue& queue, std::unique_ptr<DiskProbe> disks);

    /// Once at the start: drives that are gone leave the list of the settings, which is built anew then.
    void prepareDrives();

    /// The drive for the next file; empty when none has room. Drives in `except` are passed over. Any thread.
    QString chooseDrive(const QStringList& except = {}) const;
    /// The folder for a file of a device, ending with a slash; makes room by deleting the oldest days where it must.
    /// Not made yet. Empty when no room can be made, or a text cannot be part of a path. An empty day means today.
    /// Any thread.
    QString folderFor(const QString& kind, const QString& ipncid, const QString& day = {},
                      const QStringList& except = {}) const;

    const DiskProbe& disks() const { return *disks_; }
    /// Every drive that may hold files: those that are there, and those of the settings. GUI thread.
    QStringList searchedDrives() const;
    /// Free space, MiB, up to which a drive takes no files, as it counts now. GUI thread.
    int shownThreshold() const;

private:
    int threshold() const;

    Settings& settings_;
    TaskQueue& queue_;
    std::unique_ptr<DiskProbe> disks_;
};
