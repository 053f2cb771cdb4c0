#include "base/LibraryFolder.h"

#include <dlfcn.h>

namespace ipncsdk {

std::filesystem::path libraryFolder() {
    Dl_info found{};
    if (dladdr(reinterpret_cast<const void*>(&libraryFolder), &found) == 0 || found.dli_fname == nullptr)
        return {};
    std::error_code error;
    return std::filesystem::absolute(found.dli_fname, error).parent_path();
}

} // namespace ipncsdk
