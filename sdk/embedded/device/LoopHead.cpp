#include "device/LoopHead.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ipncsdk::device {

namespace {

using std::chrono::duration;

/// What nobody renews ends after this.
constexpr std::chrono::seconds longestMove{10};
/// Of an axis from -1 to 1 a second, for each step of the speed: at 5 it is crossed in 4 s.
constexpr double speedStep = 0.1;
constexpr double lensSpeed = 0.5;
/// How fast speeds change, a second.
constexpr double acceleration = 3;
constexpr double travelSpeed = 0.9;
constexpr double shortestTravel = 0.4; ///< seconds
/// An axis that comes to rest this near to its middle snaps in: sharp is exactly sharp.
constexpr double detent = 0.02;

/// From 0 to 1, starting and ending softly.
double eased(double part) {
    return part * part * (3 - 2 * part);
}

float between(float from, float to, double part) {
    return static_cast<float>(from + (to - from) * part);
}

} // namespace

void LoopHead::Axis::advance(double seconds) {
    const double change = wanted - speed;
    const double ramp = std::min(seconds, std::abs(change) / acceleration);
    const double after = ramp < seconds ? wanted : speed + std::copysign(acceleration * ramp, change);
    place += (speed + after) / 2 * ramp + wanted * (seconds - ramp);
    speed = after;
    if (place <= low || place >= 1) {
        place = std::clamp(place, low, 1.0);
        // At its end the axis rests, unless it is on its way back.
        if (const bool outwards = place <= low ? wanted <= 0 : wanted >= 0; outwards)
            speed = wanted = 0;
    }
    if (speed == 0 && wanted == 0 && std::abs(place) < detent)
        place = 0;
}

LoopHead::LoopHead(std::shared_ptr<const Clock> clock)
    : clock_(std::move(clock))
    , at_(clock_->steadyNow()) {
    axes_[Zoom].low = 0;
}

media::View LoopHead::view() const {
    const std::lock_guard lock(mutex_);
    catchUp();
    return current();
}

bool LoopHead::isMoving() const {
    const std::lock_guard lock(mutex_);
    catchUp();
    return travel_ || std::any_of(axes_.begin(), axes_.end(),
                                  [](const Axis& axis) { return axis.speed != 0 || axis.wanted != 0; });
}

int LoopHead::cruise() const {
    const std::lock_guard lock(mutex_);
    return cruise_ ? cruise_->number : 0;
}

void LoopHead::move(const PtzMove& move) {
    const std::lock_guard lock(mutex_);
    catchUp();
    cruise_.reset();
    travel_.reset();
    const double speed = speedStep * move.speed;
    drive(Pan, move.pan, speed);
    drive(Tilt, move.tilt, speed);
    drive(Zoom, move.zoom, speed / 2);
}

void LoopHead::stop() {
    const std::lock_guard lock(mutex_);
    catchUp();
    halt();
}

void LoopHead::focus(int direction) {
    const std::lock_guard lock(mutex_);
    catchUp();
    drive(Focus, direction, lensSpeed);
}

void LoopHead::iris(int direction) {
    const std::lock_guard lock(mutex_);
    catchUp();
    drive(Iris, direction, lensSpeed);
}

void LoopHead::goTo(const media::View& view) {
    const std::lock_guard lock(mutex_);
    catchUp();
    cruise_.reset();
    travelTo(view, at_);
}

void LoopHead::startCruise(int number, std::vector<Stop> stops) {
    const std::lock_guard lock(mutex_);
    catchUp();
    cruise_ = Cruise{number, std::move(stops), 0, {}};
    travelTo(cruise_->stops.front().view, at_);
}

void LoopHead::stopCruise() {
    const std::lock_guard lock(mutex_);
    catchUp();
    if (cruise_)
        halt();
}

void LoopHead::reset() {
    const std::lock_guard lock(mutex_);
    catchUp();
    halt();
    for (Axis& axis : axes_)
        axis.place = axis.speed = axis.wanted = 0;
}

void LoopHead::catchUp() const {
    const Moment now = clock_->steadyNow();
    while (at_ < now) {
        if (travel_) {
            const Moment end = travel_->begin + std::chrono::duration_cast<Moment::duration>(travel_->length);
            if (now < end)
                return follow(*travel_, now);
            place(travel_->to);
            travel_.reset();
            at_ = end;
            if (cruise_)
                cruise_->leaveAt = at_ + cruise_->stops[cruise_->next].stay;
        } else if (cruise_ && cruise_->leaveAt <= now) {
            at_ = cruise_->leaveAt;
            cruise_->next = (cruise_->next + 1) % cruise_->stops.size();
            travelTo(cruise_->stops[cruise_->next].view, at_);
        } else {
            return moveOn(now);
        }
    }
}

void LoopHead::moveOn(Moment now) const {
    for (Axis& axis : axes_) {
        const Moment turn = std::clamp(axis.until, at_, now);
        axis.advance(duration<double>(turn - at_).count());
        if (turn < now) {
            axis.wanted = 0;
            axis.advance(duration<double>(now - turn).count());
        }
    }
    at_ = now;
}

void LoopHead::follow(const Travel& travel, Moment now) const {
    const double part = eased(duration<double>(now - travel.begin).count() / travel.length.count());
    place({between(travel.from.pan, travel.to.pan, part), between(travel.from.tilt, travel.to.tilt, part),
           between(travel.from.zoom, travel.to.zoom, part), between(travel.from.focus, travel.to.focus, part),
           between(travel.from.iris, travel.to.iris, part)});
    at_ = now;
}

void LoopHead::drive(AxisName axis, int direction, double speed) {
    axes_[axis].wanted = direction * speed;
    axes_[axis].until = at_ + longestMove;
}

/// Whatever moves comes to rest softly.
void LoopHead::halt() {
    cruise_.reset();
    travel_.reset();
    for (Axis& axis : axes_)
        axis.wanted = 0;
}

void LoopHead::travelTo(const media::View& view, Moment begin) const {
    const media::View from = current();
    for (Axis& axis : axes_)
        axis.speed = axis.wanted = 0;
    const double longest =
        std::max({std::abs(view.pan - from.pan), std::abs(view.tilt - from.tilt), 2 * std::abs(view.zoom - from.zoom),
                  std::abs(view.focus - from.focus), std::abs(view.iris - from.iris)});
    travel_ = Travel{from, view, begin, duration<double>(std::max(shortestTravel, longest / travelSpeed))};
}

void LoopHead::place(const media::View& view) const {
    axes_[Pan].place = view.pan;
    axes_[Tilt].place = view.tilt;
    axes_[Zoom].place = view.zoom;
    axes_[Focus].place = view.focus;
    axes_[Iris].place = view.iris;
}

media::View LoopHead::current() const {
    const auto at = [this](AxisName axis) {
        return static_cast<float>(axes_[axis].place);
    };
    return {at(Pan), at(Tilt), at(Zoom), at(Focus), at(Iris)};
}

} // namespace ipncsdk::device
