#include "base/LibraryFolder.h"

#include <windows.h>

#include <string>

namespace ipncsdk {

std::filesystem::path libraryFolder() {
    HMODULE module = nullptr;
    constexpr DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&libraryFolder), &module) == 0)
        return {};
    // Longer than any path that the system knows.
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).parent_path();
}

} // namespace ipncsdk
