#include "platform/RuntimeFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace corvanta::platform {

namespace {

/// A socket's address takes 107 bytes; this leaves room for its name.
constexpr std::size_t longestFolder = 72;

/// True if nobody else can put, swap or read anything in `folder`. A link does not pass, wherever it leads.
bool isOursAlone(const char* folder) {
    struct stat status {};
    return lstat(folder, &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
           (status.st_mode & 07777) == 0700;
}

} // namespace

std::optional<std::filesystem::path> runtimeFolder() {
    const char* session = std::getenv("XDG_RUNTIME_DIR");
    if (session != nullptr && session[0] == '/') {
        std::string folder = session;
        // lstat follows a link whose name ends with a slash.
        while (folder.size() > 1 && folder.back() == '/') {
            folder.pop_back();
        }
        if (folder.size() <= longestFolder && isOursAlone(folder.c_str())) {
            return folder;
        }
    }
    // In a folder that everyone may write to the name can be taken by somebody else: then it is not used.
    const std::string own = "/tmp/corvanta-" + std::to_string(geteuid());
    mkdir(own.c_str(), 0700);
    if (!isOursAlone(own.c_str())) {
        return std::nullopt;
    }
    return own;
}

} // namespace corvanta::platform
