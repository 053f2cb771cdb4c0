#pragma once

#include "media/Ffmpeg.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ipncsdk::media {

/// Brings sound into interleaved 16-bit samples of one or two channels. Follows a change of what comes in. One
/// object belongs to one stream.
class SoundConverter final {
public:
    /// How samples come in, as the library names it; `layout` is copied and only looked at during the call.
    struct Input {
        const AVChannelLayout& layout;
        AVSampleFormat format;
        int rate;
    };
    struct Output {
        int rate;
        int channels;
        friend bool operator==(const Output&, const Output&) = default;
    };

    SoundConverter() = default;
    ~SoundConverter();
    SoundConverter(const SoundConverter&) = delete;
    SoundConverter& operator=(const SoundConverter&) = delete;

    /// Converts `frames` samples of each channel; `planes` are as many pointers as the format has planes. Between
    /// equal rates nothing is resampled. The result is valid until the next call, and empty when the library refuses
    /// or keeps what came for the next time.
    std::span<const std::int16_t> convert(const Input& input, const std::uint8_t* const* planes, int frames,
                                          const Output& output);

private:
    bool prepare(const Input& input, const Output& output);

    Resampler resampler_;
    AVChannelLayout layout_{}; ///< of the input that `resampler_` was made for, as the two below
    AVSampleFormat format_ = AV_SAMPLE_FMT_NONE;
    int rate_ = 0;
    Output output_{0, 0};
    std::vector<std::int16_t> samples_;
};

} // namespace ipncsdk::media
