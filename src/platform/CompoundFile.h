#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

namespace corvanta::platform {

/// A compound document (the container of older office files) with one stream, written from its beginning to its end.
/// One thread at a time. Destroyed before it was closed it leaves an unusable file behind, which is the caller's to
/// remove.
class CompoundFile {
public:
    CompoundFile() = default;
    CompoundFile(const CompoundFile&) = delete;
    CompoundFile& operator=(const CompoundFile&) = delete;
    virtual ~CompoundFile() = default;

    /// Adds to the stream; false when it could not be written.
    virtual bool write(const void* data, std::size_t size) = 0;

    /// Completes the file; false when that failed, and then it is unusable. Called once, nothing is written after it.
    virtual bool close() = 0;
};

/// Makes the file `path`, which must not exist, with a stream named `streamName` (ASCII, up to 31 characters). Null
/// when it can not be made.
std::unique_ptr<CompoundFile> createCompoundFile(const std::filesystem::path& path, const char* streamName);

} // namespace corvanta::platform
