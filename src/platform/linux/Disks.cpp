#include "platform/Disks.h"

#include "platform/linux/MountTable.h"
#include "platform/linux/UserFolders.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <fstream>

namespace corvanta::platform {

namespace {

std::vector<Mount> currentMounts() {
    std::ifstream file("/proc/self/mountinfo");
    return readMounts(file);
}

/// A single file may be a mount, too; that is no place for others.
bool mayWrite(const std::string& folder) {
    struct stat status {};
    return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && access(folder.c_str(), W_OK | X_OK) == 0;
}

} // namespace

std::optional<DiskSpace> diskSpace(const std::filesystem::path& path) {
    struct statvfs status {};
    if (statvfs(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    const std::uint64_t block = status.f_frsize;
    return DiskSpace{status.f_bavail * block, status.f_bfree * block, status.f_blocks * block,
                     (status.f_flag & ST_RDONLY) == 0};
}

bool isMountPoint(const std::filesystem::path& path) {
    struct stat own {};
    struct stat above {};
    return stat(path.c_str(), &own) == 0 && stat((path / "..").c_str(), &above) == 0 && own.st_dev != above.st_dev;
}

std::vector<std::string> driveRoots() {
    auto roots = selectRoots(currentMounts(), homeFolder().string(), mayWrite);
    if (roots.empty()) {
        // A system that runs from memory: what the user has is the home folder.
        roots.push_back(systemDrive());
    }
    return roots;
}

std::string systemDrive() {
    return rootOfHome(currentMounts(), homeFolder().string(), mayWrite);
}

} // namespace corvanta::platform
