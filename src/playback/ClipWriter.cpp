#include "playback/ClipWriter.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <string>
#include <system_error>
#include <utility>

namespace corvanta::playback {

namespace {

namespace fs = std::filesystem;

constexpr AVRational microsecond{1, 1'000'000};
constexpr AVRational fineTime{1, 90'000};

const char* formatOf(const fs::path& target) {
    std::u8string suffix = target.extension().u8string();
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](char8_t character) { return character < 0x80 ? std::tolower(character) : character; });
    return suffix == u8".avi" ? "avi" : suffix == u8".mp4" ? "mp4" : nullptr;
}

/// What turns length-prefixed units into start codes, with the parameter sets before every key frame.
const char* filterFor(const AVCodecParameters& codec) {
    const bool prefixed = codec.extradata_size > 0 && codec.extradata[0] == 1;
    if (prefixed && codec.codec_id == AV_CODEC_ID_H264)
        return "h264_mp4toannexb";
    if (prefixed && codec.codec_id == AV_CODEC_ID_HEVC)
        return "hevc_mp4toannexb";
    return "null";
}

BitstreamFilter makeFilter(const char* name, const AVCodecParameters& codec) {
    AVBSFContext* made = nullptr;
    const AVBitStreamFilter* const kind = av_bsf_get_by_name(name);
    if (kind == nullptr || av_bsf_alloc(kind, &made) < 0)
        return nullptr;
    BitstreamFilter filter(made);
    if (avcodec_parameters_copy(filter->par_in, &codec) < 0 || av_bsf_init(filter.get()) < 0)
        return nullptr;
    return filter;
}

} // namespace

ClipWriter::ClipWriter(fs::path target)
    : target_(std::move(target))
    , unfinished_(target_) {
    unfinished_ += ".part";
}

ClipWriter::~ClipWriter() {
    if (output_ == nullptr)
        return;
    avio_closep(&output_->pb);
    avformat_free_context(output_);
    std::error_code ignored;
    fs::remove(unfinished_, ignored);
}

ExportError ClipWriter::begin(const AVCodecParameters& codec, AVRational frameRate) {
    if (const ExportError error = openFilter(codec); error != ExportError::None)
        return error;
    if (codec_ == nullptr) {
        codec_.reset(avcodec_parameters_alloc());
        frameRate_ = frameRate;
        return codec_ != nullptr && avcodec_parameters_copy(codec_.get(), filter_->par_out) >= 0
                   ? ExportError::None
                   : ExportError::CannotWrite;
    }
    const bool same =
        codec.codec_id == codec_->codec_id && codec.width == codec_->width && codec.height == codec_->height;
    return same ? ExportError::None : ExportError::Different;
}

ExportError ClipWriter::openFilter(const AVCodecParameters& codec) {
    filter_ = makeFilter(filterFor(codec), codec);
    return filter_ != nullptr ? ExportError::None : ExportError::Unreadable;
}

/// The parameter sets, which MP4 wants in front: those of the source, else those of the first key frame.
bool ClipWriter::takeHeader(AVStream& stream, AVPacket& firstPacket) const {
    if (avcodec_parameters_copy(stream.codecpar, codec_.get()) < 0)
        return false;
    stream.codecpar->codec_tag = 0;
    const bool hasParameterSets = codec_->codec_id == AV_CODEC_ID_H264 || codec_->codec_id == AV_CODEC_ID_HEVC;
    if (!hasParameterSets || stream.codecpar->extradata_size > 0)
        return true;
    const BitstreamFilter extract = makeFilter("extract_extradata", *codec_);
    const Packet packet(av_packet_clone(&firstPacket));
    if (extract == nullptr || packet == nullptr || av_bsf_send_packet(extract.get(), packet.get()) < 0 ||
        av_bsf_receive_packet(extract.get(), packet.get()) < 0)
        return false;
    std::size_t size = 0;
    const std::uint8_t* const sets = av_packet_get_side_data(packet.get(), AV_PKT_DATA_NEW_EXTRADATA, &size);
    if (sets == nullptr)
        return false;
    stream.codecpar->extradata = static_cast<std::uint8_t*>(av_mallocz(size + AV_INPUT_BUFFER_PADDING_SIZE));
    if (stream.codecpar->extradata == nullptr)
        return false;
    std::memcpy(stream.codecpar->extradata, sets, size);
    stream.codecpar->extradata_size = static_cast<int>(size);
    return true;
}

ExportError ClipWriter::openFile(AVPacket& firstPacket) {
    const char* const format = formatOf(target_);
    if (format == nullptr || avformat_alloc_output_context2(&output_, nullptr, format, nullptr) < 0)
        return ExportError::UnknownFormat;
    AVStream* const stream = avformat_new_stream(output_, nullptr);
    if (stream == nullptr || !takeHeader(*stream, firstPacket))
        return ExportError::Unreadable;
    stream->avg_frame_rate = frameRate_;
    stream->time_base = std::strcmp(format, "avi") == 0 ? av_inv_q(frameRate_) : fineTime;
    const std::u8string path = unfinished_.u8string();
    const std::string url = "file:" + std::string(path.begin(), path.end());
    if (avio_open(&output_->pb, url.c_str(), AVIO_FLAG_WRITE) < 0)
        return ExportError::CannotWrite;
    const int result = avformat_write_header(output_, nullptr);
    headerWritten_ = result >= 0;
    if (result < 0)
        return output_->pb->error < 0 ? ExportError::CannotWrite : ExportError::UnknownFormat;
    return ExportError::None;
}

ExportError ClipWriter::write(AVPacket& packet, microseconds decode, microseconds show) {
    packet.dts = decode.count();
    packet.pts = show.count();
    packet.time_base = microsecond;
    if (av_bsf_send_packet(filter_.get(), &packet) < 0)
        return ExportError::Unreadable;
    while (av_bsf_receive_packet(filter_.get(), filtered_.get()) >= 0) {
        const ExportError error = writeFiltered(*filtered_);
        av_packet_unref(filtered_.get());
        if (error != ExportError::None)
            return error;
    }
    return ExportError::None;
}

ExportError ClipWriter::writeFiltered(AVPacket& packet) {
    if (!headerWritten_) {
        if (const ExportError error = openFile(packet); error != ExportError::None)
            return error;
    }
    const AVRational ticks = output_->streams[0]->time_base;
    packet.stream_index = 0;
    packet.pos = -1;
    packet.dts = av_rescale_q(packet.dts, microsecond, ticks);
    packet.pts = av_rescale_q(packet.pts, microsecond, ticks);
    // Rates that do not hold may bring two frames to one tick.
    if (std::exchange(anyWritten_, true))
        packet.dts = std::max(packet.dts, lastDecode_ + 1);
    packet.pts = std::max(packet.pts, packet.dts);
    lastDecode_ = packet.dts;
    packet.duration = std::max<std::int64_t>(1, av_rescale_q(1, av_inv_q(frameRate_), ticks));
    return av_write_frame(output_, &packet) >= 0 && output_->pb->error >= 0 ? ExportError::None
                                                                            : ExportError::CannotWrite;
}

ExportError ClipWriter::finish() {
    if (!headerWritten_)
        return ExportError::NothingThere;
    const bool written = av_write_trailer(output_) >= 0;
    const bool closed = avio_closep(&output_->pb) >= 0;
    std::error_code error;
    if (written && closed)
        fs::rename(unfinished_, target_, error);
    return written && closed && !error ? ExportError::None : ExportError::CannotWrite;
}

} // namespace corvanta::playback
