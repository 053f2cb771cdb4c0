#include "playback/FrameIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace corvanta::playback {

namespace {

/// The number that a coded frame itself gives its picture, which grows in the order of showing between two refreshes.
class PictureOrder final {
public:
    explicit PictureOrder(const AVCodecParameters& codec)
        : parser_(av_parser_init(codec.codec_id))
        , context_(avcodec_alloc_context3(nullptr)) {
        if (parser_ == nullptr || context_ == nullptr || avcodec_parameters_to_context(context_.get(), &codec) < 0) {
            parser_.reset();
            return;
        }
        parser_->flags |= PARSER_FLAG_COMPLETE_FRAMES;
    }

    std::int64_t of(const AVPacket& packet) {
        if (parser_ == nullptr)
            return ++last_;
        std::uint8_t* frame = nullptr;
        int size = 0;
        av_parser_parse2(parser_.get(), context_.get(), &frame, &size, packet.data, packet.size, AV_NOPTS_VALUE,
                         AV_NOPTS_VALUE, packet.pos);
        const int order = parser_->output_picture_number;
        // A refresh begins to count anew; what comes after it is shown after everything before it.
        if (parser_->pict_type == AV_PICTURE_TYPE_I && order == 0)
            base_ = last_ + 1;
        const std::int64_t number = base_ + order;
        last_ = std::max(last_, number);
        return number;
    }

private:
    Parser parser_;
    CodecContext context_;
    std::int64_t base_ = 0;
    std::int64_t last_ = -1;
};

} // namespace

FrameIndex::FrameIndex(PacketSource& source)
    : source_(source) {
    const std::vector<Entry>& entries = source_.entries();
    for (std::size_t entry = 0; entry < entries.size(); ++entry) {
        if (entries[entry].keyFrame) {
            Group group;
            group.firstEntry = entry;
            group.firstFrame = frameCount_;
            groups_.push_back(std::move(group));
        }
        groups_.back().entryCount += 1;
        groups_.back().frameCount += entries[entry].hidden ? 0 : 1;
        frameCount_ += entries[entry].hidden ? 0 : 1;
    }
    const double rate = av_q2d(source_.stream().frameRate);
    period_ = microseconds(std::max<std::int64_t>(1, std::llround(1e6 / rate)));
    for (Group& group : groups_)
        group.begin = entries[group.firstEntry].stamp;
    // What is decoded first need not be shown at that time; later groups are taken to be late by as much.
    origin_ = read(0).begin;
    for (std::size_t group = 1; group < groups_.size(); ++group)
        groups_[group].begin += origin_ - entries.front().stamp;
    if (source_.stream().hasShowTimes) {
        const Group& last = read(groups_.size() - 1);
        duration_ = period_ + timeOf(last.shown.empty() ? last.begin : last.shown.back().begin);
    } else {
        duration_ = period_ + timeOf(entries.back().stamp);
    }
}

FrameIndex::microseconds FrameIndex::timeOf(std::int64_t ticks) const {
    return microseconds(av_rescale_q(ticks - origin_, source_.stream().timeBase, {1, 1'000'000}));
}

std::size_t FrameIndex::groupOf(std::size_t frame) const {
    const auto after =
        std::upper_bound(groups_.begin(), groups_.end(), frame,
                         [](std::size_t value, const Group& group) { return value < group.firstFrame; });
    return static_cast<std::size_t>(after - groups_.begin()) - 1;
}

/// What the entries of a group are to be ordered by: ticks, where packets say when they are shown, else the numbers
/// of their pictures. What cannot be read keeps its place at the end.
std::vector<std::int64_t> FrameIndex::showKeys(const Group& group) {
    std::vector<std::int64_t> keys(group.entryCount);
    PictureOrder order(*source_.stream().codec);
    constexpr std::int64_t last = std::numeric_limits<std::int64_t>::max() / 2;
    for (std::size_t index = 0; index < group.entryCount; ++index) {
        const std::size_t entry = group.firstEntry + index;
        const std::int64_t decoded = source_.entries()[entry].stamp;
        const bool shows = source_.stream().hasShowTimes;
        if (!source_.read(entry, *packet_))
            keys[index] = shows ? decoded : last + static_cast<std::int64_t>(index);
        else if (shows)
            keys[index] = packet_->pts != AV_NOPTS_VALUE ? packet_->pts : decoded;
        else
            keys[index] = order.of(*packet_);
    }
    return keys;
}

