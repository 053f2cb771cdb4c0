#include "media/file/FileClock.h"

#include <algorithm>

namespace ipncsdk::media {

namespace {

/// Beyond it a step is no frame that stood for long, but a damaged or foreign stamp.
constexpr std::chrono::seconds longestStep{10};
/// Frames are never reordered over a longer time.
constexpr std::chrono::seconds longestReordering{5};
/// How far units that follow each other by one period may be from what is shown.
constexpr std::chrono::milliseconds largestDrift{500};

} // namespace

void FileClock::beginLoop() {
    last_.reset();
    anchor_.reset();
}

FileClock::microseconds FileClock::follow(microseconds step) {
    due_ = due_ ? *due_ + step : microseconds(0);
    return *due_;
}

FileClock::Times FileClock::at(std::optional<microseconds> decodeStamp, std::optional<microseconds> showStamp) {
    if (!decodeStamp && showStamp && reordering_ > 0) {
        return byShowing(*showStamp);
    }
    const auto stamp = decodeStamp ? decodeStamp : showStamp;
    auto step = stamp && last_ ? *stamp - *last_ : period_;
    if (step < microseconds(0) || step > longestStep) {
        step = period_;
    }
    // A unit without a stamp moves what the next one is measured from.
    last_ = stamp ? stamp : last_ ? std::optional(*last_ + step) : std::nullopt;
    const auto due = follow(step);
    const auto wait = decodeStamp && showStamp ? *showStamp - *decodeStamp : microseconds(0);
    return {due, due + std::clamp<microseconds>(wait, microseconds(0), longestReordering)};
}

std::optional<FileClock::microseconds> FileClock::dueOf(microseconds stamp) const {
    if (!due_ || (!anchor_ && !last_)) {
        return std::nullopt;
    }
    const auto due = anchor_ ? anchor_->time + (stamp - anchor_->stamp) : *due_ + (stamp - *last_);
    const bool near = due - *due_ <= longestStep && *due_ - due <= longestStep;
    return near ? std::optional(due) : std::nullopt;
}

FileClock::Times FileClock::byShowing(microseconds showStamp) {
    auto due = follow(period_);
    if (!anchor_) {
        anchor_ = Anchor{showStamp, due};
    }
    auto target = anchor_->time + (showStamp - anchor_->stamp);
    if (target - due > longestStep || due - target > longestStep) {
        anchor_ = Anchor{showStamp, due}; // a jump counts as one frame
        target = due;
    } else if (target - due > largestDrift + reordering_ * period_) {
        due = follow(target - due);
    }
    const auto shown = target + reordering_ * period_;
    return {due, std::clamp<microseconds>(shown, due, due + longestReordering)};
}

} // namespace ipncsdk::media
