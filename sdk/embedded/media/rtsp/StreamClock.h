#pragma once

#include "media/StreamReader.h"

#include <chrono>
#include <optional>

namespace ipncsdk::media {

/// Turns a camera's times into times that run on over lost connections and over jumps of the camera's clock.
class StreamClock final {
public:
    /// A new connection's times have nothing to do with those before.
    void restart() {
        offset_.reset();
        inOrder_ = false;
    }
    /// From now on the connection's times only rise: its pictures come in the order in which they are shown.
    void keepOrder() { inOrder_ = true; }

    /// The stream's time of a frame with the camera's `time`, or of one without, that came at `now`.
    std::chrono::microseconds at(std::optional<std::chrono::microseconds> time, Clock::time_point now) {
        if (!begin_) {
            begin_ = now;
        }
        const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(now - *begin_);
        if (!time) {
            return elapsed;
        }
        // Frames come in bursts and out of order, but never by this much: beyond it the camera's clock was set.
        constexpr std::chrono::seconds largestDrift{5};
        const auto known = offset_.value_or(elapsed - *time);
        const auto drift = *time + known - elapsed;
        offset_ = drift > largestDrift || drift < -largestDrift ? elapsed - *time : known;
        // A camera's report on its clocks may set the pictures back against its sound.
        constexpr std::chrono::milliseconds leastStep{1};
        if (inOrder_ && last_ && *time + *offset_ <= *last_) {
            offset_ = *last_ + leastStep - *time;
        }
        last_ = *time + *offset_;
        return *last_;
    }

private:
    std::optional<Clock::time_point> begin_;
    std::optional<std::chrono::microseconds> offset_;
    std::optional<std::chrono::microseconds> last_;
    bool inOrder_ = false;
};

} // namespace ipncsdk::media
