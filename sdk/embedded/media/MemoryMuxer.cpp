#include "media/MemoryMuxer.h"

#include "media/Ffmpeg.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace ipncsdk::media {

namespace {

#if LIBAVFORMAT_VERSION_MAJOR >= 61
using WrittenByte = const std::uint8_t;
#else
using WrittenByte = std::uint8_t;
#endif

/// A file in memory that a container writes to, back and forth.
struct MemoryFile {
    std::vector<std::uint8_t> bytes;
    std::size_t place = 0;

    static int write(void* self, WrittenByte* data, int size) {
        auto& file = *static_cast<MemoryFile*>(self);
        const auto count = static_cast<std::size_t>(size);
        file.bytes.resize(std::max(file.bytes.size(), file.place + count));
        std::copy(data, data + count, file.bytes.begin() + static_cast<std::ptrdiff_t>(file.place));
        file.place += count;
        return size;
    }
    static std::int64_t seek(void* self, std::int64_t offset, int whence) {
        auto& file = *static_cast<MemoryFile*>(self);
        const auto size = static_cast<std::int64_t>(file.bytes.size());
        if (whence == AVSEEK_SIZE) {
            return size;
        }
        const std::int64_t from = whence == SEEK_END ? size : static_cast<std::int64_t>(file.place);
        const std::int64_t place = whence == SEEK_SET ? offset : from + offset;
        if (place < 0) {
            return AVERROR(EINVAL);
        }
        file.place = static_cast<std::size_t>(place);
        return place;
    }
};

} // namespace

struct MemoryMuxer::Context {
    int frameRate = 25;
    AVFormatContext* format = nullptr;
    AVStream* stream = nullptr; ///< belongs to the format's context; null when nothing can be written
    AVIOContext* output = nullptr;
    MemoryFile file;
};

MemoryMuxer::MemoryMuxer(const char* format, int frameRate)
    : context_(std::make_unique<Context>()) {
    constexpr int bufferSize = 1 << 15;
    context_->frameRate = std::max(frameRate, 1);
    auto* const buffer = static_cast<std::uint8_t*>(av_malloc(bufferSize));
    context_->output =
        avio_alloc_context(buffer, bufferSize, 1, &context_->file, nullptr, MemoryFile::write, MemoryFile::seek);
    avformat_alloc_output_context2(&context_->format, nullptr, format, nullptr);
    if (context_->format != nullptr && context_->output != nullptr) {
        context_->format->pb = context_->output;
        context_->stream = avformat_new_stream(context_->format, nullptr);
    }
}

MemoryMuxer::~MemoryMuxer() {
    avformat_free_context(context_->format);
    if (context_->output != nullptr) {
        av_freep(&context_->output->buffer);
    }
    avio_context_free(&context_->output);
}

bool MemoryMuxer::begin(int width, int height, std::span<const std::uint8_t> head) {
    AVStream* const stream = context_->stream;
    if (stream == nullptr) {
        return false;
    }
    AVCodecParameters& parameters = *stream->codecpar;
    parameters.codec_type = AVMEDIA_TYPE_VIDEO;
    parameters.codec_id = AV_CODEC_ID_H264;
    parameters.format = AV_PIX_FMT_YUVJ420P;
    parameters.width = width;
    parameters.height = height;
    parameters.extradata = static_cast<std::uint8_t*>(av_mallocz(head.size() + AV_INPUT_BUFFER_PADDING_SIZE));
    if (parameters.extradata == nullptr) {
        return false;
    }
    std::copy(head.begin(), head.end(), parameters.extradata);
    parameters.extradata_size = static_cast<int>(head.size());
    stream->time_base = {1, context_->frameRate};
    stream->avg_frame_rate = {context_->frameRate, 1};
    context_->format->flags |= AVFMT_FLAG_BITEXACT; // no time of making: the bytes are the same each time
    return avformat_write_header(context_->format, nullptr) >= 0;
}

bool MemoryMuxer::write(std::span<const std::uint8_t> frame, bool keyFrame, std::int64_t number) {
    const Packet packet(av_packet_alloc());
    if (packet == nullptr || av_new_packet(packet.get(), static_cast<int>(frame.size())) != 0) {
        return false;
    }
    const AVRational unit{1, context_->frameRate};
    std::copy(frame.begin(), frame.end(), packet->data);
    packet->stream_index = 0;
    packet->pts = packet->dts = av_rescale_q(number, unit, context_->stream->time_base);
    packet->duration = av_rescale_q(1, unit, context_->stream->time_base);
    packet->flags = keyFrame ? AV_PKT_FLAG_KEY : 0;
    return av_interleaved_write_frame(context_->format, packet.get()) == 0;
}

std::vector<std::uint8_t> MemoryMuxer::finish() {
    const bool good = av_write_trailer(context_->format) == 0;
    avio_flush(context_->output);
    return good ? std::move(context_->file.bytes) : std::vector<std::uint8_t>();
}

} // namespace ipncsdk::media
