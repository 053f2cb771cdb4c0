#pragma once

#include "playback/Timeline.h"

#include <QString>

#include <vector>

namespace corvanta::playback {

/// A stretch of time laid over so many pixels.
class AxisScale final {
public:
    struct Tick {
        Moment moment{0};
        QString label;
        bool isMidnight = false;
    };

    /// Neither is more or less than what can be told apart.
    static constexpr std::chrono::seconds Shortest{10};
    static constexpr std::chrono::hours Longest{24 * 400};

    AxisScale() = default;
    /// `view` is not empty, `width` (px) above 0.
    AxisScale(Span view, int width);

    const Span& view() const { return view_; }
    int width() const { return width_; }
    int xOf(Moment moment) const;
    Moment momentAt(int x) const;

    /// The view in which a pixel is `factor` times as much time; the moment at `x` stays where it is.
    Span zoomed(double factor, int x) const;
    /// The view moved so that `moment` is in it: as it is, or with the moment in its first quarter.
    Span showing(Moment moment) const;

    /// Round local times, at least `distance` pixels apart; "hh:mm:ss", "hh:mm", or the day at midnight.
    std::vector<Tick> ticks(int distance) const;

private:
    double microsecondsAPixel() const;

    Span view_{Moment(0), Shortest};
    int width_ = 1;
};

/// `span` with a little room on both sides, never shorter or longer than a scale shows.
Span roomAround(Span span);

} // namespace corvanta::playback
