#pragma once

#include "playback/Timeline.h"

#include <array>
#include <functional>

namespace corvanta::playback {

/// The one clock of a playback: which moment is seen. Goes on by itself while it plays, up to the end of what there
/// is. One thread.
class PlaybackClock final {
public:
    using microseconds = std::chrono::microseconds;
    /// Time that passes, from any beginning.
    using TimeSource = std::function<microseconds()>;

    static constexpr std::array<double, 7> Speeds{0.25, 0.5, 1, 2, 4, 8, 16};

    /// The machine's own steady clock unless another one is given.
    explicit PlaybackClock(TimeSource source = {});

    /// Where at least one camera has something, in the order of time. The clock stays within it and begins at its
    /// begin when it was outside.
    void setCovered(std::vector<Span> covered);
    const std::vector<Span>& covered() const { return covered_; }
    /// Whether gaps are jumped over; otherwise they are waited through.
    void setSkipGaps(bool skip);
    bool skipsGaps() const { return skipGaps_; }

    void play();
    void pause();
    bool isPlaying() const { return playing_; }
    /// While it is held it plays, but time does not go on: pictures are still on their way.
    void hold(bool on);
    /// One of `Speeds`; anything else is the nearest of them.
    void setSpeed(double speed);
    double speed() const { return speed_; }
    /// The next faster or slower one of `Speeds`, or the present one at the end of the row.
    double fasterSpeed() const;
    double slowerSpeed() const;

    /// Goes to a moment, or to the nearest end of what there is. In a gap it stays where it is until it plays.
    void seek(Moment moment);
    /// The present moment. Pauses by itself at the end.
    Moment now();

    /// From the first begin to the last end.
    Span whole() const;
    /// The nearest begin of something after the present moment; nothing when none comes.
    std::optional<Moment> nextBegin();
    /// The begin of what is seen, or, near to it, of what was before.
    std::optional<Moment> previousBegin();

private:
    void goOn();
    Moment last() const;
    Moment skipped(Moment moment) const;

    TimeSource source_;
    std::vector<Span> covered_;
    Moment moment_{0}; ///< at `since_`
    microseconds since_{0};
    double speed_ = 1;
    bool playing_ = false;
    bool held_ = false;
    bool skipGaps_ = true;
};

} // namespace corvanta::playback
