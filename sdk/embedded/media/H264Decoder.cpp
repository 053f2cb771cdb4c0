#include "media/H264Decoder.h"

#include <limits>

namespace ipncsdk::media {

namespace {

/// Somewhat above 8192 x 4320; a stream that claims more is refused instead of filling the memory.
constexpr std::int64_t mostPixels = std::int64_t{8192} * 4352;

CodecContext openDecoder() {
    const AVCodec* codec = avcodec_find_decoder(AV_CODEC_ID_H264);
    CodecContext context(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (context == nullptr) {
        return nullptr;
    }
    // One thread: the machine's cores serve many streams, and a picture comes out in the call that brought it.
    context->thread_count = 1;
    context->flags |= AV_CODEC_FLAG_LOW_DELAY;
    context->max_pixels = mostPixels;
    context->time_base = context->pkt_timebase = {1, 1'000'000};
    return avcodec_open2(context.get(), codec, nullptr) == 0 ? std::move(context) : nullptr;
}

} // namespace

H264Decoder::H264Decoder()
    : context_(openDecoder())
    , packet_(av_packet_alloc())
    , frame_(av_frame_alloc()) {}

void H264Decoder::feed(const CodedFrame& unit) {
    if (context_ == nullptr || unit.size > static_cast<std::size_t>(std::numeric_limits<int>::max() / 2)) {
        return;
    }
    // Without a reference count of its own the packet's bytes are copied, with the padding that decoding needs.
    packet_->data = const_cast<std::uint8_t*>(unit.data);
    packet_->size = static_cast<int>(unit.size);
    // The order of decoding has no times of its own: with pictures shown in another order they would not be these.
    packet_->pts = unit.time.count();
    packet_->dts = AV_NOPTS_VALUE;
    packet_->flags = unit.keyFrame ? AV_PKT_FLAG_KEY : 0;
    if (avcodec_send_packet(context_.get(), packet_.get()) < 0) {
        ++damaged_;
    }
    packet_->data = nullptr;
    packet_->size = 0;
}

void H264Decoder::finish() {
    if (context_ != nullptr) {
        avcodec_send_packet(context_.get(), nullptr);
    }
}

bool H264Decoder::take(Picture& picture) {
    while (context_ != nullptr) {
        const int result = avcodec_receive_frame(context_.get(), frame_.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return false;
        }
        if (result < 0) {
            ++damaged_;
            return false;
        }
        damaged_ += frame_->decode_error_flags != 0 ? 1 : 0;
        const bool good = converter_.convert(*frame_, picture);
        picture.time = std::chrono::microseconds(frame_->best_effort_timestamp);
        av_frame_unref(frame_.get());
        if (good) {
            return true;
        }
        ++damaged_;
    }
    return false;
}

double H264Decoder::frameRate() const {
    return context_ == nullptr || context_->framerate.den == 0 ? 0 : av_q2d(context_->framerate);
}

} // namespace ipncsdk::media
