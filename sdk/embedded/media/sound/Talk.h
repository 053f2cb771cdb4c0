#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace ipncsdk::media {

class SoundConverter;

/// What one person says to a camera: taken in at any rate and number of channels, kept as one channel at `rate`, and
/// played by the camera's readers, each at its own place in it. What is not played within a second is lost, the
/// oldest first. Thread-safe.
///
/// Life: made, then opened by the hub when the way to the camera is there, then ended once; an ended one never opens.
class Talk final {
public:
    static constexpr int rate = 16000;        ///< samples a second
    static constexpr std::size_t kept = rate; ///< samples

    /// The form in which samples will be handed over: 8000 to 48000 a second, one or two channels.
    Talk(int inputRate, int inputChannels);
    ~Talk();
    Talk(const Talk&) = delete;
    Talk& operator=(const Talk&) = delete;

    /// Bytes of one second as they are handed over: the most that may come at once.
    [[nodiscard]] std::size_t secondOfBytes() const;
    /// Takes interleaved 16-bit samples, at any address; they are copied. False when they are no whole samples or
    /// more than a second, and while the way to the camera is not open.
    bool push(const void* samples, std::size_t bytes);

    /// The way to the camera is there; false when this has ended before.
    bool open();
    void end();
    [[nodiscard]] bool hasEnded() const;

    /// A reader's place.
    struct Place {
        std::uint64_t sample = 0; ///< that comes next
    };
    /// Where a reader begins that meets the talk now: `samples` before its newest one, or at its beginning.
    [[nodiscard]] Place placeBefore(std::size_t samples) const;
    /// How many samples wait behind a place.
    [[nodiscard]] std::size_t waiting(const Place& place) const;
    /// Copies the next samples and moves the place on. Returns how many there were; `lost` tells whether some were
    /// lost before them.
    std::size_t take(Place& place, std::span<std::int16_t> samples, bool& lost) const;

private:
    enum class State { New, Open, Ended };

    const int inputRate_;
    const int inputChannels_;

    // All below is guarded by mutex_.
    mutable std::mutex mutex_;
    State state_ = State::New;
    const std::unique_ptr<SoundConverter> converter_;
    std::vector<std::int16_t> input_; ///< what was handed over, where samples may be read
    std::vector<std::int16_t> ring_ = std::vector<std::int16_t>(kept);
    std::uint64_t end_ = 0; ///< samples taken in so far; the last `kept` of them stand in the ring, by their number
};

/// Who talks to one camera: one person at a time. Thread-safe.
class TalkLine final {
public:
    /// Opens a talk. False when it has ended, or somebody else talks.
    bool begin(const std::shared_ptr<Talk>& talk);
    /// The talk that began last, also when it has ended; null when there was none.
    [[nodiscard]] std::shared_ptr<Talk> talk() const;

    /// Takes the one way there is to a camera, until `leave`; false while somebody else has it.
    bool enter() { return !taken_.exchange(true); }
    void leave() { taken_ = false; }

private:
    mutable std::mutex mutex_;
    std::shared_ptr<Talk> talk_; ///< guarded by mutex_
    std::atomic<bool> taken_{false};
};

} // namespace ipncsdk::media
