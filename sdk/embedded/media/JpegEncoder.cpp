#include "media/JpegEncoder.h"

#include "media/Ffmpeg.h"
#include "media/PictureConverter.h"

extern "C" {
#include <libavutil/imgutils.h>
}

#include <algorithm>

namespace ipncsdk::media {

namespace {

/// The encoder's scale runs from 1 (best) to 31.
constexpr int quality = 3;

std::vector<std::uint8_t> encode(const Picture& picture) {
    const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_MJPEG);
    const CodecContext context(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    const Frame frame(av_frame_alloc());
    const Packet packet(av_packet_alloc());
    if (context == nullptr || frame == nullptr || packet == nullptr) {
        return {};
    }
    context->width = frame->width = picture.width;
    context->height = frame->height = picture.height;
    context->pix_fmt = AV_PIX_FMT_YUVJ420P;
    context->color_range = frame->color_range = AVCOL_RANGE_JPEG;
    context->time_base = {1, 25};
    context->thread_count = 1;
    context->flags |= AV_CODEC_FLAG_QSCALE;
    context->global_quality = frame->quality = FF_QP2LAMBDA * quality;
    frame->format = context->pix_fmt;
    if (avcodec_open2(context.get(), codec, nullptr) < 0 || av_frame_get_buffer(frame.get(), 0) < 0) {
        return {};
    }
    for (int plane = 0; plane < 3; ++plane) {
        const int width = plane == 0 ? picture.width : picture.width / 2;
        const int height = plane == 0 ? picture.height : picture.height / 2;
        av_image_copy_plane(frame->data[plane], frame->linesize[plane], picture.plane(plane), width, width, height);
    }
    if (avcodec_send_frame(context.get(), frame.get()) < 0 ||
        avcodec_receive_packet(context.get(), packet.get()) < 0) {
        return {};
    }
    return {packet->data, packet->data + packet->size};
}

} // namespace

std::vector<std::uint8_t> encodeJpeg(const Picture& picture, int widest) {
    if (picture.empty()) {
        return {};
    }
    if (widest <= 0 || picture.width <= widest) {
        return encode(picture);
    }
    const int width = std::max(2, widest & ~1);
    const int height =
        std::max(2, static_cast<int>(static_cast<std::int64_t>(picture.height) * width / picture.width) & ~1);
    Picture smaller;
    return PictureConverter().scale(picture, width, height, smaller) ? encode(smaller) : std::vector<std::uint8_t>();
}

} // namespace ipncsdk::media
