#include "platform/DataProtection.h"

#include <windows.h>
// They need what windows.h declares.
#include <dpapi.h>
#include <wincrypt.h>

namespace corvanta::platform {

namespace {

using Operation = BOOL (*)(DATA_BLOB& in, DATA_BLOB& out);

std::optional<std::string> through(Operation operation, const std::string& bytes) {
    std::string copy = bytes; // the system takes no constant
    DATA_BLOB in{static_cast<DWORD>(copy.size()), reinterpret_cast<BYTE*>(copy.data())};
    DATA_BLOB out{};
    if (operation(in, out) == 0) {
        return std::nullopt;
    }
    std::string result(reinterpret_cast<const char*>(out.pbData), out.cbData);
    SecureZeroMemory(out.pbData, out.cbData);
    LocalFree(out.pbData);
    return result;
}

} // namespace

std::optional<std::string> protectForUser(const std::string& bytes) {
    return through(
        [](DATA_BLOB& in, DATA_BLOB& out) {
            return CryptProtectData(&in, nullptr, nullptr, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN, &out);
        },
        bytes);
}

std::optional<std::string> unprotectForUser(const std::string& bytes) {
    return through(
        [](DATA_BLOB& in, DATA_BLOB& out) {
            return CryptUnprotectData(&in, nullptr, nullptr, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN, &out);
        },
        bytes);
}

} // namespace corvanta::platform
