#include "platform/RuntimeFolder.h"

namespace corvanta::platform {

std::optional<std::filesystem::path> runtimeFolder() {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) {
        return std::nullopt;
    }
    return folder;
}

} // namespace corvanta::platform
