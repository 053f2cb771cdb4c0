#include "platform/RawFile.h"

#include <windows.h>

#include <algorithm>

namespace corvanta::platform {

namespace {

constexpr std::size_t LargestCall = 64U << 20U; // bytes

struct Opening {
    DWORD access;
    DWORD share; ///< who writes lets others read, nobody write
    DWORD disposition;
};

Opening openingFor(RawFile::Access access) {
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    switch (access) {
    case RawFile::Access::Read:
        return {GENERIC_READ, all, OPEN_EXISTING};
    case RawFile::Access::Update:
        return {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING};
    case RawFile::Access::Create:
        return {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS};
    case RawFile::Access::CreateNew:
        return {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW};
    }
    return {GENERIC_READ, all, OPEN_EXISTING};
}

LARGE_INTEGER large(std::uint64_t value) {
    LARGE_INTEGER result;
    result.QuadPart = static_cast<LONGLONG>(value);
    return result;
}

} // namespace

std::unique_ptr<RawFile> RawFile::open(const std::filesystem::path& path, Access access) {
    const Opening opening = openingFor(access);
    const HANDLE handle = CreateFileW(path.c_str(), opening.access, opening.share, nullptr, opening.disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return nullptr;
    return std::unique_ptr<RawFile>(new RawFile(handle));
}

bool RawFile::flush(const std::filesystem::path& path) {
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE handle =
        CreateFileW(path.c_str(), GENERIC_WRITE, all, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const bool done = FlushFileBuffers(handle) != 0;
    CloseHandle(handle);
    return done;
}

bool RawFile::isBeingWritten(const std::filesystem::path& path) {
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION;
    CloseHandle(handle);
    return false;
}

RawFile::~RawFile() {
    CloseHandle(handle_);
}

bool RawFile::write(std::span<const Bytes> parts) {
    for (const Bytes& part : parts) {
        std::size_t done = 0;
        while (done < part.size()) {
            DWORD taken = 0;
            const auto wanted = static_cast<DWORD>(std::min(part.size() - done, LargestCall));
            if (WriteFile(handle_, part.data() + done, wanted, &taken, nullptr) == 0 || taken == 0)
                return false;
            done += taken;
        }
    }
    return true;
}

std::size_t RawFile::readAt(std::uint64_t position, std::span<std::byte> into) {
    std::size_t done = 0;
    while (done < into.size()) {
        OVERLAPPED from{};
        from.Offset = static_cast<DWORD>((position + done) & 0xffffffffU);
        from.OffsetHigh = static_cast<DWORD>((position + done) >> 32U);
        DWORD got = 0;
        const auto wanted = static_cast<DWORD>(std::min(into.size() - done, LargestCall));
        if (ReadFile(handle_, into.data() + done, wanted, &got, &from) == 0)
            return GetLastError() == ERROR_HANDLE_EOF ? done : 0;
        if (got == 0)
            break;
        done += got;
    }
    return done;
}

bool RawFile::seek(std::uint64_t position) {
    return SetFilePointerEx(handle_, large(position), nullptr, FILE_BEGIN) != 0;
}

bool RawFile::truncate(std::uint64_t size) {
    return seek(size) && SetEndOfFile(handle_) != 0;
}

std::uint64_t RawFile::size() const {
    LARGE_INTEGER result{};
    return GetFileSizeEx(handle_, &result) != 0 ? static_cast<std::uint64_t>(result.QuadPart) : 0;
}

} // namespace corvanta::platform
