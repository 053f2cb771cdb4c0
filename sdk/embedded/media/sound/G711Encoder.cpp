#include "media/sound/G711Encoder.h"

#include "media/sound/Talk.h"

#include <algorithm>

namespace ipncsdk::media {

namespace {

CodecContext openEncoder(AVCodecID id, int rate) {
    const AVCodec* codec = avcodec_find_encoder(id);
    CodecContext context(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (context == nullptr) {
        return nullptr;
    }
    context->sample_fmt = AV_SAMPLE_FMT_S16;
    context->sample_rate = rate;
    context->thread_count = 1;
    av_channel_layout_default(&context->ch_layout, 1);
    return avcodec_open2(context.get(), codec, nullptr) == 0 ? std::move(context) : nullptr;
}

} // namespace

G711Encoder::G711Encoder(AVCodecID codec, int rate)
    : rate_(rate)
    , context_(openEncoder(codec, rate))
    , frame_(av_frame_alloc())
    , packet_(av_packet_alloc()) {}

std::span<const std::uint8_t> G711Encoder::encode(std::span<const std::int16_t> samples) {
    if (!isReady()) {
        return {};
    }
    AVChannelLayout layout{};
    av_channel_layout_default(&layout, 1);
    const auto* plane = reinterpret_cast<const std::uint8_t*>(samples.data());
    const auto fitting = converter_.convert({layout, AV_SAMPLE_FMT_S16, Talk::rate}, &plane,
                                            static_cast<int>(samples.size()), {rate_, 1});
    if (fitting.empty()) {
        return {};
    }
    av_frame_unref(frame_.get());
    frame_->format = AV_SAMPLE_FMT_S16;
    frame_->sample_rate = rate_;
    frame_->nb_samples = static_cast<int>(fitting.size());
    if (av_channel_layout_copy(&frame_->ch_layout, &layout) < 0 || av_frame_get_buffer(frame_.get(), 0) < 0) {
        return {};
    }
    std::copy(fitting.begin(), fitting.end(), reinterpret_cast<std::int16_t*>(frame_->data[0]));
    av_packet_unref(packet_.get());
    if (avcodec_send_frame(context_.get(), frame_.get()) < 0 ||
        avcodec_receive_packet(context_.get(), packet_.get()) < 0) {
        return {};
    }
    return {packet_->data, static_cast<std::size_t>(packet_->size)};
}

} // namespace ipncsdk::media
