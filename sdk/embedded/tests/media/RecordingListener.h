#pragma once

#include "media/Picture.h"
#include "media/Stream.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace ipncsdk::media {

/// Keeps what a stream reports, and lets a test wait for it. Everything is thread-safe.
class RecordingListener final : public StreamListener {
public:
    struct Coded {
        std::vector<std::uint8_t> bytes;
        bool keyFrame = false;
        std::chrono::microseconds time{0};
    };
    struct Record {
        std::vector<OpenStage> stages; ///< since the last `onOpened`
        std::vector<StreamParameters> opened;
        std::vector<Coded> coded;
        int decoded = 0;
        Picture newest;                         ///< the last picture
        std::vector<std::pair<int, int>> sizes; ///< of pictures, where they differ from the one before
        std::vector<std::int16_t> sound;        ///< of the last run of equal form, interleaved
        std::pair<int, int> soundForm;          ///< rate and channels
        std::optional<StreamError> closed;
        int callsAfterClose = 0;

        /// True when each coded frame is later than the one before.
        bool timesGoOn() const {
            return std::adjacent_find(coded.begin(), coded.end(), [](const Coded& earlier, const Coded& later) {
                       return later.time <= earlier.time;
                   }) == coded.end();
        }
    };

    /// Called at the start of every call; to be set before the subscription.
    std::function<void()> onAnything;
    /// Called with every picture, on the stream's thread; to be set before the subscription.
    std::function<void(const DecodedFrame&)> onPicture;

    /// Waits for a condition on the record, no longer than to the closing; generous, for a loaded machine under
    /// a sanitizer.
    bool waitFor(const std::function<bool(const Record&)>& condition,
                 std::chrono::seconds patience = std::chrono::seconds(300)) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, patience, [&] { return record_.closed || condition(record_); });
        return condition(record_);
    }
    bool waitForPictures(int count) {
        return waitFor([count](const Record& record) { return record.decoded >= count; });
    }
    bool waitForCoded(std::size_t count) {
        return waitFor([count](const Record& record) { return record.coded.size() >= count; });
    }
    /// The reason of the closing; nothing when it did not come.
    std::optional<StreamError> waitForClose() {
        waitFor([](const Record& record) { return record.closed.has_value(); });
        return record().closed;
    }
    Record record() const {
        const std::lock_guard lock(mutex_);
        return record_;
    }

    void onStage(OpenStage stage) override {
        note([&](Record& record) { record.stages.push_back(stage); });
    }
    void onOpened(const StreamParameters& parameters) override {
        note([&](Record& record) { record.opened.push_back(parameters); });
    }
    void onDecoded(const DecodedFrame& frame) override {
        if (onPicture) {
            onPicture(frame);
        }
        note([&](Record& record) {
            ++record.decoded;
            record.newest.resize(frame.width, frame.height);
            record.newest.samples.assign(frame.data, frame.data + i420Size(frame.width, frame.height));
            record.newest.time = frame.time;
            const std::pair size(frame.width, frame.height);
            if (record.sizes.empty() || record.sizes.back() != size) {
                record.sizes.push_back(size);
            }
        });
    }
    void onCoded(const CodedFrame& frame) override {
        note([&](Record& record) {
            record.coded.push_back({{frame.data, frame.data + frame.size}, frame.keyFrame, frame.time});
        });
    }
    void onSound(const SoundBlock& block) override {
        note([&](Record& record) {
            const std::pair form(block.rate, block.channels);
            if (record.soundForm != form) {
                record.soundForm = form;
                record.sound.clear();
            }
            record.sound.insert(record.sound.end(), block.samples, block.samples + block.bytes() / 2);
        });
    }
    void onClosed(StreamError reason) override {
        note([&](Record& record) { record.closed = reason; });
    }

private:
    template <typename Change>
    void note(Change&& change) {
        if (onAnything) {
            onAnything();
        }
        const std::lock_guard lock(mutex_);
        record_.callsAfterClose += record_.closed ? 1 : 0;
        change(record_);
        changed_.notify_all();
    }

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    Record record_;
};

} // namespace ipncsdk::media
