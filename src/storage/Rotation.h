#pragma once

#include <QStringList>

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

/// The first of the drives with more than `threshold` MiB free; empty when none has. Those in `except` are passed
/// over.
QString chooseDrive(const QStringList& drives, int threshold, const DiskProbe& disks, const QStringList& except = {});

/// Deletes the folder of the oldest day, of one device and one kind, on any of the drives, with everything in it.
/// Touches only folders whose names are those of the data tree, follows no link, and takes neither the folder of
/// today nor one in which a recording is being written; one that cannot be deleted is passed over. False when nothing
/// was deleted.
bool deleteOldestDay(const QStringList& drives, const DiskProbe& disks);

} // namespace corvanta::storage
