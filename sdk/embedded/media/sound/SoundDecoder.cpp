#include "media/sound/SoundDecoder.h"

#include <algorithm>

namespace ipncsdk::media {

namespace {

bool isKnown(AVCodecID codec) {
    return codec == AV_CODEC_ID_AAC || codec == AV_CODEC_ID_AAC_LATM || codec == AV_CODEC_ID_PCM_ALAW ||
           codec == AV_CODEC_ID_PCM_MULAW;
}

CodecContext openDecoder(const AVCodecParameters& parameters) {
    const AVCodec* codec = isKnown(parameters.codec_id) ? avcodec_find_decoder(parameters.codec_id) : nullptr;
    CodecContext context(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (context == nullptr || avcodec_parameters_to_context(context.get(), &parameters) < 0) {
        return nullptr;
    }
    context->thread_count = 1;
    return avcodec_open2(context.get(), codec, nullptr) == 0 ? std::move(context) : nullptr;
}

} // namespace

bool SoundDecoder::canDecode(const AVCodecParameters& parameters) {
    return parameters.codec_type == AVMEDIA_TYPE_AUDIO && openDecoder(parameters) != nullptr;
}

SoundDecoder::SoundDecoder(const AVCodecParameters& parameters)
    : context_(openDecoder(parameters))
    , frame_(av_frame_alloc()) {}

void SoundDecoder::feed(const AVPacket& packet) {
    // An empty packet would tell the decoder that the stream has ended.
    if (context_ != nullptr && packet.size > 0 && avcodec_send_packet(context_.get(), &packet) < 0) {
        ++damaged_;
    }
}

bool SoundDecoder::take(SoundBlock& block) {
    while (context_ != nullptr) {
        const int result = avcodec_receive_frame(context_.get(), frame_.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return false;
        }
        if (result < 0) {
            ++damaged_;
            return false;
        }
        const SoundConverter::Output output{std::clamp(frame_->sample_rate, lowestSoundRate, highestSoundRate),
                                            std::clamp(frame_->ch_layout.nb_channels, 1, 2)};
        const auto samples =
            converter_.convert({frame_->ch_layout, static_cast<AVSampleFormat>(frame_->format), frame_->sample_rate},
                               frame_->extended_data, frame_->nb_samples, output);
        av_frame_unref(frame_.get());
        if (!samples.empty()) {
            block = {samples.data(), samples.size() / static_cast<std::size_t>(output.channels), output.rate,
                     output.channels};
            return true;
        }
    }
    return false;
}

} // namespace ipncsdk::media
