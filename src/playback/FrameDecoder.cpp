#include "playback/FrameDecoder.h"

#include <algorithm>

namespace corvanta::playback {

bool FrameDecoder::open(const AVCodecParameters& codec, int threads, int reordering) {
    const AVCodec* const decoder = avcodec_find_decoder(codec.codec_id);
    context_.reset(decoder != nullptr ? avcodec_alloc_context3(decoder) : nullptr);
    if (context_ == nullptr || avcodec_parameters_to_context(context_.get(), &codec) < 0)
        return false;
    context_->thread_count = std::max(threads, 1);
    context_->has_b_frames = std::max(context_->has_b_frames, reordering);
    context_->max_pixels = 16384LL * 16384LL;
    return avcodec_open2(context_.get(), decoder, nullptr) >= 0;
}

void FrameDecoder::restart() {
    avcodec_flush_buffers(context_.get());
}

void FrameDecoder::feed(AVPacket& packet, std::size_t entry) {
    // Decoders hand a packet's time on to its frame, whenever that comes out.
    packet.pts = static_cast<std::int64_t>(entry);
    packet.dts = AV_NOPTS_VALUE;
    // Whoever feeds takes everything out first, so that there is always room.
    avcodec_send_packet(context_.get(), &packet);
}

void FrameDecoder::finish() {
    avcodec_send_packet(context_.get(), nullptr);
}

std::optional<FrameDecoder::Decoded> FrameDecoder::take() {
    Decoded decoded{Frame(av_frame_alloc()), 0};
    if (decoded.frame == nullptr || avcodec_receive_frame(context_.get(), decoded.frame.get()) < 0 ||
        decoded.frame->pts < 0)
        return std::nullopt;
    decoded.entry = static_cast<std::size_t>(decoded.frame->pts);
    return decoded;
}

} // namespace corvanta::playback
