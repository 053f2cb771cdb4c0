#include "platform/linux/MountTable.h"

#include <algorithm>
#include <array>
#include <map>
#include <sstream>
#include <string_view>

namespace corvanta::platform {

namespace {

/// File systems that keep what is written to them on a disk of this machine. Network file systems are left out: one
/// that does not answer would stop whoever asks for its space.
constexpr std::array<std::string_view, 21> localTypes{
    "9p",  "apfs", "bcachefs", "btrfs",   "exfat",    "ext2", "ext3", "ext4",     "f2fs", "fuseblk", "hfsplus",
    "jfs", "ntfs", "ntfs3",    "overlay", "reiserfs", "udf",  "vfat", "virtiofs", "xfs",  "zfs"};

bool isOctal(char character) {
    return character >= '0' && character <= '7';
}

/// The kernel writes blank, tab, line end and backslash as "\" and three octal digits.
std::string unescape(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && isOctal(text[i + 1]) && isOctal(text[i + 2]) &&
            isOctal(text[i + 3])) {
            result += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
            i += 3;
        } else {
            result += text[i];
        }
    }
    return result;
}

/// True if the comma-separated `options` say "rw".
bool saysWritable(const std::string& options) {
    return ("," + options + ",").find(",rw,") != std::string::npos;
}

/// True if `path` is `folder` or lies in it.
bool isWithin(const std::string& path, const std::string& folder) {
    if (folder == "/") {
        return true;
    }
    return path.compare(0, folder.size(), folder) == 0 &&
           (path.size() == folder.size() || path[folder.size()] == '/');
}

/// Where the system keeps what it starts from: small, and not for the user's files.
bool isBootPartition(const std::string& mountPoint) {
    return isWithin(mountPoint, "/boot") || isWithin(mountPoint, "/efi");
}

bool isCandidate(const Mount& mount) {
    const bool isLocal = std::find(localTypes.begin(), localTypes.end(), mount.type) != localTypes.end();
    // A container's root is an overlay; any other overlay only shows what lies elsewhere.
    const bool isRealOverlay = mount.type != "overlay" || mount.mountPoint == "/";
    return mount.writable && isLocal && isRealOverlay && !isBootPartition(mount.mountPoint);
}

std::string withSlash(std::string path) {
    if (path.empty() || path.back() != '/') {
        path += '/';
    }
    return path;
}

std::string withoutSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

/// Device to root, for every volume that has a root.
std::map<std::string, std::string> rootsByDevice(const std::vector<Mount>& mounts, const std::string& home,
                                                 const std::function<bool(const std::string&)>& mayWrite) {
    std::map<std::string, std::string> roots;
    for (const Mount& mount : mounts) {
        // What a later mount covers cannot be reached.
        if (!isCandidate(mount) || mountOf(mounts, mount.mountPoint) != &mount || !mayWrite(mount.mountPoint)) {
            continue;
        }
        std::string& root = roots[mount.device];
        if (root.empty() || mount.mountPoint.size() < root.size()) {
            root = mount.mountPoint;
        }
    }
    const Mount* homeMount = mountOf(mounts, home);
    if (homeMount != nullptr && isCandidate(*homeMount) && mayWrite(home)) {
        roots.try_emplace(homeMount->device, home);
    }
    return roots;
}

} // namespace

std::vector<Mount> readMounts(std::istream& mountInfo) {
    std::vector<Mount> mounts;
    std::string line;
    while (std::getline(mountInfo, line)) {
        std::istringstream fields(line);
        std::string id;
        std::string parent;
        std::string root;
        std::string mountPoint;
        std::string mountOptions;
        Mount mount;
        fields >> id >> parent >> mount.device >> root >> mountPoint >> mountOptions;
        // Optional fields, any number of them, end with a lone dash.
        std::string field;
        while (fields >> field && field != "-") {
        }
        std::string source;
        std::string superOptions;
        if (!(fields >> mount.type >> source >> superOptions)) {
            continue;
        }
        mount.mountPoint = unescape(mountPoint);
        mount.writable = saysWritable(mountOptions) && saysWritable(superOptions);
        mounts.push_back(std::move(mount));
    }
    return mounts;
}

const Mount* mountOf(const std::vector<Mount>& mounts, const std::string& path) {
    const Mount* best = nullptr;
    for (const Mount& mount : mounts) {
        // Of two at one place the later one covers the earlier.
        if (isWithin(path, mount.mountPoint) &&
            (best == nullptr || mount.mountPoint.size() >= best->mountPoint.size())) {
            best = &mount;
        }
    }
    return best;
}

std::vector<std::string> selectRoots(const std::vector<Mount>& mounts, const std::string& home,
                                     const std::function<bool(const std::string&)>& mayWrite) {
    std::vector<std::string> roots;
    for (const auto& [device, root] : rootsByDevice(mounts, withoutSlash(home), mayWrite)) {
        roots.push_back(withSlash(root));
    }
    std::sort(roots.begin(), roots.end());
    return roots;
}

std::string rootOfHome(const std::vector<Mount>& mounts, const std::string& home,
                       const std::function<bool(const std::string&)>& mayWrite) {
    const std::string folder = withoutSlash(home);
    const auto roots = rootsByDevice(mounts, folder, mayWrite);
    const Mount* mount = mountOf(mounts, folder);
    const auto found = mount == nullptr ? roots.end() : roots.find(mount->device);
    return withSlash(found == roots.end() ? folder : found->second);
}

} // namespace corvanta::platform
