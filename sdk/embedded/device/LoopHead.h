#pragma once

#include "base/Clock.h"
#include "device/PtzDriver.h"
#include "media/loop/View.h"

#include <array>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace ipncsdk::device {

/// The moving head of a loop camera: where it looks follows from what it was told and from the time since then, so
/// nothing runs while nobody asks. It starts and stops softly and crosses a whole axis in 4 s at speed 5.
/// Thread-safe.
///
/// One of three things at a time: it moves on in given directions, it travels to a view, or it cruises (travels to
/// one view after another, with stays between them). Each ends the one before.
class LoopHead final {
public:
    using Moment = std::chrono::steady_clock::time_point;
    struct Stop {
        media::View view;
        std::chrono::seconds stay{1}; ///< 1 s at least
    };

    explicit LoopHead(std::shared_ptr<const Clock> clock);
    LoopHead(const LoopHead&) = delete;
    LoopHead& operator=(const LoopHead&) = delete;

    [[nodiscard]] media::View view() const;
    [[nodiscard]] bool isMoving() const;
    /// The cruise that runs; 0 for none.
    [[nodiscard]] int cruise() const;

    void move(const PtzMove& move);
    void stop();
    void focus(int direction);
    void iris(int direction);
    void goTo(const media::View& view);
    /// `stops` is not empty.
    void startCruise(int number, std::vector<Stop> stops);
    void stopCruise();
    /// Looks at the home view from now on.
    void reset();

private:
    enum AxisName : std::size_t { Pan, Tilt, Zoom, Focus, Iris, AxisCount };
    struct Axis {
        double low = -1;
        double place = 0;
        double speed = 0;  ///< a second
        double wanted = 0; ///< the speed that is being taken up
        Moment until;      ///< when that ends by itself
        void advance(double seconds);
    };
    using Axes = std::array<Axis, AxisCount>;
    struct Travel {
        media::View from;
        media::View to;
        Moment begin;
        std::chrono::duration<double> length{0};
    };
    struct Cruise {
        int number = 0;
        std::vector<Stop> stops;
        std::size_t next = 0; ///< where it travels to, or stays
        Moment leaveAt;       ///< when it stays
    };

    // The functions below want mutex_ to be held.
    void catchUp() const;
    void moveOn(Moment now) const;
    void follow(const Travel& travel, Moment now) const;
    void drive(AxisName axis, int direction, double speed);
    void halt();
    void travelTo(const media::View& view, Moment begin) const;
    void place(const media::View& view) const;
    [[nodiscard]] media::View current() const;

    const std::shared_ptr<const Clock> clock_;
    mutable std::mutex mutex_;
    // All of it is as of `at_`; asking brings it up to now.
    mutable Moment at_;
    mutable Axes axes_;
    mutable std::optional<Travel> travel_;
    mutable std::optional<Cruise> cruise_;
};

} // namespace ipncsdk::device