FrameIndex::Group& FrameIndex::read(std::size_t number) {
    Group& group = groups_[number];
    if (!group.places.empty())
        return group;
    order(group, showKeys(group));
    reordering_ = std::max(reordering_, reorderingOf(group));
    return group;
}

void FrameIndex::order(Group& group, const std::vector<std::int64_t>& keys) {
    const std::vector<Entry>& entries = source_.entries();
    std::vector<std::size_t> order(group.entryCount);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&keys](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    group.places.assign(group.entryCount, -1);
    group.shown.reserve(group.frameCount);
    for (std::size_t rank = 0; rank < order.size(); ++rank) {
        const std::size_t entry = group.firstEntry + order[rank];
        if (entries[entry].hidden)
            continue;
        // Without times of their own, pictures are shown one by one at the times of the group's entries.
        const std::int64_t ticks =
            source_.stream().hasShowTimes ? keys[order[rank]] : entries[group.firstEntry + rank].stamp;
        if (entry == group.firstEntry)
            group.leading = group.shown.size();
        group.places[order[rank]] = static_cast<int>(group.shown.size());
        group.shown.push_back({ticks, entry});
    }
    if (!group.shown.empty())
        group.begin = group.shown.front().begin;
}

/// The most frames that are decoded before one frame and shown after it.
int FrameIndex::reorderingOf(const Group& group) {
    constexpr std::size_t farthest = 32; // no coding reorders over more frames
    int most = 0;
    for (std::size_t place = 0; place < group.shown.size(); ++place) {
        int waiting = 0;
        for (std::size_t other = place + 1; other < std::min(place + farthest, group.shown.size()); ++other)
            waiting += group.shown[other].entry < group.shown[place].entry ? 1 : 0;
        most = std::max(most, waiting);
    }
    return most;
}

std::size_t FrameIndex::groupAt(microseconds time) {
    const auto after =
        std::upper_bound(groups_.begin(), groups_.end(), time,
                         [this](microseconds value, const Group& group) { return value < timeOf(group.begin); });
    std::size_t group = after == groups_.begin() ? 0 : static_cast<std::size_t>(after - groups_.begin()) - 1;
    // The table's times are those of decoding; reading the group, and at its end the next one, tells the true ones.
    while (group > 0 && time < timeOf(read(group).begin))
        --group;
    while (group + 1 < groups_.size() && !read(group).shown.empty() &&
           time > timeOf(groups_[group].shown.back().begin) && time >= timeOf(read(group + 1).begin))
        ++group;
    return group;
}

std::size_t FrameIndex::frameAt(microseconds time) {
    const Group& group = read(groupAt(time));
    const auto after =
        std::upper_bound(group.shown.begin(), group.shown.end(), time,
                         [this](microseconds value, const Shown& shown) { return value < timeOf(shown.begin); });
    const auto place = after == group.shown.begin() ? 0 : after - group.shown.begin() - 1;
    return std::min(group.firstFrame + static_cast<std::size_t>(place), frameCount_ - 1);
}

FrameIndex::microseconds FrameIndex::beginOf(std::size_t frame) {
    const Group& group = read(groupOf(frame));
    return timeOf(group.shown[frame - group.firstFrame].begin);
}

std::size_t FrameIndex::decodedFrom(std::size_t frame) {
    std::size_t number = groupOf(frame);
    while (number > 0) {
        const Group& group = read(number);
        if (group.leading == 0 || frame - group.firstFrame >= group.leading)
            break;
        --number;
        frame = groups_[number].firstFrame + groups_[number].frameCount - 1;
    }
    return number;
}

std::size_t FrameIndex::entryOf(std::size_t frame) {
    const Group& group = read(groupOf(frame));
    return group.shown[frame - group.firstFrame].entry;
}

std::optional<std::size_t> FrameIndex::frameOf(std::size_t entry) {
    const auto after =
        std::upper_bound(groups_.begin(), groups_.end(), entry,
                         [](std::size_t value, const Group& group) { return value < group.firstEntry; });
    const Group& group = read(static_cast<std::size_t>(after - groups_.begin()) - 1);
    const int place = group.places[entry - group.firstEntry];
    if (place < 0)
        return std::nullopt;
    return group.firstFrame + static_cast<std::size_t>(place);
}

} // namespace corvanta::playback
