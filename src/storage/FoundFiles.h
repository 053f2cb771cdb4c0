#pragma once

#include "storage/StoredFiles.h"

#include <QDate>

#include <functional>

namespace corvanta::storage {

/// The files that a search has found, oldest first. Values that do not change: several views show them at once, and
/// know a file by its position.
class FoundFiles final {
public:
    enum class Order { Time, Device, Kind, Name, Size };

    /// The files of a device on a day: positions, oldest first.
    struct DeviceDay {
        QString ipncid;
        std::vector<int> files;
    };

    FoundFiles() = default;
    explicit FoundFiles(std::vector<FileRecord> files);

    int count() const { return static_cast<int>(files_.size()); }
    const FileRecord& at(int position) const { return files_[static_cast<std::size_t>(position)]; }
    /// Bytes of all of them.
    qint64 bytes() const;

    /// All positions in an order; equal ones by time. Devices are ordered by the names that `nameOf` gives their ids,
    /// with numbers in them by value.
    std::vector<int> ordered(Order order, bool descending,
                             const std::function<QString(const QString& ipncid)>& nameOf) const;
    /// What there is on a day, in the order of the ids.
    std::vector<DeviceDay> day(const QDate& date) const;
    /// The day with files that is nearest to `date` in a direction (-1: before it, 1: after it); invalid when none
    /// is.
    QDate nearestDay(const QDate& date, int direction) const;
    /// The newest day; invalid when there are no files.
    QDate lastDay() const { return files_.empty() ? QDate() : files_.back().time.date(); }
    /// The others than those at `positions`.
    FoundFiles without(const std::vector<int>& positions) const;

private:
    using Iterator = std::vector<FileRecord>::const_iterator;
    /// The first file at a moment or later.
    Iterator from(const QDateTime& moment) const;

    std::vector<FileRecord> files_;
};

/// How long recordings are taken to be, seconds, by their starts (ascending, seconds of the day): up to the next one,
/// ten minutes at most, for a length stands in no name.
std::vector<int> assumedLengths(const std::vector<int>& starts);

} // namespace corvanta::storage
