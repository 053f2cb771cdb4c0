#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace ipncsdk::media {

struct FreeCodecContext {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct FreeFormatContext {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
struct FreeParserContext {
    void operator()(AVCodecParserContext* context) const { av_parser_close(context); }
};
struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FreeScaler {
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};
struct FreeResampler {
    void operator()(SwrContext* context) const { swr_free(&context); }
};

using CodecContext = std::unique_ptr<AVCodecContext, FreeCodecContext>;
using FormatContext = std::unique_ptr<AVFormatContext, FreeFormatContext>;
using ParserContext = std::unique_ptr<AVCodecParserContext, FreeParserContext>;
using Frame = std::unique_ptr<AVFrame, FreeFrame>;
using Packet = std::unique_ptr<AVPacket, FreePacket>;
using Scaler = std::unique_ptr<SwsContext, FreeScaler>;
using Resampler = std::unique_ptr<SwrContext, FreeResampler>;

/// What opening an input is told; what it did not take stays in it.
class FfmpegOptions {
public:
    FfmpegOptions() = default;
    ~FfmpegOptions() { av_dict_free(&dictionary); }
    FfmpegOptions(const FfmpegOptions&) = delete;
    FfmpegOptions& operator=(const FfmpegOptions&) = delete;
    void set(const char* key, const char* value) { av_dict_set(&dictionary, key, value, 0); }

    AVDictionary* dictionary = nullptr;
};

} // namespace ipncsdk::media
