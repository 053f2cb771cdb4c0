#pragma once

#include "media/Ffmpeg.h"

#include <optional>
#include <string>
#include <string_view>

namespace ipncsdk::media {

/// The way for sound to a camera, as its description (SDP) offers it.
struct BackChannelMedia {
    std::string control;                     ///< where to set it up
    std::string aggregate;                   ///< where to play the whole
    int payloadType = 0;                     ///< 0 to 127
    AVCodecID codec = AV_CODEC_ID_PCM_MULAW; ///< or AV_CODEC_ID_PCM_ALAW
    int rate = 8000;                         ///< samples a second, 8000 to 48000

    /// The first way that takes one channel of G.711. In a camera's description such a one stands as "sendonly": it
    /// is written for whoever reads it. `base` is what relative addresses start from. Nothing when there is none.
    static std::optional<BackChannelMedia> choose(std::string_view description, std::string_view base);
};

} // namespace ipncsdk::media
