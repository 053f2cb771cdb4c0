#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QStringList>
#include <QVariantMap>
#include <QVector>

#include <atomic>
#include <optional>
#include <vector>

namespace corvanta::storage {

/// A stored file of a device, as the pages that browse files show it.
struct FileRecord {
    QString name;
    QString path;
    qint64 size = 0; ///< bytes
    QString kind;    ///< name of the folder of its kind
    QString ipncid;
    QDateTime time; ///< local, from the file's name

    /// "name", "path", "size", "type", "ipncid", "date" (yyyy-MM-dd), "time" (hh:mm:ss).
    QVariantMap toMap() const;
    bool isPicture() const;
};

/// What is looked for.
struct FileQuery {
    QDateTime start; ///< both ends belong to the range
    QDateTime end;
    QStringList kinds;   ///< empty: all that have days
    QStringList devices; ///< ids; empty: all

    /// Ends as the pages write them, "yyyy-MM-dd hh:mm:ss"; nothing when they are no times.
    static std::optional<FileQuery> fromTexts(const QString& start, const QString& end);
};

/// How far a search is; read and set by any thread.
struct SearchProgress {
    std::atomic<int> foldersDone{0};
    std::atomic<int> folders{0}; ///< known when the first file is read
    std::atomic<int> found{0};
    std::atomic<bool> cancelled{false};
};

/// The time that a file's name begins with, "yyyyMMddhhmmss"; nothing when it does not.
std::optional<QDateTime> timeFromName(const QString& name);

/// The ids that have a folder on one of the drives, sorted. Any thread.
QStringList storedDevices(const QStringList& drives);

/// The videos and pictures of a query on the drives, by drive, device, kind and day. Folders that go away meanwhile
/// are passed over. Any thread; ends early, with what it has, when it is cancelled.
std::vector<FileRecord> searchFiles(const QStringList& drives, const FileQuery& query, SearchProgress& progress);

} // namespace corvanta::storage

Q_DECLARE_METATYPE(QVector<corvanta::storage::FileRecord>)
