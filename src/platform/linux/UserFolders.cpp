#include "platform/linux/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace corvanta::platform {

namespace {

/// The variable's value if it is an absolute path; relative ones are to be taken as not set.
std::filesystem::path absolutePathFromEnvironment(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && value[0] == '/' ? std::filesystem::path(value) : std::filesystem::path();
}

} // namespace

std::filesystem::path homeFolder() {
    if (auto home = absolutePathFromEnvironment("HOME"); !home.empty()) {
        return home;
    }
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr &&
        found->pw_dir != nullptr && found->pw_dir[0] == '/') {
        return found->pw_dir;
    }
    return "/";
}

std::filesystem::path configFolder() {
    auto folder = absolutePathFromEnvironment("XDG_CONFIG_HOME");
    return folder.empty() ? homeFolder() / ".config" : folder;
}

} // namespace corvanta::platform
