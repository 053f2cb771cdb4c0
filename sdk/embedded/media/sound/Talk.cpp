#include "media/sound/Talk.h"

#include "media/sound/SoundConverter.h"

#include <algorithm>
#include <cstring>

namespace ipncsdk::media {

Talk::Talk(int inputRate, int inputChannels)
    : inputRate_(inputRate)
    , inputChannels_(inputChannels)
    , converter_(std::make_unique<SoundConverter>()) {}

Talk::~Talk() = default;

std::size_t Talk::secondOfBytes() const {
    return static_cast<std::size_t>(inputRate_) * static_cast<std::size_t>(inputChannels_) * sizeof(std::int16_t);
}

bool Talk::push(const void* samples, std::size_t bytes) {
    const std::size_t frameBytes = static_cast<std::size_t>(inputChannels_) * sizeof(std::int16_t);
    if (bytes == 0 || bytes > secondOfBytes() || bytes % frameBytes != 0) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    if (state_ != State::Open) {
        return false;
    }
    input_.resize(bytes / sizeof(std::int16_t));
    std::memcpy(input_.data(), samples, bytes);
    AVChannelLayout layout{};
    av_channel_layout_default(&layout, inputChannels_);
    const auto* plane = reinterpret_cast<const std::uint8_t*>(input_.data());
    const auto converted = converter_->convert({layout, AV_SAMPLE_FMT_S16, inputRate_}, &plane,
                                               static_cast<int>(bytes / frameBytes), {rate, 1});
    for (const std::int16_t sample : converted) {
        ring_[static_cast<std::size_t>(end_++ % kept)] = sample;
    }
    return true;
}

bool Talk::open() {
    const std::lock_guard lock(mutex_);
    if (state_ == State::Ended) {
        return false;
    }
    state_ = State::Open;
    return true;
}

void Talk::end() {
    const std::lock_guard lock(mutex_);
    state_ = State::Ended;
}

bool Talk::hasEnded() const {
    const std::lock_guard lock(mutex_);
    return state_ == State::Ended;
}

Talk::Place Talk::placeBefore(std::size_t samples) const {
    const std::lock_guard lock(mutex_);
    return {end_ - std::min<std::uint64_t>(end_, samples)};
}

std::size_t Talk::waiting(const Place& place) const {
    const std::lock_guard lock(mutex_);
    return static_cast<std::size_t>(std::min<std::uint64_t>(end_ - place.sample, kept));
}

std::size_t Talk::take(Place& place, std::span<std::int16_t> samples, bool& lost) const {
    const std::lock_guard lock(mutex_);
    lost = end_ - place.sample > kept;
    place.sample = lost ? end_ - kept : place.sample;
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(end_ - place.sample, samples.size()));
    for (std::int16_t& sample : samples.first(count)) {
        sample = ring_[static_cast<std::size_t>(place.sample++ % kept)];
    }
    return count;
}

bool TalkLine::begin(const std::shared_ptr<Talk>& talk) {
    const std::lock_guard lock(mutex_);
    if (talk_ != nullptr && talk_ != talk && !talk_->hasEnded()) {
        return false;
    }
    if (!talk->open()) {
        return false;
    }
    talk_ = talk;
    return true;
}

std::shared_ptr<Talk> TalkLine::talk() const {
    const std::lock_guard lock(mutex_);
    return talk_;
}

} // namespace ipncsdk::media
