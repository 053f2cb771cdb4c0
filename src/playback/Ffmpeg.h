#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavcodec/bsf.h>
#include <libavformat/avformat.h>
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

#include <memory>

/// Owners for what FFmpeg's libraries hand out.
namespace corvanta::playback {

struct FfmpegDeleter {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVCodecParameters* parameters) const { avcodec_parameters_free(&parameters); }
    void operator()(AVCodecParserContext* parser) const { av_parser_close(parser); }
    void operator()(AVFormatContext* input) const { avformat_close_input(&input); }
    void operator()(AVBSFContext* filter) const { av_bsf_free(&filter); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};

using CodecContext = std::unique_ptr<AVCodecContext, FfmpegDeleter>;
using CodecParameters = std::unique_ptr<AVCodecParameters, FfmpegDeleter>;
using Parser = std::unique_ptr<AVCodecParserContext, FfmpegDeleter>;
using InputContext = std::unique_ptr<AVFormatContext, FfmpegDeleter>;
using BitstreamFilter = std::unique_ptr<AVBSFContext, FfmpegDeleter>;
using Frame = std::unique_ptr<AVFrame, FfmpegDeleter>;
using Packet = std::unique_ptr<AVPacket, FfmpegDeleter>;
using Scaler = std::unique_ptr<SwsContext, FfmpegDeleter>;

inline Packet newPacket() {
    return Packet(av_packet_alloc());
}

} // namespace corvanta::playback
