#include "storage/DiskProbe.h"

#include "platform/Disks.h"

#include <QDir>

namespace {

std::filesystem::path systemPath(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

} // namespace

SystemDisks::SystemDisks(const QStringList& folders) {
    for (const QString& folder : folders) {
        if (folder.isEmpty() || !QDir::isAbsolutePath(folder))
            continue;
        QString root = QDir::cleanPath(folder);
        QDir().mkpath(root);
        if (!root.endsWith(QLatin1Char('/')))
            root += QLatin1Char('/');
        if (!folders_.contains(root))
            folders_ += root;
    }
    for (const QString& drive : drives()) {
        if (corvanta::platform::isMountPoint(systemPath(drive)))
            mounted_ += drive;
    }
}

bool SystemDisks::isThere(const QString& drive) const {
    return !mounted_.contains(drive) || corvanta::platform::isMountPoint(systemPath(drive));
}

QStringList SystemDisks::drives() const {
    QStringList result;
    if (!folders_.isEmpty()) {
        for (const QString& folder : folders_) {
            if (QDir(folder).exists())
                result += folder;
        }
        return result;
    }
    for (const std::string& root : corvanta::platform::driveRoots())
        result += QString::fromStdString(root);
    return result;
}

QString SystemDisks::systemDrive() const {
    // Folders that someone named are meant, all of them.
    return folders_.isEmpty() ? QString::fromStdString(corvanta::platform::systemDrive()) : QString();
}

std::optional<std::uint64_t> SystemDisks::freeBytes(const QString& drive) const {
    const auto space = corvanta::platform::diskSpace(systemPath(drive));
    return space && space->isWritable && isThere(drive) ? std::optional(space->free) : std::nullopt;
}

std::optional<std::uint64_t> SystemDisks::totalBytes(const QString& drive) const {
    const auto space = corvanta::platform::diskSpace(systemPath(drive));
    return space && isThere(drive) ? std::optional(space->total) : std::nullopt;
}
