#include "media/file/VideoFile.h"

#include "media/H264Decoder.h"
#include "media/sound/SoundDecoder.h"

#include <algorithm>
#include <cmath>
#include <system_error>

namespace ipncsdk::media {

namespace {

namespace fs = std::filesystem;

/// Containers that hold a video themselves; others are lists that lead elsewhere.
constexpr auto containers = "mov,mp4,m4a,3gp,3g2,mj2,matroska,webm,avi,mpegts,flv,h264";
constexpr int usualFrameRate = 25;

/// Frames a second as the container tells, else as the stream does.
double frameRateOf(const AVStream& stream, double fromStream) {
    const AVRational average = stream.avg_frame_rate;
    const AVRational guessed = stream.r_frame_rate;
    const double rate = average.num > 0 && average.den > 0   ? av_q2d(average)
                        : fromStream > 0                     ? fromStream
                        : guessed.num > 0 && guessed.den > 0 ? av_q2d(guessed)
                                                             : usualFrameRate;
    return rate >= 0.5 && rate <= 480 ? rate : usualFrameRate;
}

AVStream* findH264(const AVFormatContext& input) {
    for (unsigned index = 0; index < input.nb_streams; ++index) {
        if (input.streams[index]->codecpar->codec_id == AV_CODEC_ID_H264) {
            return input.streams[index];
        }
    }
    return nullptr;
}

AVStream* findSound(const AVFormatContext& input) {
    for (unsigned index = 0; index < input.nb_streams; ++index) {
        if (SoundDecoder::canDecode(*input.streams[index]->codecpar)) {
            return input.streams[index];
        }
    }
    return nullptr;
}

} // namespace

StreamError VideoFile::open(const fs::path& file, Known& known) {
    file_ = file;
    std::error_code error;
    if (!fs::is_regular_file(file_, error)) {
        return StreamError::StreamNotFound;
    }
    size_ = fs::file_size(file_, error);
    packet_.reset(av_packet_alloc());
    const StreamError opened = openContainer();
    return opened == StreamError::None ? findKeyFrame(known) : opened;
}

StreamError VideoFile::openContainer() {
    FfmpegOptions options;
    options.set("protocol_whitelist", "file");
    options.set("format_whitelist", containers);
    // The protocol's name keeps a file's name from being taken for one.
    const std::u8string path = file_.u8string();
    const std::string url = "file:" + std::string(path.begin(), path.end());
    AVFormatContext* opening = nullptr;
    if (avformat_open_input(&opening, url.c_str(), nullptr, &options.dictionary) < 0) {
        return StreamError::CodecNotSupported;
    }
    input_.reset(opening);
    stream_ = findH264(*input_);
    // Most containers name their streams at their beginning; the others are looked into.
    if (stream_ == nullptr && (input_->ctx_flags & AVFMTCTX_NOHEADER) != 0 &&
        avformat_find_stream_info(input_.get(), nullptr) >= 0) {
        stream_ = findH264(*input_);
    }
    if (stream_ == nullptr) {
        return StreamError::CodecNotSupported;
    }
    sound_ = findSound(*input_);
    for (unsigned index = 0; index < input_->nb_streams; ++index) {
        if (input_->streams[index] != stream_ && input_->streams[index] != sound_) {
            input_->streams[index]->discard = AVDISCARD_ALL;
        }
    }
    const AVCodecParameters& parameters = *stream_->codecpar;
    if (parameters.extradata_size > 0) {
        normaliser_.setHeader({parameters.extradata, static_cast<std::size_t>(parameters.extradata_size)});
    }
    return StreamError::None;
}

StreamError VideoFile::findKeyFrame(Known& known) {
    for (Read read = readPacket(); read == Read::Unit || read == Read::Sound; read = readPacket()) {
        if (read == Read::Unit && unit_->keyFrame && describe(*unit_, known)) {
            known.parameters.sound = sound_ != nullptr;
            pending_ = true;
            return StreamError::None;
        }
    }
    return StreamError::CodecNotSupported;
}

/// Reads the next packet that is a unit with a picture, or sound.
VideoFile::Read VideoFile::readPacket() {
    unit_.reset();
    while (!unit_) {
        av_packet_unref(packet_.get());
        const int result = av_read_frame(input_.get(), packet_.get());
        if (result < 0) {
            return result == AVERROR_EOF ? Read::End : Read::Failed;
        }
        if (sound_ != nullptr && packet_->stream_index == sound_->index) {
            return Read::Sound;
        }
        if (packet_->stream_index == stream_->index) {
            unit_ = normaliser_.normalise({packet_->data, static_cast<std::size_t>(packet_->size)},
                                          (packet_->flags & AV_PKT_FLAG_KEY) != 0);
        }
    }
    return Read::Unit;
}

bool VideoFile::describe(const AnnexB::AccessUnit& keyFrame, Known& known) const {
    if (std::equal(keyFrame.bytes.begin(), keyFrame.bytes.end(), known.keyFrame.begin(), known.keyFrame.end())) {
        return true;
    }
    H264Decoder decoder;
    decoder.feed({keyFrame.bytes.data(), keyFrame.bytes.size(), true, {}});
    decoder.finish();
    Picture picture;
    if (!decoder.take(picture)) {
        return false;
    }
    known.keyFrame.assign(keyFrame.bytes.begin(), keyFrame.bytes.end());
    const double rate = frameRateOf(*stream_, decoder.frameRate());
    known.parameters = {picture.width, picture.height, static_cast<int>(std::lround(rate)), {}};
    known.period = std::chrono::microseconds(std::llround(1e6 / rate));
    known.reordering = decoder.reordering();
    return true;
}

std::optional<std::chrono::microseconds> VideoFile::stamp(const AVStream& stream, std::int64_t ticks) {
    if (ticks == AV_NOPTS_VALUE) {
        return std::nullopt;
    }
    return std::chrono::microseconds(av_rescale_q(ticks, stream.time_base, {1, 1'000'000}));
}

std::optional<std::chrono::microseconds> VideoFile::soundStamp() const {
    return stamp(*sound_, packet_->pts != AV_NOPTS_VALUE ? packet_->pts : packet_->dts);
}

VideoFile::Read VideoFile::next(FileClock& clock, Unit& unit) {
    const Read read = pending_ ? Read::Unit : readPacket();
    pending_ = false;
    if (read != Read::Unit) {
        return read;
    }
    const auto times = clock.at(stamp(*stream_, packet_->dts), stamp(*stream_, packet_->pts));
    unit.frame = {unit_->bytes.data(), unit_->bytes.size(), unit_->keyFrame, times.shown};
    unit.due = times.due;
    return read;
}

bool VideoFile::isWhole() const {
    std::error_code error;
    const bool there = fs::is_regular_file(file_, error);
    return there && fs::file_size(file_, error) >= size_ && !error;
}

} // namespace ipncsdk::media
