#pragma once

#include "media/Ffmpeg.h"
#include "media/Stream.h"
#include "media/sound/SoundConverter.h"

namespace ipncsdk::media {

/// Decodes the sound of one stream: AAC and G.711 (A-law and mu-law). Keeps the rate of the stream where that is one
/// in which sound may leave the SDK; more than two channels become two. One object belongs to one thread.
class SoundDecoder final {
public:
    /// Whether a decoder opens for these parameters.
    static bool canDecode(const AVCodecParameters& parameters);

    explicit SoundDecoder(const AVCodecParameters& parameters);
    SoundDecoder(const SoundDecoder&) = delete;
    SoundDecoder& operator=(const SoundDecoder&) = delete;

    /// Gives the decoder the next packet. A damaged one is counted and costs its own sound alone.
    void feed(const AVPacket& packet);

    /// Takes the next block that is ready, valid until the next call; false when there is none. To be asked after
    /// each `feed` until false.
    bool take(SoundBlock& block);

    /// How many packets or blocks were damaged so far.
    unsigned damaged() const { return damaged_; }

private:
    CodecContext context_; ///< null when there is no decoder; then nothing ever comes out
    Frame frame_;
    SoundConverter converter_;
    unsigned damaged_ = 0;
};

} // namespace ipncsdk::media
