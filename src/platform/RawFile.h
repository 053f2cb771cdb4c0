#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace corvanta::platform {

/// A file that is read and written by positions, without buffers of ours: what `write` has taken, the system has, and
/// a process that is killed loses none of it.
///
/// One thread at a time. Positions and sizes are bytes.
class RawFile final {
public:
    enum class Access {
        Read,      ///< an existing file
        Update,    ///< an existing file, read and written, for this owner alone
        Create,    ///< read and written, for this owner alone; made when missing, kept as it is when there
        CreateNew, ///< like `Create`, but a file that exists is refused
    };
    using Bytes = std::span<const std::byte>;

    /// Null when the file cannot be opened so. Who opens to write is alone: nobody else, in this process or another,
    /// can open the same file to write as long as this one is open.
    static std::unique_ptr<RawFile> open(const std::filesystem::path& path, Access access);
    /// Waits until the disk has what any process has written into a file, and says whether it has.
    static bool flush(const std::filesystem::path& path);
    /// Whether somebody has the file open to write.
    static bool isBeingWritten(const std::filesystem::path& path);

    ~RawFile();
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;

    /// Writes the parts one after another from where the file stands, in as few calls of the system as it takes;
    /// what the system takes in part is gone on with. False when it takes no more (a full or vanished disk).
    bool write(std::span<const Bytes> parts);
    bool write(Bytes part) { return write(std::span<const Bytes>(&part, 1)); }

    /// Reads from a position; returns the bytes read, fewer only at the end of the file, and nothing on an error.
    /// Where the file stands afterwards is open: who writes then seeks first.
    std::size_t readAt(std::uint64_t position, std::span<std::byte> into);

    bool seek(std::uint64_t position);
    /// Cuts the file to a size.
    bool truncate(std::uint64_t size);
    /// The size of the file, 0 when it cannot be asked.
    std::uint64_t size() const;

private:
#ifdef _WIN32
    using Handle = void*;
#else
    using Handle = int;
#endif
    explicit RawFile(Handle handle)
        : handle_(handle) {}

    Handle handle_;
};

} // namespace corvanta::platform
