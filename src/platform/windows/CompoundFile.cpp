#include "platform/CompoundFile.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <objbase.h>
#include <objidl.h>
#include <windows.h>

#include <algorithm>
#include <limits>
#include <string>

namespace corvanta::platform {

namespace {

/// A counted reference to an object of the system.
template <typename T>
class Reference final {
public:
    Reference() = default;
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    ~Reference() { reset(); }

    T* operator->() const { return object_; }
    T** place() { return &object_; }
    void reset() {
        if (object_ != nullptr)
            object_->Release();
        object_ = nullptr;
    }

private:
    T* object_ = nullptr;
};

constexpr DWORD Exclusive = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

class StorageFile final : public CompoundFile {
public:
    bool open(const std::filesystem::path& path, const char* streamName) {
        const std::wstring name(streamName, streamName + std::char_traits<char>::length(streamName));
        return SUCCEEDED(StgCreateDocfile(path.c_str(), Exclusive | STGM_FAILIFTHERE, 0, storage_.place())) &&
               SUCCEEDED(storage_->CreateStream(name.c_str(), Exclusive | STGM_CREATE, 0, 0, stream_.place()));
    }

    bool write(const void* data, std::size_t size) override {
        const char* at = static_cast<const char*>(data);
        while (size > 0) {
            const auto part = static_cast<ULONG>(std::min<std::size_t>(size, std::numeric_limits<ULONG>::max()));
            ULONG written = 0;
            if (FAILED(stream_->Write(at, part, &written)) || written != part)
                return false;
            at += part;
            size -= part;
        }
        return true;
    }

    bool close() override {
        const bool streamDone = SUCCEEDED(stream_->Commit(STGC_DEFAULT));
        stream_.reset();
        const bool storageDone = SUCCEEDED(storage_->Commit(STGC_DEFAULT));
        storage_.reset();
        return streamDone && storageDone;
    }

private:
    // The stream goes first.
    Reference<IStorage> storage_;
    Reference<IStream> stream_;
};

} // namespace

std::unique_ptr<CompoundFile> createCompoundFile(const std::filesystem::path& path, const char* streamName) {
    auto file = std::make_unique<StorageFile>();
    if (!file->open(path, streamName))
        return nullptr;
    return file;
}

} // namespace corvanta::platform
