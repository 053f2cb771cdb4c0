#include "storage/FileDeletion.h"

#include "base/DataTree.h"
#include "platform/RawFile.h"
#include "storage/StoredFiles.h"

#include <QDate>
#include <QDebug>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace corvanta::storage {

namespace {

constexpr int Levels = 4; // id, kind, day, file

bool isComponent(const QString& name) {
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
           !name.contains(QLatin1Char('\\')) && !name.contains(QChar(u'\0'));
}

/// Whether the texts are those of a stored file: id, kind, day, name.
bool namesStoredFile(const QStringList& parts) {
    return parts.size() == Levels && std::all_of(parts.begin(), parts.end(), isComponent) &&
           dataTree::kindsByDay().contains(parts[1]) && QDate::fromString(parts[2], dataTree::DayFormat).isValid() &&
           timeFromName(parts[3]).has_value();
}

fs::file_type typeOf(const fs::path& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type();
}

/// What stands in the way below one drive: nothing (`Deleted`), or why not.
Deletion check(const QString& drive, const QStringList& parts) {
    fs::path path((drive + QStringLiteral("ZEL")).toStdU16String());
    for (int level = 0; level <= Levels; ++level) {
        const fs::file_type type = typeOf(path);
        if (type == fs::file_type::not_found)
            return Deletion::Gone;
        if (type != (level == Levels ? fs::file_type::regular : fs::file_type::directory))
            return Deletion::Refused;
        if (level < Levels)
            path /= fs::path(parts[level].toStdU16String());
    }
    return Deletion::Deleted;
}

} // namespace

Deletion deleteStoredFile(const QString& path, const QStringList& drives) {
    const auto drive = std::find_if(drives.begin(), drives.end(), [&path](const QString& root) {
        return !root.isEmpty() && path.startsWith(root + QStringLiteral("ZEL/"));
    });
    const QStringList parts =
        drive == drives.end() ? QStringList() : path.mid(drive->size() + 4).split(QLatin1Char('/'));
    if (!namesStoredFile(parts)) {
        qDebug() << "no stored file, not deleted" << path;
        return Deletion::Refused;
    }
    if (const Deletion obstacle = check(*drive, parts); obstacle != Deletion::Deleted) {
        qDebug() << "not deleted" << path << (obstacle == Deletion::Gone ? "gone" : "no plain file");
        return obstacle;
    }
    const fs::path file(path.toStdU16String());
    if (platform::RawFile::isBeingWritten(file))
        return Deletion::InUse;
    std::error_code error;
    const bool removed = fs::remove(file, error);
    qDebug() << (removed ? "stored file deleted" : "could not be deleted") << path;
    if (error)
        return Deletion::Failed;
    return removed ? Deletion::Deleted : Deletion::Gone;
}

} // namespace corvanta::storage

FileDeletion::FileDeletion(QStringList drives, QStringList paths, QObject* parent)
    : BackgroundThread(parent)
    , drives_(std::move(drives))
    , paths_(std::move(paths)) {}

FileDeletion::~FileDeletion() {
    cancel();
    join();
}

void FileDeletion::run() {
    for (const QString& path : paths_) {
        if (cancelled_)
            return;
        results_.push_back(corvanta::storage::deleteStoredFile(path, drives_));
        done_.fetch_add(1, std::memory_order_relaxed);
    }
}
