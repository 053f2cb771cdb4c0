#include "storage/Rotation.h"

#include "base/DataTree.h"
#include "platform/RawFile.h"
#include "storage/DiskProbe.h"

#include <QDate>
#include <QDebug>
#include <QDir>
#include <QDirIterator>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace corvanta::storage {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t Mebibyte = 1048576;

struct DayFolder {
    QString name; ///< "yyyy-MM-dd", so the order of names is that of days
    QString path;
};

/// Whether a drive is the one that the system lives on. Drives with letters are told apart by those.
bool isSystemDrive(const QString& drive, const QString& system) {
    const bool hasLetter = drive.size() > 1 && drive.at(1) == QLatin1Char(':');
    return hasLetter ? !system.isEmpty() && drive.at(0).toUpper() == system.at(0).toUpper() : drive == system;
}

/// The folders in a folder, without links.
QFileInfoList foldersIn(const QString& path) {
    return QDir(path).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks | QDir::Hidden, QDir::Name);
}

bool isDay(const QString& name) {
    return QDate::fromString(name, dataTree::DayFormat).isValid();
}

std::vector<DayFolder> dayFolders(const QStringList& drives) {
    std::vector<DayFolder> result;
    for (const QString& drive : drives) {
        const QFileInfo root(drive + QStringLiteral("ZEL"));
        if (root.isSymLink())
            continue;
        for (const QFileInfo& device : foldersIn(root.filePath())) {
            for (const QFileInfo& kind : foldersIn(device.filePath())) {
                if (!dataTree::kindsByDay().contains(kind.fileName()))
                    continue;
                for (const QFileInfo& day : foldersIn(kind.filePath())) {
                    if (isDay(day.fileName()))
                        result.push_back({day.fileName(), day.filePath()});
                }
            }
        }
    }
    return result;
}

bool isBeingWritten(const QString& folder) {
    QDirIterator files(folder, {QStringLiteral("*.avi")}, QDir::Files | QDir::NoSymLinks);
    while (files.hasNext()) {
        if (platform::RawFile::isBeingWritten(fs::path(files.next().toStdU16String())))
            return true;
    }
    return false;
}

/// Deletes a folder and what is in it, links as such. False when some of it is left.
bool deleteFolder(const fs::path& folder, const std::function<bool()>& cancelled) {
    std::error_code error;
    bool isWhole = true;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        if (cancelled && cancelled())
            return false;
        std::error_code entryError;
        const bool isFolder = it->symlink_status(entryError).type() == fs::file_type::directory;
        const bool deleted = isFolder ? deleteFolder(it->path(), cancelled) : fs::remove(it->path(), entryError);
        isWhole = isWhole && deleted;
    }
    return !error && isWhole && fs::remove(folder, error);
}

} // namespace

int clampedThreshold(int mebibytes) {
    return std::clamp(mebibytes, SmallestThreshold, LargestThreshold);
}

std::optional<QStringList> rebuiltDrives(const QStringList& stored, const DiskProbe& disks) {
    const QStringList present = disks.drives();
    const bool allThere = std::all_of(stored.begin(), stored.end(),
                                      [&present](const QString& drive) { return present.contains(drive); });
    if (!stored.isEmpty() && allThere)
        return std::nullopt;
    if (present.size() <= 1)
        return present;
    const QString system = disks.systemDrive();
    qDebug() << "sysDriver" << system;
    QStringList result;
    for (const QString& drive : present) {
        if (!isSystemDrive(drive, system))
            result += drive;
    }
    return result;
}

QString chooseDrive(const QStringList& drives, int threshold, const DiskProbe& disks) {
    for (const QString& drive : drives) {
        const auto free = disks.freeBytes(drive);
        if (!free)
            qDebug() << "ERROR: Call to GetDiskFreeSpaceEx() failed.";
        else if (*free > static_cast<std::uint64_t>(threshold) * Mebibyte)
            return drive;
    }
    return {};
}

QString roomiestDrive(const QStringList& drives, const DiskProbe& disks) {
    QString result;
    std::uint64_t most = SmallestRest;
    for (const QString& drive : drives) {
        const std::uint64_t free = disks.freeBytes(drive).value_or(0);
        if (free > most) {
            most = free;
            result = drive;
        }
    }
    return result;
}

bool deleteOldestDay(const QStringList& drives, const DiskProbe& disks, const std::function<bool()>& cancelled) {
    const QString today = disks.today().toString(dataTree::DayFormat);
    std::vector<DayFolder> days = dayFolders(drives);
    std::stable_sort(days.begin(), days.end(),
                     [](const DayFolder& one, const DayFolder& other) { return one.name < other.name; });
    for (const DayFolder& day : days) {
        if (day.name == today || isBeingWritten(day.path))
            continue;
        qDebug() << "FindOldestFolder name:" << day.name << ",path:" << day.path << "today:" << today;
        if (deleteFolder(fs::path(day.path.toStdU16String()), cancelled))
            return true;
        if (cancelled && cancelled())
            return false;
        qDebug() << "could not be deleted" << day.path;
    }
    qDebug() << "Not Find Oldest File!!!";
    return false;
}

} // namespace corvanta::storage
