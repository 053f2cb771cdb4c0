#pragma once

#include <chrono>
#include <optional>

namespace ipncsdk::media {

/// Turns a file's time stamps into times that run on from one loop through the file to the next, and over stamps that
/// are missing or make no sense.
class FileClock final {
public:
    using microseconds = std::chrono::microseconds;

    struct Times {
        microseconds due{0};   ///< when the unit is to be handed out, from the clock's beginning; never falls
        microseconds shown{0}; ///< when its picture is to be seen, on the same scale; not before `due`
    };

    /// What the stamps may leave out: the time from one frame to the next, and how many frames a picture may wait to
    /// be shown in its order.
    void describe(microseconds period, int reordering) {
        period_ = period;
        reordering_ = reordering;
    }
    /// The next unit is the file's first one again.
    void beginLoop();

    /// The times of the next unit, in the order in which units stand in the file. Containers without decode stamps
    /// tell only when a picture is shown: where pictures are reordered, such units follow each other by one period,
    /// and by what is shown only in the long run.
    Times at(std::optional<microseconds> decodeStamp, std::optional<microseconds> showStamp);

    /// When something beside the units, with a stamp on the scale of theirs, is due; nothing before a loop's first
    /// unit, and when it is too far from the last one to belong to it.
    std::optional<microseconds> dueOf(microseconds stamp) const;
    /// When the next unit is due, as far as is known.
    microseconds next() const { return due_ ? *due_ + period_ : microseconds(0); }

private:
    struct Anchor {
        microseconds stamp{0}; ///< of a loop's first unit
        microseconds time{0};  ///< when that is due
    };
    Times byShowing(microseconds showStamp);
    microseconds follow(microseconds step);

    microseconds period_{40'000};
    int reordering_ = 0;
    std::optional<microseconds> last_; ///< the stamp before, of this loop
    std::optional<Anchor> anchor_;     ///< of this loop, where show stamps alone are there
    std::optional<microseconds> due_;  ///< nothing before the first unit
};

} // namespace ipncsdk::media
