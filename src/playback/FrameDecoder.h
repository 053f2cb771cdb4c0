#pragma once

#include "playback/Ffmpeg.h"

#include <cstddef>
#include <optional>

namespace corvanta::playback {

/// Decodes the packets of one stream; what comes out says which entry it was. Used on one thread.
class FrameDecoder final {
public:
    struct Decoded {
        Frame frame;
        std::size_t entry = 0;
    };

    /// `threads` work on it at once; `reordering` is the least number of frames that it holds back to show them in
    /// their order.
    bool open(const AVCodecParameters& codec, int threads, int reordering);

    /// Forgets everything: the next packet is a key frame.
    void restart();
    /// Takes the packet of an entry; its stamps are lost. Damaged ones are left out.
    void feed(AVPacket& packet, std::size_t entry);
    /// No more packets come before the next `restart`; what is held back comes out.
    void finish();
    /// The next decoded frame, if there is one already.
    std::optional<Decoded> take();

private:
    CodecContext context_;
};

} // namespace corvanta::playback
