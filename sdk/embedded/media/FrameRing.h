#pragma once

#include "media/Stream.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace ipncsdk::media {

/// Some seconds of a coded stream.
struct RingClip {
    struct Frame {
        std::shared_ptr<const std::vector<std::uint8_t>> bytes; ///< an access unit in Annex B form
        bool keyFrame = false;
        std::chrono::microseconds time{0};             ///< in the stream
        std::chrono::steady_clock::time_point arrived; ///< here
    };
    int width = 0;
    int height = 0;
    int frameRate = 25;
    std::vector<Frame> frames; ///< the first one is a key frame; empty when there is nothing

    /// The clip as an AVI file; empty when there is nothing or it can't be made.
    [[nodiscard]] std::vector<std::uint8_t> avi() const;
};

/// Listens to a coded stream and keeps its last seconds. Thread-safe.
class FrameRing final : public StreamListener {
public:
    using Time = std::chrono::steady_clock::time_point;
    /// What it keeps at most, however long that lasts.
    static constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;

    explicit FrameRing(std::chrono::milliseconds kept);

    /// What arrived from `begin` to `end`; it begins with the last key frame before, where that is still there.
    [[nodiscard]] RingClip clip(Time begin, Time end) const;
    /// The stream has ended; nothing comes any more.
    [[nodiscard]] bool isClosed() const;

    /// As `onCoded`, of a frame that arrived at `now`.
    void take(const CodedFrame& frame, Time now);

    void onStage(OpenStage stage) override;
    void onOpened(const StreamParameters& parameters) override;
    void onDecoded(const DecodedFrame& frame) override;
    void onCoded(const CodedFrame& frame) override;
    void onSound(const SoundBlock& sound) override;
    void onClosed(StreamError reason) override;

private:
    void forgetOld(Time now);

    const std::chrono::milliseconds kept_;
    mutable std::mutex mutex_;
    // Guarded by mutex_ from here on.
    StreamParameters parameters_;
    std::deque<RingClip::Frame> frames_; ///< the first one is a key frame
    std::size_t bytes_ = 0;              ///< of all frames
    bool closed_ = false;
};

} // namespace ipncsdk::media
