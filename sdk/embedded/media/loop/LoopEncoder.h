#pragma once

#include "media/AnnexB.h"
#include "media/Ffmpeg.h"
#include "media/Picture.h"
#include "media/loop/LoopFormat.h"

#include <optional>

namespace ipncsdk::media {

/// Encodes a loop's pictures to H.264: no B frames, a key frame with SPS and PPS at every `loopGopLength` frames,
/// full range. One thread.
class LoopEncoder final {
public:
    LoopEncoder(int width, int height);
    LoopEncoder(const LoopEncoder&) = delete;
    LoopEncoder& operator=(const LoopEncoder&) = delete;

    /// False when there is no encoder; then nothing else may be called.
    bool ready() const { return context_ != nullptr; }

    /// Encodes the next picture (of the size given) and appends it to `gop`; false when the encoder failed.
    bool encode(const Picture& picture, Gop& gop);

private:
    CodecContext context_;
    Frame frame_;
    Packet packet_;
    AnnexB normaliser_;
    std::int64_t next_ = 0; ///< number of the next frame
};

} // namespace ipncsdk::media
