#pragma once

#include "playback/ClipExport.h"
#include "playback/Ffmpeg.h"

#include <filesystem>
#include <optional>

namespace corvanta::playback {

/// A new video file with one stream of coded frames. It has another name until `finish`; without that nothing is left
/// of it. One thread.
class ClipWriter final {
public:
    using microseconds = std::chrono::microseconds;

    explicit ClipWriter(std::filesystem::path target);
    ~ClipWriter();
    ClipWriter(const ClipWriter&) = delete;
    ClipWriter& operator=(const ClipWriter&) = delete;

    /// Takes what the next packets are. The first call opens the file; later ones want the same coding and size.
    ExportError begin(const AVCodecParameters& codec, AVRational frameRate);
    /// Writes a packet of what was begun, decoded and shown at these times of the clip. Packets come in the order of
    /// decoding.
    ExportError write(AVPacket& packet, microseconds decode, microseconds show);
    ExportError finish();

private:
    ExportError openFilter(const AVCodecParameters& codec);
    ExportError openFile(AVPacket& firstPacket);
    bool takeHeader(AVStream& stream, AVPacket& firstPacket) const;
    ExportError writeFiltered(AVPacket& packet);

    std::filesystem::path target_;
    std::filesystem::path unfinished_;
    AVFormatContext* output_ = nullptr;
    CodecParameters codec_; ///< of the first packets, as they are written
    AVRational frameRate_{25, 1};
    BitstreamFilter filter_; ///< into a stream of start codes, where the source has none
    Packet filtered_ = newPacket();
    bool headerWritten_ = false;
    std::int64_t lastDecode_ = 0; ///< in ticks of the stream
    bool anyWritten_ = false;
};

} // namespace corvanta::playback
