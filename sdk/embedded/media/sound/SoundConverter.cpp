#include "media/sound/SoundConverter.h"

#include <algorithm>

namespace ipncsdk::media {

SoundConverter::~SoundConverter() {
    av_channel_layout_uninit(&layout_);
}

bool SoundConverter::prepare(const Input& input, const Output& output) {
    const bool same = resampler_ != nullptr && input.format == format_ && input.rate == rate_ && output == output_ &&
                      av_channel_layout_compare(&input.layout, &layout_) == 0;
    if (same) {
        return true;
    }
    resampler_.reset();
    if (input.rate <= 0 || av_channel_layout_copy(&layout_, &input.layout) < 0) {
        return false;
    }
    format_ = input.format;
    rate_ = input.rate;
    output_ = output;
    AVChannelLayout target{};
    av_channel_layout_default(&target, output.channels);
    SwrContext* made = nullptr;
    const int result =
        swr_alloc_set_opts2(&made, &target, AV_SAMPLE_FMT_S16, output.rate, &layout_, format_, rate_, 0, nullptr);
    resampler_.reset(made);
    if (result < 0 || swr_init(made) < 0) {
        resampler_.reset();
    }
    return resampler_ != nullptr;
}

std::span<const std::int16_t> SoundConverter::convert(const Input& input, const std::uint8_t* const* planes,
                                                      int frames, const Output& output) {
    if (frames <= 0 || !prepare(input, output)) {
        return {};
    }
    const int most = swr_get_out_samples(resampler_.get(), frames);
    if (most <= 0) {
        return {};
    }
    const auto channels = static_cast<std::size_t>(output.channels);
    samples_.resize(static_cast<std::size_t>(most) * channels);
    auto* out = reinterpret_cast<std::uint8_t*>(samples_.data());
    // The library only reads what comes in; its type says so in later versions alone.
    auto** in = const_cast<const std::uint8_t**>(planes);
    const int count = swr_convert(resampler_.get(), &out, most, in, frames);
    return {samples_.data(), static_cast<std::size_t>(std::max(count, 0)) * channels};
}

} // namespace ipncsdk::media
