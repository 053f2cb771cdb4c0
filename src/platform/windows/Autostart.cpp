#include "platform/Autostart.h"

#include <windows.h>

#include <string>

namespace corvanta::platform {

namespace {

constexpr const wchar_t* runKey = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr const wchar_t* valueName = L"wirtepad";

std::error_code systemError(LSTATUS status) {
    return {static_cast<int>(status), std::system_category()};
}

} // namespace

std::error_code setAutostart(bool enabled, const std::filesystem::path& executable) {
    std::wstring data;
    if (enabled) {
        std::error_code error;
        data = std::filesystem::absolute(executable, error).make_preferred().wstring();
        if (error) {
            return error;
        }
    }
    HKEY key = nullptr;
    LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, runKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS) {
        return systemError(status);
    }
    // The size counts the zero that ends the text.
    status = RegSetValueExW(key, valueName, 0, REG_SZ, reinterpret_cast<const BYTE*>(data.c_str()),
                            static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
    return status == ERROR_SUCCESS ? std::error_code{} : systemError(status);
}

bool isAutostartEnabled() {
    // Two characters take an empty text with its zero; anything that does not fit is a path.
    wchar_t data[2] = {};
    DWORD size = sizeof(data);
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, runKey, valueName, RRF_RT_REG_SZ, nullptr, data, &size);
    return status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && data[0] != 0);
}

} // namespace corvanta::platform
