#include "media/sound/TalkPlayer.h"

#include <utility>

namespace ipncsdk::media {

namespace {

/// Talk begins to be played when this much of it has come, so that it does not stutter.
constexpr std::size_t delay = Talk::rate / 5;

} // namespace

TalkPlayer::TalkPlayer(std::shared_ptr<const TalkLine> line)
    : line_(std::move(line)) {}

bool TalkPlayer::isTalkedTo() {
    if (talk_ != nullptr) {
        return true;
    }
    auto newest = line_->talk();
    // One that ended before it was met has been said to somebody else.
    if (newest == nullptr || newest->hasEnded()) {
        return false;
    }
    talk_ = std::move(newest);
    place_ = talk_->placeBefore(delay);
    playing_ = everLost_ = false;
    return true;
}

std::size_t TalkPlayer::take(std::span<std::int16_t> samples) {
    if (!isTalkedTo()) {
        return 0;
    }
    // Asked before what is left is looked at: nothing comes behind the end.
    const bool ended = talk_->hasEnded();
    playing_ = playing_ || ended || talk_->waiting(place_) >= delay;
    if (!playing_) {
        return 0;
    }
    bool lost = false;
    const std::size_t count = talk_->take(place_, samples, lost);
    lost_ = lost_ || (lost && !everLost_);
    everLost_ = everLost_ || lost;
    if (count < samples.size()) {
        playing_ = false;
        if (ended) {
            talk_.reset();
        }
    }
    return count;
}

bool TalkPlayer::hasLost() {
    return std::exchange(lost_, false);
}

} // namespace ipncsdk::media
