#pragma once

#include <functional>
#include <istream>
#include <string>
#include <vector>

namespace corvanta::platform {

/// One mount, as the kernel lists it.
struct Mount {
    std::string device;     ///< "major:minor"; the same for every mount of one volume
    std::string mountPoint; ///< absolute, unescaped
    std::string type;       ///< "ext4"
    bool writable = false;
};

/// Reads the format of /proc/self/mountinfo (proc(5)). Lines that do not have it are left out.
std::vector<Mount> readMounts(std::istream& mountInfo);

/// The mount that `path` (absolute) lies on; null if there is none.
const Mount* mountOf(const std::vector<Mount>& mounts, const std::string& path);

/// The drive roots among `mounts`, as `driveRoots()` describes them, in the order of their mount points.
/// `mayWrite` says whether the user may make files in a folder.
std::vector<std::string> selectRoots(const std::vector<Mount>& mounts, const std::string& home,
                                     const std::function<bool(const std::string&)>& mayWrite);

/// The member of `selectRoots()` that holds `home`, or `home` itself.
std::string rootOfHome(const std::vector<Mount>& mounts, const std::string& home,
                       const std::function<bool(const std::string&)>& mayWrite);

} // namespace corvanta::platform
