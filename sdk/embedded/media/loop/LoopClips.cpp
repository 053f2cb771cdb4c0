#include "media/loop/LoopClips.h"

#include "media/Ffmpeg.h"
#include "media/H264Decoder.h"
#include "media/JpegEncoder.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <memory>
#include <span>
#include <utility>

namespace ipncsdk::media {

namespace {

using Gops = std::vector<std::shared_ptr<const Gop>>;

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

/// A container that is written into memory.
class MemoryMuxer final {
public:
    explicit MemoryMuxer(const char* format) {
        constexpr int bufferSize = 1 << 15;
        auto* const buffer = static_cast<std::uint8_t*>(av_malloc(bufferSize));
        output_ = avio_alloc_context(buffer, bufferSize, 1, &file_, nullptr, MemoryFile::write, MemoryFile::seek);
        avformat_alloc_output_context2(&context_, nullptr, format, nullptr);
        if (context_ != nullptr && output_ != nullptr) {
            context_->pb = output_;
            stream_ = avformat_new_stream(context_, nullptr);
        }
    }
    ~MemoryMuxer() {
        avformat_free_context(context_);
        if (output_ != nullptr) {
            av_freep(&output_->buffer);
        }
        avio_context_free(&output_);
    }
    MemoryMuxer(const MemoryMuxer&) = delete;
    MemoryMuxer& operator=(const MemoryMuxer&) = delete;

    /// `head` holds the parameter sets in Annex B form, or nothing.
    bool begin(int width, int height, std::span<const std::uint8_t> head) {
        if (stream_ == nullptr) {
            return false;
        }
        AVCodecParameters& parameters = *stream_->codecpar;
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
        stream_->time_base = {1, loopFrameRate};
        stream_->avg_frame_rate = {loopFrameRate, 1};
        context_->flags |= AVFMT_FLAG_BITEXACT; // no time of making: the bytes are the same each time
        return avformat_write_header(context_, nullptr) >= 0;
    }

    bool write(std::span<const std::uint8_t> frame, bool keyFrame, std::int64_t number) {
        const Packet packet(av_packet_alloc());
        if (packet == nullptr || av_new_packet(packet.get(), static_cast<int>(frame.size())) != 0) {
            return false;
        }
        std::copy(frame.begin(), frame.end(), packet->data);
        packet->stream_index = 0;
        packet->pts = packet->dts = av_rescale_q(number, {1, loopFrameRate}, stream_->time_base);
        packet->duration = av_rescale_q(1, {1, loopFrameRate}, stream_->time_base);
        packet->flags = keyFrame ? AV_PKT_FLAG_KEY : 0;
        return av_interleaved_write_frame(context_, packet.get()) == 0;
    }

    /// The file, once `begin` has succeeded; empty when it could not be ended. Nothing may be called after it.
    std::vector<std::uint8_t> finish() {
        const bool good = av_write_trailer(context_) == 0;
        avio_flush(output_);
        return good ? std::move(file_.bytes) : std::vector<std::uint8_t>();
    }

private:
    AVFormatContext* context_ = nullptr;
    AVStream* stream_ = nullptr; ///< belongs to the context
    AVIOContext* output_ = nullptr;
    MemoryFile file_;
};

/// The parameter sets in front of a key frame's slices.
std::span<const std::uint8_t> parameterSets(const Gop& gop) {
    const std::span<const std::uint8_t> frame(gop.bytes.data(), gop.sizes.front());
    for (std::size_t index = 0; index + 4 < frame.size(); ++index) {
        const bool startCode =
            frame[index] == 0 && frame[index + 1] == 0 && frame[index + 2] == 0 && frame[index + 3] == 1;
        const int type = frame[index + 4] & 31;
        if (startCode && type != 7 && type != 8) {
            return frame.first(index);
        }
    }
    return {};
}

std::vector<std::uint8_t> video(const LoopKey& key, const Gops& gops, LoopClips::Format format) {
    const bool mp4 = format == LoopClips::Format::Mp4;
    MemoryMuxer muxer(mp4 ? "mp4" : "avi");
    // In an AVI file they stand before every key frame alone.
    const auto head = mp4 ? parameterSets(*gops.front()) : std::span<const std::uint8_t>();
    if (!muxer.begin(key.width(), key.height(), head)) {
        return {};
    }
    std::int64_t number = 0;
    for (const auto& gop : gops) {
        std::size_t offset = 0;
        for (std::size_t index = 0; index < gop->sizes.size(); ++index) {
            if (!muxer.write({gop->bytes.data() + offset, gop->sizes[index]}, index == 0, number++)) {
                return {};
            }
            offset += gop->sizes[index];
        }
    }
    return muxer.finish();
}

} // namespace

LoopClips::LoopClips(std::filesystem::path folder, Log log)
    : library_(std::move(folder), std::move(log)) {}

std::vector<std::uint8_t> LoopClips::make(const LoopSource& source, const Clip& clip, const Cancelled& cancelled) {
    const LoopKey key{source, Quality::Light};
    const std::shared_ptr<Loop> loop = library_.acquire(key);
    Gops gops;
    const std::size_t count = clip.format == Format::Jpeg ? 1 : std::max<std::size_t>(clip.seconds, 1);
    while (gops.size() < count) {
        auto gop = loop->gop((clip.firstGop + gops.size()) % Loop::gopCount, std::chrono::milliseconds(50));
        if (gop != nullptr) {
            gops.push_back(std::move(gop));
        } else if (loop->failed() || cancelled()) {
            return {};
        }
    }
    if (clip.format != Format::Jpeg) {
        return video(key, gops, clip.format);
    }
    H264Decoder decoder;
    decoder.feed({gops.front()->bytes.data(), gops.front()->sizes.front(), true, {}});
    decoder.finish();
    Picture picture;
    return decoder.take(picture) ? encodeJpeg(picture) : std::vector<std::uint8_t>();
}

} // namespace ipncsdk::media
