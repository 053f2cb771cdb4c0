#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvanta::platform {

/// Sizes of a volume in bytes.
struct DiskSpace {
    /// Free for this user: quotas and reserved blocks are off limits.
    std::uint64_t available = 0;
    /// Free on the volume, whoever may use it.
    std::uint64_t free = 0;
    std::uint64_t total = 0;
    /// Linux: false when the volume is mounted to be read only, as the kernel does with one that fails. Windows:
    /// true.
    bool isWritable = true;
};

/// The space of the volume that holds `path` (an existing file or folder); nothing if it cannot be asked.
std::optional<DiskSpace> diskSpace(const std::filesystem::path& path);

/// Whether another volume begins at `path` (an existing folder) than the one that holds the folder above it. Windows:
/// false; a volume with a letter vanishes together with its path.
bool isMountPoint(const std::filesystem::path& path);

/// The places where this user can keep files, one a volume, UTF-8 with '/' between and at the end, in a stable order.
///
/// Windows: the roots of fixed and removable drives that have a medium and are not write-protected ("D:/").
/// Linux: the mount points of real, local, writable file systems ("/", "/media/disk/"). Where the user may not write
/// at the mount point itself, the volume is left out, except the one that holds the user's home folder: that one is
/// stood for by the home folder. Volumes mounted twice are listed once, boot partitions never.
std::vector<std::string> driveRoots();

/// The member of `driveRoots()` that the system itself lives on (Windows), or that holds the user's home (Linux).
/// If that volume is not among them, its root (Windows) or the home folder (Linux).
std::string systemDrive();

} // namespace corvanta::platform
