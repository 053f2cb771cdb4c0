#pragma once

#include "playback/PacketSource.h"

#include <chrono>

namespace corvanta::playback {

/// The frames of a file in the order in which they are shown, and when. A file counts them from 0, and its time
/// begins with the first one shown.
///
/// Frames are gathered in groups, each from one key frame to before the next. The tables of files say when a frame is
/// decoded; in which order those of a group are shown is found by reading the group's packets, when it is first asked
/// for. Used on one thread.
class FrameIndex final {
public:
    using microseconds = std::chrono::microseconds;

    /// `source` outlives the index.
    explicit FrameIndex(PacketSource& source);

    std::size_t frameCount() const { return frameCount_; }
    microseconds duration() const { return duration_; }
    /// From one frame to the next, on the average; above 0.
    microseconds period() const { return period_; }
    std::size_t groupCount() const { return groups_.size(); }
    /// Largest number of frames of a group that are decoded before, but shown after one of it, as far as groups were
    /// read.
    int reordering() const { return reordering_; }

    /// The frame that is seen at `time`: the last that begins then or before; the first one before that.
    std::size_t frameAt(microseconds time);
    /// When a frame begins to be seen. `frame` below `frameCount`.
    microseconds beginOf(std::size_t frame);

    /// The group of a frame.
    std::size_t groupOf(std::size_t frame) const;
    /// The first frame of a group, and the first entry.
    std::size_t firstFrame(std::size_t group) const { return groups_[group].firstFrame; }
    std::size_t firstEntry(std::size_t group) const { return groups_[group].firstEntry; }
    /// Where decoding has to begin for a frame to be whole: the group before where it leans on that.
    std::size_t decodedFrom(std::size_t frame);
    /// The entry of a frame.
    std::size_t entryOf(std::size_t frame);
    /// The frame of an entry; nothing for one that is never shown.
    std::optional<std::size_t> frameOf(std::size_t entry);

private:
    struct Shown {
        std::int64_t begin = 0; ///< ticks
        std::size_t entry = 0;
    };
    struct Group {
        std::size_t firstEntry = 0;
        std::size_t entryCount = 0;
        std::size_t firstFrame = 0;
        std::size_t frameCount = 0; ///< entries that are shown
        std::int64_t begin = 0;     ///< ticks of its first frame, guessed from the table until it was read
        std::size_t leading = 0;    ///< frames that are shown before the key frame, though decoded after it
        std::vector<Shown> shown;   ///< in the order of showing; empty until it was read
        std::vector<int> places;    ///< of each entry in `shown`, -1 for one that is never shown
    };
    Group& read(std::size_t group);
    void order(Group& group, const std::vector<std::int64_t>& keys);
    static int reorderingOf(const Group& group);
    std::vector<std::int64_t> showKeys(const Group& group);
    microseconds timeOf(std::int64_t ticks) const;
    std::size_t groupAt(microseconds time);

    PacketSource& source_;
    std::vector<Group> groups_;
    std::size_t frameCount_ = 0;
    microseconds duration_{0};
    microseconds period_{40'000};
    std::int64_t origin_ = 0; ///< ticks of the first frame shown
    int reordering_ = 0;
    Packet packet_ = newPacket();
};

} // namespace corvanta::playback
