#pragma once

#include "playback/FrameConverter.h"
#include "playback/FrameDecoder.h"
#include "playback/FrameIndex.h"
#include "playback/PacketSource.h"
#include "playback/Picture.h"

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>

namespace corvanta::playback {

/// One stored video file: every frame of it can be found by its number or time and decoded, exactly.
///
/// Frames decoded last are kept, so that stepping back needs a decoding from the key frame only now and then. Used on
/// one thread.
class MediaFile final {
public:
    using microseconds = std::chrono::microseconds;

    struct Options {
        int threads = 1;                     ///< that decode at once
        std::size_t keptBytes = 48ULL << 20; ///< of frames decoded last
    };
    /// Asked between two frames; true ends a decoding early.
    using Interrupted = std::function<bool()>;

    MediaFile() = default;
    MediaFile(const MediaFile&) = delete;
    MediaFile& operator=(const MediaFile&) = delete;

    OpenError open(const std::filesystem::path& file, Options options);

    /// False for a file that was never finished or was cut off; what is there can be played all the same.
    bool isComplete() const { return source_->stream().complete; }
    std::size_t frameCount() const { return index_->frameCount(); }
    microseconds duration() const { return index_->duration(); }
    microseconds period() const { return index_->period(); }
    /// Frames a second, on the average.
    double frameRate() const;
    /// As the container says; a default one where only the pictures tell.
    video::FrameSize size() const;

    /// The frame that is seen at a time, and when a frame begins to be seen.
    std::size_t frameAt(microseconds time) { return index_->frameAt(time); }
    microseconds beginOf(std::size_t frame) { return index_->beginOf(frame); }
    /// The frame from which decoding begins for a frame that is not in reach otherwise.
    std::size_t keyFrameBefore(std::size_t frame);
    /// How many frames must be decoded until a frame is there; 0 when it is kept.
    std::size_t framesToDecode(std::size_t frame);

    /// A frame's picture. Where it is damaged, the last one before it that can be had of its group. Null when there
    /// is none, or when it was interrupted.
    SharedPicture decode(std::size_t frame, const Interrupted& interrupted = {});

private:
    struct Kept {
        std::size_t frame = 0;
        std::size_t bytes = 0;
        Frame picture;
    };
    const Kept* find(std::size_t frame) const;
    const Kept* lastBefore(std::size_t frame) const;
    bool reaches(std::size_t frame);
    std::size_t nextFrame() const;
    void beginAt(std::size_t group);
    bool takeDecoded();
    void feedNext();
    void keep(FrameDecoder::Decoded decoded);

    Options options_;
    std::unique_ptr<PacketSource> source_;
    std::unique_ptr<FrameIndex> index_; ///< of `source_`
    FrameDecoder decoder_;
    FrameConverter converter_;
    Packet packet_ = newPacket();
    std::deque<Kept> kept_; ///< in the order of decoding, of one run of the decoder
    std::size_t keptBytes_ = 0;
    bool running_ = false;                 ///< the decoder was begun and not finished
    std::size_t beganAt_ = 0;              ///< the group where the decoder was begun last
    std::size_t nextEntry_ = 0;            ///< to be fed next, while it runs
    std::optional<std::size_t> lastFrame_; ///< that came out last since it was begun
};

} // namespace corvanta::playback
