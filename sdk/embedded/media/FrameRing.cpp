#include "media/FrameRing.h"

#include "media/MemoryMuxer.h"

#include <algorithm>
#include <cmath>

namespace ipncsdk::media {

std::vector<std::uint8_t> RingClip::avi() const {
    // In an AVI file the parameter sets stand before every key frame alone.
    MemoryMuxer muxer("avi", frameRate);
    if (frames.empty() || !muxer.begin(width, height, {}))
        return {};
    std::int64_t last = -1;
    for (const Frame& frame : frames) {
        const auto elapsed = std::chrono::duration<double>(frame.time - frames.front().time).count();
        last = std::max(last + 1, static_cast<std::int64_t>(std::llround(elapsed * frameRate)));
        if (!muxer.write(*frame.bytes, frame.keyFrame, last))
            return {};
    }
    return muxer.finish();
}

FrameRing::FrameRing(std::chrono::milliseconds kept)
    : kept_(kept) {}

RingClip FrameRing::clip(Time begin, Time end) const {
    const std::lock_guard lock(mutex_);
    RingClip clip{parameters_.width, parameters_.height, std::max(parameters_.frameRate, 1), {}};
    auto first = frames_.end();
    for (auto frame = frames_.begin(); frame != frames_.end() && frame->arrived <= end; ++frame) {
        // The last key frame that is early enough, or else the first one there is.
        if (frame->keyFrame && (first == frames_.end() || frame->arrived <= begin))
            first = frame;
    }
    for (auto frame = first; frame != frames_.end() && frame->arrived <= end; ++frame)
        clip.frames.push_back(*frame);
    return clip;
}

bool FrameRing::isClosed() const {
    const std::lock_guard lock(mutex_);
    return closed_;
}

void FrameRing::take(const CodedFrame& frame, Time now) {
    auto bytes = std::make_shared<const std::vector<std::uint8_t>>(frame.data, frame.data + frame.size);
    const std::lock_guard lock(mutex_);
    // A stream that begins anew does not fit what was there.
    if (!frames_.empty() && frame.time < frames_.back().time) {
        frames_.clear();
        bytes_ = 0;
    }
    if (frames_.empty() && !frame.keyFrame)
        return;
    bytes_ += frame.size;
    frames_.push_back({std::move(bytes), frame.keyFrame, frame.time, now});
    forgetOld(now);
}

void FrameRing::forgetOld(Time now) {
    // Whole groups alone: what remains begins with a key frame.
    while (true) {
        const auto next = std::find_if(frames_.begin() + (frames_.empty() ? 0 : 1), frames_.end(),
                                       [](const RingClip::Frame& frame) { return frame.keyFrame; });
        const bool tooMuch = bytes_ > mostBytes;
        if (next == frames_.end()) {
            // One group that is too large by itself is of no use.
            if (tooMuch) {
                frames_.clear();
                bytes_ = 0;
            }
            return;
        }
        if (!tooMuch && now - next->arrived < kept_)
            return;
        for (auto frame = frames_.begin(); frame != next; ++frame)
            bytes_ -= frame->bytes->size();
        frames_.erase(frames_.begin(), next);
    }
}

void FrameRing::onStage(OpenStage /*stage*/) {}

void FrameRing::onOpened(const StreamParameters& parameters) {
    const std::lock_guard lock(mutex_);
    if (parameters.width != parameters_.width || parameters.height != parameters_.height ||
        parameters.frameRate != parameters_.frameRate) {
        frames_.clear();
        bytes_ = 0;
    }
    parameters_ = parameters;
}

void FrameRing::onDecoded(const DecodedFrame& /*frame*/) {}

void FrameRing::onCoded(const CodedFrame& frame) {
    take(frame, std::chrono::steady_clock::now());
}

void FrameRing::onSound(const SoundBlock& /*sound*/) {}

void FrameRing::onClosed(StreamError /*reason*/) {
    const std::lock_guard lock(mutex_);
    closed_ = true;
}

} // namespace ipncsdk::media
