#include "platform/RawFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace corvanta::platform {

namespace {

constexpr mode_t NewFile = 0644;      // the owner's recordings, for others to read
constexpr std::size_t MostParts = 16; // of one call

int flagsOf(RawFile::Access access) {
    switch (access) {
    case RawFile::Access::Read:
        return O_RDONLY | O_CLOEXEC;
    case RawFile::Access::Update:
        return O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    case RawFile::Access::Create:
        return O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_CREAT;
    case RawFile::Access::CreateNew:
        return O_RDWR | O_CLOEXEC | O_CREAT | O_EXCL;
    }
    return O_RDONLY | O_CLOEXEC;
}

} // namespace

std::unique_ptr<RawFile> RawFile::open(const std::filesystem::path& path, Access access) {
    const int handle = ::open(path.c_str(), flagsOf(access), NewFile);
    if (handle < 0)
        return nullptr;
    std::unique_ptr<RawFile> file(new RawFile(handle));
    // The lock belongs to this opening of the file, so that it also holds against others in this process. A file
    // system that knows no locks does not keep anybody from recording.
    if (access != Access::Read && flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return nullptr;
    return file;
}

bool RawFile::flush(const std::filesystem::path& path) {
    const int handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle < 0)
        return false;
    const bool done = ::fdatasync(handle) == 0;
    ::close(handle);
    return done;
}

bool RawFile::isBeingWritten(const std::filesystem::path& path) {
    const int handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (handle < 0)
        return false;
    const bool locked = flock(handle, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(handle);
    return locked;
}

RawFile::~RawFile() {
    ::close(handle_);
}

bool RawFile::write(std::span<const Bytes> parts) {
    std::array<iovec, MostParts> rest{};
    while (!parts.empty()) {
        const std::size_t count = std::min(parts.size(), MostParts);
        for (std::size_t i = 0; i < count; ++i)
            rest[i] = {const_cast<std::byte*>(parts[i].data()), parts[i].size()};
        std::size_t first = 0;
        while (first < count) {
            if (rest[first].iov_len == 0) {
                ++first;
                continue;
            }
            ssize_t taken = ::writev(handle_, &rest[first], static_cast<int>(count - first));
            if (taken < 0 && errno == EINTR)
                continue;
            if (taken <= 0)
                return false;
            for (; first < count && static_cast<std::size_t>(taken) >= rest[first].iov_len; ++first)
                taken -= static_cast<ssize_t>(rest[first].iov_len);
            if (first < count) {
                rest[first].iov_base = static_cast<std::byte*>(rest[first].iov_base) + taken;
                rest[first].iov_len -= static_cast<std::size_t>(taken);
            }
        }
        parts = parts.subspan(count);
    }
    return true;
}

std::size_t RawFile::readAt(std::uint64_t position, std::span<std::byte> into) {
    std::size_t done = 0;
    while (done < into.size()) {
        const ssize_t got =
            ::pread(handle_, into.data() + done, into.size() - done, static_cast<off_t>(position + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return 0;
        if (got == 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

bool RawFile::seek(std::uint64_t position) {
    return ::lseek(handle_, static_cast<off_t>(position), SEEK_SET) >= 0;
}

bool RawFile::truncate(std::uint64_t size) {
    return ::ftruncate(handle_, static_cast<off_t>(size)) == 0;
}

std::uint64_t RawFile::size() const {
    struct stat status {};
    return ::fstat(handle_, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

} // namespace corvanta::platform
