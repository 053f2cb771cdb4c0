#include "platform/Disks.h"

#include <windows.h>

namespace corvanta::platform {

namespace {

/// A drive without a medium must not put up a system box that waits for one.
class NoMediumBoxes final {
public:
    NoMediumBoxes()
        : previous_(SetErrorMode(SEM_FAILCRITICALERRORS)) {}
    ~NoMediumBoxes() { SetErrorMode(previous_); }
    NoMediumBoxes(const NoMediumBoxes&) = delete;
    NoMediumBoxes& operator=(const NoMediumBoxes&) = delete;

private:
    UINT previous_;
};

std::string rootOf(char letter) {
    return std::string(1, letter) + ":/";
}

bool isUsable(char letter) {
    const std::wstring root{static_cast<wchar_t>(letter), L':', L'\\'};
    const UINT type = GetDriveTypeW(root.c_str());
    if (type != DRIVE_FIXED && type != DRIVE_REMOVABLE) {
        return false;
    }
    DWORD flags = 0;
    return GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) != 0 &&
           (flags & FILE_READ_ONLY_VOLUME) == 0;
}

} // namespace

std::optional<DiskSpace> diskSpace(const std::filesystem::path& path) {
    const NoMediumBoxes noBoxes;
    ULARGE_INTEGER available{};
    ULARGE_INTEGER total{};
    ULARGE_INTEGER free{};
    if (GetDiskFreeSpaceExW(path.c_str(), &available, &total, &free) == 0) {
        return std::nullopt;
    }
    return DiskSpace{available.QuadPart, free.QuadPart, total.QuadPart, true};
}

bool isMountPoint(const std::filesystem::path&) {
    return false;
}

std::vector<std::string> driveRoots() {
    const NoMediumBoxes noBoxes;
    const DWORD drives = GetLogicalDrives();
    std::vector<std::string> roots;
    for (int index = 0; index < 26; ++index) {
        const char letter = static_cast<char>('A' + index);
        if ((drives >> index & 1U) != 0 && isUsable(letter)) {
            roots.push_back(rootOf(letter));
        }
    }
    return roots;
}

std::string systemDrive() {
    wchar_t folder[100] = {};
    const UINT length = GetSystemDirectoryW(folder, 100);
    const bool hasLetter = length > 0 && length < 100 && folder[0] < 128 && folder[1] == L':';
    return rootOf(hasLetter ? static_cast<char>(folder[0]) : 'C');
}

} // namespace corvanta::platform
