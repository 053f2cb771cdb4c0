#include "playback/FrameConverter.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <array>
#include <utility>

namespace corvanta::playback {

namespace {

/// Formats that carry their range in their name, and the same without it.
constexpr std::array<std::pair<AVPixelFormat, AVPixelFormat>, 4> fullRangeFormats{{
    {AV_PIX_FMT_YUVJ420P, AV_PIX_FMT_YUV420P},
    {AV_PIX_FMT_YUVJ422P, AV_PIX_FMT_YUV422P},
    {AV_PIX_FMT_YUVJ444P, AV_PIX_FMT_YUV444P},
    {AV_PIX_FMT_YUVJ440P, AV_PIX_FMT_YUV440P},
}};

/// Rounded to within one level; in 256ths, so that everything stays within 16 bits and compilers put many samples
/// into one register.
template <int Least, int Most>
void stretchRow(const std::uint8_t* from, std::uint8_t* to, int count, std::uint16_t factor, std::uint16_t offset) {
    for (int index = 0; index < count; ++index) {
        const auto value = static_cast<std::uint16_t>(std::clamp<int>(from[index], Least, Most) - Least);
        to[index] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(value * factor + offset) >> 8);
    }
}

void copyPlane(const AVFrame& frame, int plane, int width, int height, bool fullRange, std::uint8_t* to) {
    const std::uint8_t* from = frame.data[plane];
    if (fullRange) {
        av_image_copy_plane(to, width, from, frame.linesize[plane], width, height);
        return;
    }
    for (int row = 0; row < height; ++row, from += frame.linesize[plane], to += width) {
        if (plane == 0)
            stretchRow<16, 235>(from, to, width, 298, 128); // 298 / 256 is 255 / 219
        else
            stretchRow<16, 240>(from, to, width, 291, 304); // 291 / 256 is 255 / 224; 128 stays 128
    }
}

} // namespace

SharedPicture FrameConverter::convert(const AVFrame& frame) {
    const int width = frame.width & ~1;
    const int height = frame.height & ~1;
    const video::FrameSize size{static_cast<unsigned>(std::max(width, 0)),
                                static_cast<unsigned>(std::max(height, 0))};
    if (!video::isUsable(size))
        return nullptr;
    auto picture = std::make_shared<Picture>();
    picture->size = size;
    picture->bytes.resize(video::byteCount(size));
    auto format = static_cast<AVPixelFormat>(frame.format);
    bool fullRange = frame.color_range == AVCOL_RANGE_JPEG;
    for (const auto& [named, plain] : fullRangeFormats) {
        if (format == named) {
            format = plain;
            fullRange = true;
        }
    }
    if (format != AV_PIX_FMT_YUV420P)
        return scale(frame, {width, height, format, fullRange}, *picture) ? picture : nullptr;
    std::uint8_t* to = picture->bytes.data();
    copyPlane(frame, 0, width, height, fullRange, to);
    to += static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    copyPlane(frame, 1, width / 2, height / 2, fullRange, to);
    to += static_cast<std::size_t>(width / 2) * static_cast<std::size_t>(height / 2);
    copyPlane(frame, 2, width / 2, height / 2, fullRange, to);
    return picture;
}

bool FrameConverter::prepare(const Setup& setup) {
    if (scaler_ != nullptr && setup == setup_)
        return true;
    scaler_.reset(sws_isSupportedInput(setup.format) != 0 ? sws_alloc_context() : nullptr);
    if (scaler_ == nullptr)
        return false;
    setup_ = setup;
    // The ranges must be known before the scaler is set up: it takes short cuts that leave them out otherwise.
    const std::array<std::pair<const char*, int>, 9> options{{{"srcw", setup.width},
                                                              {"srch", setup.height},
                                                              {"src_format", setup.format},
                                                              {"src_range", setup.fullRange ? 1 : 0},
                                                              {"dstw", setup.width},
                                                              {"dsth", setup.height},
                                                              {"dst_format", AV_PIX_FMT_YUV420P},
                                                              {"dst_range", 1},
                                                              {"sws_flags", SWS_AREA | SWS_ACCURATE_RND}}};
    for (const auto& [name, value] : options)
        av_opt_set_int(scaler_.get(), name, value, 0);
    if (sws_init_context(scaler_.get(), nullptr, nullptr) < 0)
        scaler_.reset();
    return scaler_ != nullptr;
}

bool FrameConverter::scale(const AVFrame& frame, const Setup& setup, Picture& picture) {
    if (!prepare(setup))
        return false;
    const std::size_t luma = static_cast<std::size_t>(setup.width) * static_cast<std::size_t>(setup.height);
    std::uint8_t* const to = picture.bytes.data();
    const std::array<std::uint8_t*, 3> planes{to, to + luma, to + luma + luma / 4};
    const std::array<int, 3> strides{setup.width, setup.width / 2, setup.width / 2};
    return sws_scale(scaler_.get(), frame.data, frame.linesize, 0, setup.height, planes.data(), strides.data()) ==
           setup.height;
}

} // namespace corvanta::playback
