#include "playback/PacketSource.h"

#include "playback/ContainerSource.h"
#include "playback/UnfinishedAvi.h"

#include <algorithm>
#include <system_error>

namespace corvanta::playback {

bool PacketSource::tidyEntries(std::int64_t fileSize) {
    const auto isBeyond = [fileSize](const Entry& entry) {
        return entry.position >= 0 && entry.position + entry.size > fileSize;
    };
    entries_.erase(std::find_if(entries_.begin(), entries_.end(), isBeyond), entries_.end());
    const auto first =
        std::find_if(entries_.begin(), entries_.end(), [](const Entry& entry) { return entry.keyFrame; });
    entries_.erase(entries_.begin(), first);
    return !entries_.empty();
}

std::unique_ptr<PacketSource> openPackets(const std::filesystem::path& file, OpenError& error) {
    // What is wrong with a file is told by values; the libraries would write a line for every damaged frame.
    static const bool quiet = (av_log_set_level(AV_LOG_QUIET), true);
    static_cast<void>(quiet);
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure)) {
        error = OpenError::Missing;
        return nullptr;
    }
    auto container = std::make_unique<ContainerSource>();
    error = container->open(file);
    if (error == OpenError::None)
        return container;
    auto unfinished = std::make_unique<UnfinishedAvi>();
    if (unfinished->open(file)) {
        error = OpenError::None;
        return unfinished;
    }
    return nullptr;
}

} // namespace corvanta::playback
