#pragma once

#include "media/Ffmpeg.h"
#include "media/sound/SoundConverter.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ipncsdk::media {

/// Makes G.711 of one channel out of what is said (`Talk::rate`), in another rate where that is wanted. One object
/// belongs to one stream.
class G711Encoder final {
public:
    /// `codec` is AV_CODEC_ID_PCM_ALAW or AV_CODEC_ID_PCM_MULAW; `rate` 8000 to 48000 samples a second.
    G711Encoder(AVCodecID codec, int rate);
    G711Encoder(const G711Encoder&) = delete;
    G711Encoder& operator=(const G711Encoder&) = delete;

    bool isReady() const { return context_ != nullptr && frame_ != nullptr && packet_ != nullptr; }
    /// A byte a sample, valid until the next call. Now and then a few more or less than come in; empty when the
    /// library fails.
    std::span<const std::uint8_t> encode(std::span<const std::int16_t> samples);

private:
    const int rate_;
    CodecContext context_;
    Frame frame_;
    Packet packet_;
    SoundConverter converter_;
};

} // namespace ipncsdk::media
