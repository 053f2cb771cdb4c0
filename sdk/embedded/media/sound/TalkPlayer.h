#pragma once

#include "media/sound/Talk.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace ipncsdk::media {

/// Plays what is said to a camera at an even pace, whoever says it. Belongs to one thread.
class TalkPlayer final {
public:
    explicit TalkPlayer(std::shared_ptr<const TalkLine> line);
    TalkPlayer(const TalkPlayer&) = delete;
    TalkPlayer& operator=(const TalkPlayer&) = delete;

    /// Somebody talks, or what was said is not played to its end.
    bool isTalkedTo();
    /// Takes what is due (`Talk::rate`); less than there is room for, down to nothing, when no more has been said.
    std::size_t take(std::span<std::int16_t> samples);
    /// True once for each talk of which something was lost, since it came faster than it is played.
    bool hasLost();

private:
    const std::shared_ptr<const TalkLine> line_;
    std::shared_ptr<Talk> talk_; ///< that is played; null when nobody talks
    Talk::Place place_;
    bool playing_ = false; ///< enough of it has come
    bool everLost_ = false;
    bool lost_ = false; ///< and `hasLost` has not told yet
};

} // namespace ipncsdk::media
