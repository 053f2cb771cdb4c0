#include "media/loop/LoopEncoder.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
}

#include <string>

namespace ipncsdk::media {

namespace {

CodecContext openEncoder(int width, int height) {
    const AVCodec* codec = avcodec_find_encoder_by_name("libx264");
    CodecContext context(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (context == nullptr) {
        return nullptr;
    }
    context->width = width;
    context->height = height;
    context->pix_fmt = AV_PIX_FMT_YUV420P;
    context->color_range = AVCOL_RANGE_JPEG;
    context->colorspace = AVCOL_SPC_SMPTE170M;
    context->time_base = {1, loopFrameRate};
    context->framerate = {loopFrameRate, 1};
    context->gop_size = loopGopLength;
    context->keyint_min = loopGopLength;
    context->max_b_frames = 0;
    context->thread_count = 1;
    // No look-ahead, so that each picture comes out at once; quality-driven, with a lid on what busy scenes cost. The
    // light stream leaves out what costs most to decode, for it is what a wall of cameras shows: that halves the work
    // for little more data.
    const bool light = width <= 640;
    av_opt_set(context->priv_data, "preset", "superfast", 0);
    av_opt_set(context->priv_data, "tune", "zerolatency", 0);
    av_opt_set(context->priv_data, "crf", light ? "28" : "26", 0);
    const std::string parameters = "scenecut=0:sliced-threads=0:aud=0:repeat-headers=1";
    av_opt_set(context->priv_data, "x264-params", (light ? parameters + ":cabac=0:no-deblock=1" : parameters).c_str(),
               0);
    context->rc_max_rate = light ? 1'200'000 : 4'000'000;
    context->rc_buffer_size = static_cast<int>(context->rc_max_rate);
    return avcodec_open2(context.get(), codec, nullptr) == 0 ? std::move(context) : nullptr;
}

} // namespace

LoopEncoder::LoopEncoder(int width, int height)
    : context_(openEncoder(width, height))
    , frame_(av_frame_alloc())
    , packet_(av_packet_alloc()) {}

bool LoopEncoder::encode(const Picture& picture, Gop& gop) {
    av_frame_unref(frame_.get());
    frame_->format = context_->pix_fmt;
    frame_->color_range = context_->color_range;
    frame_->width = picture.width;
    frame_->height = picture.height;
    frame_->pts = next_;
    frame_->pict_type = next_ % loopGopLength == 0 ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
    if (av_frame_get_buffer(frame_.get(), 0) != 0) {
        return false;
    }
    for (int plane = 0; plane < 3; ++plane) {
        const int width = plane == 0 ? picture.width : picture.width / 2;
        const int height = plane == 0 ? picture.height : picture.height / 2;
        av_image_copy_plane(frame_->data[plane], frame_->linesize[plane], picture.plane(plane), width, width, height);
    }
    ++next_;
    if (avcodec_send_frame(context_.get(), frame_.get()) != 0 ||
        avcodec_receive_packet(context_.get(), packet_.get()) != 0) {
        return false;
    }
    const auto unit = normaliser_.normalise({packet_->data, static_cast<std::size_t>(packet_->size)});
    if (unit) {
        gop.bytes.insert(gop.bytes.end(), unit->bytes.begin(), unit->bytes.end());
        gop.sizes.push_back(static_cast<std::uint32_t>(unit->bytes.size()));
    }
    av_packet_unref(packet_.get());
    return unit.has_value();
}

} // namespace ipncsdk::media
