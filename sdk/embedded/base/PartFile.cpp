#include "base/PartFile.h"

#include "base/Log.h"
#include "base/ReplaceFile.h"

#include <system_error>
#include <utility>

namespace ipncsdk {

PartFile::PartFile(std::filesystem::path part)
    : part_(std::move(part))
    , stream_(part_, std::ios::binary | std::ios::trunc) {}

PartFile::~PartFile() {
    stream_.close();
    std::error_code ignored;
    std::filesystem::remove(part_, ignored);
}

bool PartFile::write(const char* bytes, std::size_t count) {
    stream_.write(bytes, static_cast<std::streamsize>(count));
    return stream_.good();
}

bool PartFile::close() {
    if (stream_.is_open())
        stream_.close();
    return stream_.good();
}

bool PartFile::finish(const std::filesystem::path& target) {
    if (!close()) {
        logLine("a file could not be written");
        return false;
    }
    const std::error_code error = replaceFile(part_, target);
    if (error)
        logLine("a file could not be put in its place: " + error.message());
    return !error;
}

} // namespace ipncsdk
