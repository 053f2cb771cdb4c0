#pragma once

#include "playback/Ffmpeg.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace corvanta::playback {

/// One coded frame of a file, in the order in which they stand in it.
struct Entry {
    std::int64_t stamp = 0;    ///< when it is to be decoded, in ticks of the stream; does not fall
    std::int64_t position = 0; ///< byte of the file where it begins, -1 when that is not known
    std::int64_t size = 0;     ///< bytes, 0 when that is not known
    bool keyFrame = false;     ///< decoding can begin here
    bool hidden = false;       ///< decoded, never shown
};

/// Why a file cannot be played.
enum class OpenError {
    None,
    Missing,    ///< no such file, or it may not be read
    NotAVideo,  ///< no container that is known, or damaged from its beginning
    NoPictures, ///< a container without a video stream, or without a single frame
    Unfinished, ///< its table of frames was never written, and the frames cannot be found without it
    NoDecoder   ///< coded in a way that cannot be decoded
};

/// The coded frames of one video file: what there is, and reading them. Used on one thread.
class PacketSource {
public:
    /// The stream as a whole.
    struct Stream {
        CodecParameters codec;
        AVRational timeBase{1, 1'000'000}; ///< seconds of a tick
        AVRational frameRate{25, 1};       ///< frames a second, as the file says
        bool hasShowTimes = false;         ///< packets say when they are shown, not only when they are decoded
        bool complete = true;              ///< false: read without the table that a finished file ends with
    };

    PacketSource() = default;
    PacketSource(const PacketSource&) = delete;
    PacketSource& operator=(const PacketSource&) = delete;
    virtual ~PacketSource() = default;

    const Stream& stream() const { return stream_; }
    /// At least one, the first of them a key frame.
    const std::vector<Entry>& entries() const { return entries_; }

    /// Reads an entry into `packet`, its stamps in ticks of the stream. False when the file does not give it: then it
    /// may still give others. Entries that follow each other are read without seeking.
    virtual bool read(std::size_t entry, AVPacket& packet) = 0;

protected:
    /// Drops what stands before the first key frame and what lies beyond the file's end; false when nothing is left.
    bool tidyEntries(std::int64_t fileSize);

    Stream stream_;
    std::vector<Entry> entries_;
};

/// Opens a file: finished ones by their table of frames, AVI files without one by walking through them. Null with an
/// error otherwise.
std::unique_ptr<PacketSource> openPackets(const std::filesystem::path& file, OpenError& error);

} // namespace corvanta::playback
