#include "media/PictureConverter.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <array>
#include <utility>

namespace ipncsdk::media {

namespace {

bool isFullRange(const AVFrame& frame) {
    switch (frame.format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
    case AV_PIX_FMT_YUVJ440P:
        return true;
    default:
        return frame.color_range == AVCOL_RANGE_JPEG;
    }
}

/// The scaler's name for a format that carries its range beside it and not in its name.
AVPixelFormat withoutRange(AVPixelFormat format) {
    switch (format) {
    case AV_PIX_FMT_YUVJ420P:
        return AV_PIX_FMT_YUV420P;
    case AV_PIX_FMT_YUVJ422P:
        return AV_PIX_FMT_YUV422P;
    case AV_PIX_FMT_YUVJ444P:
        return AV_PIX_FMT_YUV444P;
    case AV_PIX_FMT_YUVJ440P:
        return AV_PIX_FMT_YUV440P;
    default:
        return format;
    }
}

// In 256ths. Volatile, so that compilers multiply: where they know the factor they take twice as many shifts and
// sums.
const volatile std::uint16_t lumaFactor = 298;
const volatile std::uint16_t chromaFactor = 291;

/// Everything stays within 16 bits without sign, so that compilers put many samples into one vector register.
template <int least, int most>
void stretch(const std::uint8_t* from, std::uint8_t* to, int count, std::uint16_t factor, std::uint16_t offset) {
    for (int index = 0; index < count; ++index) {
        const auto value = static_cast<std::uint16_t>(std::clamp<int>(from[index], least, most) - least);
        to[index] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(value * factor + offset) >> 8);
    }
}

} // namespace

void stretchLuma(const std::uint8_t* from, std::uint8_t* to, int count) {
    stretch<16, 235>(from, to, count, lumaFactor, 128);
}

void stretchChroma(const std::uint8_t* from, std::uint8_t* to, int count) {
    stretch<16, 240>(from, to, count, chromaFactor, 304);
}

bool PictureConverter::convert(const AVFrame& frame, Picture& picture) {
    const int width = frame.width & ~1;
    const int height = frame.height & ~1;
    if (width < 2 || height < 2) {
        return false;
    }
    picture.resize(width, height);
    const bool fullRange = isFullRange(frame);
    if (frame.format != AV_PIX_FMT_YUV420P && frame.format != AV_PIX_FMT_YUVJ420P) {
        return convertByScaler(frame, fullRange, picture);
    }
    for (int plane = 0; plane < 3; ++plane) {
        const int planeWidth = plane == 0 ? width : width / 2;
        const int planeHeight = plane == 0 ? height : height / 2;
        const std::uint8_t* from = frame.data[plane];
        std::uint8_t* to = picture.plane(plane);
        if (fullRange) {
            av_image_copy_plane(to, planeWidth, from, frame.linesize[plane], planeWidth, planeHeight);
            continue;
        }
        const auto stretch = plane == 0 ? stretchLuma : stretchChroma;
        for (int row = 0; row < planeHeight; ++row) {
            stretch(from, to, planeWidth);
            from += frame.linesize[plane];
            to += planeWidth;
        }
    }
    return true;
}

bool PictureConverter::prepareScaler(const ScalerSetup& setup) {
    if (scaler_ != nullptr && setup == setup_) {
        return true;
    }
    scaler_.reset(sws_alloc_context());
    if (scaler_ == nullptr) {
        return false;
    }
    setup_ = setup;
    // The ranges must be known before the scaler is set up: it takes short cuts that leave them out otherwise.
    const std::array<std::pair<const char*, int>, 9> options{{{"srcw", setup.fromWidth},
                                                              {"srch", setup.fromHeight},
                                                              {"src_format", withoutRange(setup.format)},
                                                              {"src_range", setup.fullRange ? 1 : 0},
                                                              {"dstw", setup.width},
                                                              {"dsth", setup.height},
                                                              {"dst_format", AV_PIX_FMT_YUV420P},
                                                              {"dst_range", 1},
                                                              {"sws_flags", SWS_AREA | SWS_ACCURATE_RND}}};
    for (const auto& [name, value] : options) {
        av_opt_set_int(scaler_.get(), name, value, 0);
    }
    if (sws_init_context(scaler_.get(), nullptr, nullptr) < 0) {
        scaler_.reset();
        return false;
    }
    return true;
}

bool PictureConverter::convertByScaler(const AVFrame& frame, bool fullRange, Picture& picture) {
    const auto format = static_cast<AVPixelFormat>(frame.format);
    if (sws_isSupportedInput(format) == 0 ||
        !prepareScaler({picture.width, picture.height, format, fullRange, picture.width, picture.height})) {
        return false;
    }
    const std::array<std::uint8_t*, 3> to{picture.plane(0), picture.plane(1), picture.plane(2)};
    const std::array<int, 3> strides{picture.width, picture.width / 2, picture.width / 2};
    return sws_scale(scaler_.get(), frame.data, frame.linesize, 0, picture.height, to.data(), strides.data()) ==
           picture.height;
}

bool PictureConverter::scale(const Picture& from, int width, int height, Picture& to) {
    to.resize(width, height);
    to.time = from.time;
    if (!prepareScaler({from.width, from.height, AV_PIX_FMT_YUV420P, true, width, height})) {
        return false;
    }
    const std::array<const std::uint8_t*, 3> source{from.plane(0), from.plane(1), from.plane(2)};
    const std::array<int, 3> sourceStrides{from.width, from.width / 2, from.width / 2};
    const std::array<std::uint8_t*, 3> target{to.plane(0), to.plane(1), to.plane(2)};
    const std::array<int, 3> targetStrides{width, width / 2, width / 2};
    return sws_scale(scaler_.get(), source.data(), sourceStrides.data(), 0, from.height, target.data(),
                     targetStrides.data()) == height;
}

} // namespace ipncsdk::media
