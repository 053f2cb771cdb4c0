#include "playback/ContainerSource.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace corvanta::playback {

namespace {

/// Containers that hold a video themselves; others are lists that lead elsewhere.
constexpr auto containers = "mov,mp4,m4a,3gp,3g2,mj2,matroska,webm,avi,mpegts,flv,h264";

class Options final {
public:
    Options() = default;
    ~Options() { av_dict_free(&dictionary); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;
    AVDictionary* dictionary = nullptr;
};

bool isOf(const AVFormatContext& input, const char* name) {
    return std::strstr(input.iformat->name, name) != nullptr;
}

std::int64_t stampOf(const AVPacket& packet) {
    return packet.dts != AV_NOPTS_VALUE ? packet.dts : packet.pts;
}

bool isRate(AVRational rate) {
    return rate.num > 0 && rate.den > 0 && av_q2d(rate) <= 1000;
}

} // namespace

OpenError ContainerSource::openInput(const std::filesystem::path& file) {
    Options options;
    av_dict_set(&options.dictionary, "protocol_whitelist", "file", 0);
    av_dict_set(&options.dictionary, "format_whitelist", containers, 0);
    // The protocol's name keeps a file's name from being taken for one.
    const std::u8string path = file.u8string();
    const std::string url = "file:" + std::string(path.begin(), path.end());
    AVFormatContext* opening = nullptr;
    const int result = avformat_open_input(&opening, url.c_str(), nullptr, &options.dictionary);
    if (result == AVERROR(ENOENT) || result == AVERROR(EACCES))
        return OpenError::Missing;
    if (result < 0)
        return OpenError::NotAVideo;
    input_.reset(opening);
    return OpenError::None;
}

OpenError ContainerSource::open(const std::filesystem::path& file) {
    if (const OpenError error = openInput(file); error != OpenError::None)
        return error;
    const bool isAvi = isOf(*input_, "avi");
    hasTable_ = isAvi || isOf(*input_, "mov");
    if (!hasTable_ && avformat_find_stream_info(input_.get(), nullptr) < 0)
        return OpenError::NotAVideo;
    for (unsigned index = 0; index < input_->nb_streams; ++index) {
        AVStream* const stream = input_->streams[index];
        if (video_ == nullptr && stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
            (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0)
            video_ = stream;
        else
            stream->discard = AVDISCARD_ALL;
    }
    if (video_ == nullptr)
        return OpenError::NoPictures;
    stream_.codec.reset(avcodec_parameters_alloc());
    if (stream_.codec == nullptr || avcodec_parameters_copy(stream_.codec.get(), video_->codecpar) < 0)
        return OpenError::NotAVideo;
    stream_.timeBase = video_->time_base;
    stream_.hasShowTimes = !isAvi;
    if (hasTable_)
        takeTable();
    else
        scan();
    if (!tidyEntries(avio_size(input_->pb)))
        return hasTable_ && isAvi ? OpenError::Unfinished : OpenError::NoPictures;
    for (const AVRational rate : {video_->avg_frame_rate, video_->r_frame_rate, av_inv_q(video_->time_base)}) {
        if (isRate(rate)) {
            stream_.frameRate = rate;
            break;
        }
    }
    return OpenError::None;
}

void ContainerSource::takeTable() {
    const int count = avformat_index_get_entries_count(video_);
    entries_.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int index = 0; index < count; ++index) {
        const AVIndexEntry* const entry = avformat_index_get_entry(video_, index);
        entries_.push_back({entry->timestamp, entry->pos, entry->size, (entry->flags & AVINDEX_KEYFRAME) != 0,
                            (entry->flags & AVINDEX_DISCARD_FRAME) != 0});
    }
}

void ContainerSource::scan() {
    const Packet packet = newPacket();
    while (av_read_frame(input_.get(), packet.get()) >= 0) {
        if (packet->stream_index == video_->index && stampOf(*packet) != AV_NOPTS_VALUE)
            entries_.push_back({stampOf(*packet), packet->pos, 0, (packet->flags & AV_PKT_FLAG_KEY) != 0,
                                (packet->flags & AV_PKT_FLAG_DISCARD) != 0});
        av_packet_unref(packet.get());
    }
}

std::optional<std::size_t> ContainerSource::entryOf(const AVPacket& packet) const {
    const std::int64_t stamp = stampOf(packet);
    if (hasTable_) {
        const auto found =
            std::lower_bound(entries_.begin(), entries_.end(), stamp,
                             [](const Entry& entry, std::int64_t value) { return entry.stamp < value; });
        if (found != entries_.end() && found->stamp == stamp)
            return static_cast<std::size_t>(found - entries_.begin());
        return std::nullopt;
    }
    // What was read through stands in the order of its places; frames that share one follow each other.
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&packet, stamp](const Entry& entry) {
        return entry.position == packet.pos && entry.stamp == stamp;
    });
    if (found != entries_.end())
        return static_cast<std::size_t>(found - entries_.begin());
    return std::nullopt;
}

bool ContainerSource::seek(std::size_t entry) {
    std::size_t key = entry;
    while (key > 0 && !entries_[key].keyFrame)
        --key;
    next_.reset();
    if (av_seek_frame(input_.get(), video_->index, entries_[key].stamp, AVSEEK_FLAG_BACKWARD) >= 0)
        return true;
    return av_seek_frame(input_.get(), video_->index, entries_.front().stamp, AVSEEK_FLAG_ANY) >= 0;
}

/// The next packet of the video; which entry it is.
std::optional<std::size_t> ContainerSource::readNext(AVPacket& packet) {
    while (true) {
        av_packet_unref(&packet);
        if (av_read_frame(input_.get(), &packet) < 0) {
            next_.reset();
            return std::nullopt;
        }
        if (packet.stream_index != video_->index)
            continue;
        const std::optional<std::size_t> expected = std::exchange(next_, std::nullopt);
        const bool asExpected =
            expected && *expected < entries_.size() && entries_[*expected].stamp == stampOf(packet);
        const std::optional<std::size_t> entry = asExpected ? expected : entryOf(packet);
        if (entry) {
            next_ = *entry + 1;
            return entry;
        }
    }
}

bool ContainerSource::read(std::size_t entry, AVPacket& packet) {
    if (next_ != entry && !seek(entry))
        return false;
    while (const auto found = readNext(packet)) {
        if (*found == entry)
            return true;
        if (*found > entry)
            break; // it is not there, or seeking went too far
    }
    return false;
}

} // namespace corvanta::playback
