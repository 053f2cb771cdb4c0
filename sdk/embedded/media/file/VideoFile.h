#pragma once

#include "media/AnnexB.h"
#include "media/Ffmpeg.h"
#include "media/Stream.h"
#include "media/file/FileClock.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace ipncsdk::media {

/// A recorded video file, open for reading from its first key frame to its end. Used on one thread.
class VideoFile final {
public:
    struct Unit {
        CodedFrame frame;                 ///< valid until the next call; its time is that of showing
        std::chrono::microseconds due{0}; ///< when it is to be handed out, on the scale of the clock
    };
    enum class Read { Unit, Sound, End, Failed };
    /// What a file was found to be. Its first key frame tells whether another one is the same.
    struct Known {
        std::vector<std::uint8_t> keyFrame;
        StreamParameters parameters;
        std::chrono::microseconds period{0}; ///< from one frame to the next, on the average
        int reordering = 0;                  ///< frames that a picture may wait for its turn to be shown
    };

    VideoFile() = default;
    VideoFile(const VideoFile&) = delete;
    VideoFile& operator=(const VideoFile&) = delete;

    /// Opens a file and reads up to its first key frame. `None`; `StreamNotFound` when there is no such file, and
    /// `CodecNotSupported` when it is no video or holds no H.264. Looks no further into the file than that takes.
    /// `known` is what an earlier one was (or empty), and then what this one is; the type of connection stays empty.
    StreamError open(const std::filesystem::path& file, Known& known);

    /// The next unit in the order of the file, `open`'s key frame first. Its times are taken from `clock`. Sound that
    /// stands between the units is told of as well.
    Read next(FileClock& clock, Unit& unit);

    /// The file's sound, where it has some that can be decoded; null otherwise.
    const AVCodecParameters* soundParameters() const { return sound_ == nullptr ? nullptr : sound_->codecpar; }
    /// After `Read::Sound`: its packet, valid until the next call.
    const AVPacket& soundPacket() const { return *packet_; }
    /// After `Read::Sound`: its stamp in the file, on the scale of the units'.
    std::optional<std::chrono::microseconds> soundStamp() const;

    /// False once the file is gone or has become shorter than it was when it was opened.
    bool isWhole() const;

private:
    StreamError openContainer();
    StreamError findKeyFrame(Known& known);
    Read readPacket();
    bool describe(const AnnexB::AccessUnit& keyFrame, Known& known) const;
    static std::optional<std::chrono::microseconds> stamp(const AVStream& stream, std::int64_t ticks);

    std::filesystem::path file_;
    std::uintmax_t size_ = 0; ///< bytes when it was opened
    FormatContext input_;
    AVStream* stream_ = nullptr;
    AVStream* sound_ = nullptr; ///< null when there is none that can be decoded
    Packet packet_;
    AnnexB normaliser_;
    std::optional<AnnexB::AccessUnit> unit_; ///< of `packet_`, which is to be handed out next
    bool pending_ = false;                   ///< `unit_` has not been handed out
};

} // namespace ipncsdk::media
