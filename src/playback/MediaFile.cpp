#include "playback/MediaFile.h"

#include <algorithm>

namespace corvanta::playback {

namespace {

/// Frames that are kept however large they are: what a decoder holds back comes out at once at a file's end.
constexpr std::size_t leastKept = 8;

} // namespace

OpenError MediaFile::open(const std::filesystem::path& file, Options options) {
    options_ = options;
    OpenError error = OpenError::None;
    source_ = openPackets(file, error);
    if (source_ == nullptr)
        return error;
    index_ = std::make_unique<FrameIndex>(*source_);
    if (frameCount() == 0)
        return OpenError::NoPictures;
    // The first group tells how many frames are reordered; what a later one adds, the decoder finds by itself.
    return decoder_.open(*source_->stream().codec, options.threads, index_->reordering()) ? OpenError::None
                                                                                          : OpenError::NoDecoder;
}

double MediaFile::frameRate() const {
    return av_q2d(source_->stream().frameRate);
}

video::FrameSize MediaFile::size() const {
    const AVCodecParameters& codec = *source_->stream().codec;
    return {static_cast<unsigned>(std::max(codec.width, 0)), static_cast<unsigned>(std::max(codec.height, 0))};
}

std::size_t MediaFile::keyFrameBefore(std::size_t frame) {
    const std::size_t group = index_->decodedFrom(frame);
    return index_->frameOf(index_->firstEntry(group)).value_or(index_->firstFrame(group));
}

/// Whether going on with the decoder as it is comes to a frame, and no later than beginning anew would.
bool MediaFile::reaches(std::size_t frame) {
    return running_ && frame >= nextFrame() && index_->firstFrame(index_->decodedFrom(frame)) <= nextFrame();
}

std::size_t MediaFile::nextFrame() const {
    return lastFrame_ ? *lastFrame_ + 1 : index_->firstFrame(beganAt_);
}

std::size_t MediaFile::framesToDecode(std::size_t frame) {
    if (find(frame) != nullptr)
        return 0;
    const std::size_t next = reaches(frame) ? nextFrame() : index_->firstFrame(index_->decodedFrom(frame));
    return frame - std::min(frame, next) + 1;
}

const MediaFile::Kept* MediaFile::find(std::size_t frame) const {
    const auto found =
        std::find_if(kept_.begin(), kept_.end(), [frame](const Kept& kept) { return kept.frame == frame; });
    return found == kept_.end() ? nullptr : &*found;
}

/// What stands in for a frame that does not come out.
const MediaFile::Kept* MediaFile::lastBefore(std::size_t frame) const {
    const Kept* best = nullptr;
    for (const Kept& kept : kept_) {
        const bool better = best == nullptr || (kept.frame < frame ? kept.frame > best->frame || best->frame > frame
                                                                   : kept.frame < best->frame && best->frame > frame);
        if (better)
            best = &kept;
    }
    return best;
}

void MediaFile::beginAt(std::size_t group) {
    decoder_.restart();
    kept_.clear();
    keptBytes_ = 0;
    running_ = true;
    beganAt_ = group;
    nextEntry_ = index_->firstEntry(group);
    lastFrame_.reset();
}

void MediaFile::feedNext() {
    if (nextEntry_ >= source_->entries().size()) {
        decoder_.finish();
        running_ = false;
        while (takeDecoded()) {
        }
        return;
    }
    if (source_->read(nextEntry_, *packet_))
        decoder_.feed(*packet_, nextEntry_);
    ++nextEntry_;
}

bool MediaFile::takeDecoded() {
    auto decoded = decoder_.take();
    if (!decoded)
        return false;
    keep(std::move(*decoded));
    return true;
}

void MediaFile::keep(FrameDecoder::Decoded decoded) {
    const auto frame = index_->frameOf(std::min(decoded.entry, source_->entries().size() - 1));
    if (!frame)
        return;
    const std::size_t bytes =
        static_cast<std::size_t>(decoded.frame->width) * static_cast<std::size_t>(decoded.frame->height) * 3 / 2;
    keptBytes_ += bytes;
    lastFrame_ = std::max(*frame, lastFrame_.value_or(0));
    kept_.push_back({*frame, bytes, std::move(decoded.frame)});
    while (kept_.size() > leastKept && keptBytes_ > options_.keptBytes) {
        keptBytes_ -= kept_.front().bytes;
        kept_.pop_front();
    }
}

SharedPicture MediaFile::decode(std::size_t frame, const Interrupted& interrupted) {
    if (const Kept* const kept = find(frame))
        return converter_.convert(*kept->picture);
    if (!reaches(frame))
        beginAt(index_->decodedFrom(frame));
    while (!lastFrame_ || *lastFrame_ < frame) {
        if (takeDecoded())
            continue;
        if (!running_)
            break;
        if (interrupted && interrupted())
            return nullptr;
        feedNext();
    }
    const Kept* const kept = lastBefore(frame + 1);
    return kept == nullptr ? nullptr : converter_.convert(*kept->picture);
}

} // namespace corvanta::playback
