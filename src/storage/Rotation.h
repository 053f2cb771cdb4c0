#pragma once

#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>

class DiskProbe;

/// Which drive takes new files, and what makes room when none can. Any thread.
namespace corvanta::storage {

/// The free space below which a drive is left, MiB.
constexpr int SmallestThreshold = 128;
constexpr int LargestThreshold = 4096;
int clampedThreshold(int mebibytes);

/// The list of drives to store instead of `stored`, or nothing when that holds as it is: not empty, and every entry
/// there. A new list has every drive but the system's own, in the order of the computer, or the only one.
std::optional<QStringList> rebuiltDrives(const QStringList& stored, const DiskProbe& disks);

/// The first of the drives with more than `threshold` MiB free; empty when none has.
QString chooseDrive(const QStringList& drives, int threshold, const DiskProbe& disks);

/// The drive with the most free space, as long as it is some (`SmallestRest`); empty when there is none.
QString roomiestDrive(const QStringList& drives, const DiskProbe& disks);
/// Below this many free bytes a drive counts as full to the brim.
constexpr std::uint64_t SmallestRest = std::uint64_t(16) << 20U;

/// Deletes the folder of the oldest day, of one device and one kind, on any of the drives, with everything in it.
/// Touches only folders whose names are those of the data tree, follows no link, and takes neither the folder of
/// today nor one in which a recording is being written; one that cannot be deleted is passed over. False when no
/// folder was deleted whole. `cancelled` is asked before each file: once it says yes, the rest stays.
bool deleteOldestDay(const QStringList& drives, const DiskProbe& disks, const std::function<bool()>& cancelled = {});

} // namespace corvanta::storage
