#include "media/file/FileSound.h"

#include <utility>

namespace ipncsdk::media {

namespace {

/// More than any file needs between two pictures; one that brings more loses the oldest.
constexpr std::size_t mostWaiting = 4096;

} // namespace

void FileSound::begin(const AVCodecParameters* parameters, microseconds begin) {
    std::erase_if(waiting_, [begin](const Waiting& waiting) { return waiting.due >= begin; });
    last_.reset();
    decoder_ = parameters == nullptr ? nullptr : std::make_shared<SoundDecoder>(*parameters);
}

void FileSound::add(const AVPacket& packet, std::optional<microseconds> due) {
    last_ = due ? due : last_;
    Packet kept(av_packet_clone(&packet));
    if (decoder_ == nullptr || kept == nullptr || !last_) {
        return;
    }
    if (waiting_.size() >= mostWaiting) {
        waiting_.pop_front();
    }
    waiting_.push_back({decoder_, std::move(kept), *last_});
}

void FileSound::forget() {
    last_.reset();
    waiting_.clear();
}

std::optional<FileSound::microseconds> FileSound::due() const {
    return waiting_.empty() ? std::nullopt : std::optional(waiting_.front().due);
}

void FileSound::deliver(ReaderHost& host, bool late) {
    const Waiting first = std::move(waiting_.front());
    waiting_.pop_front();
    if (late) {
        return;
    }
    first.decoder->feed(*first.packet);
    SoundBlock block;
    while (first.decoder->take(block)) {
        host.sound(block);
    }
}

} // namespace ipncsdk::media
