#pragma once

#include "api/VideoHub.h"

#include <array>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ipncsdk::test {

/// What a test tells the hubs of one SDK, and what it learns of them. Thread-safe.
class HubScript final {
public:
    /// A stream of this camera closes with the error instead of opening.
    void fail(const std::string& camera, media::StreamError error);
    [[nodiscard]] media::StreamError failureOf(const std::string& camera) const;
    /// What happens to streams of one quality, of whatever camera.
    struct Course {
        std::atomic<bool> held{false};                                     ///< opens only once this is false
        std::atomic<media::StreamError> failure{media::StreamError::None}; ///< closes with this instead of opening
        std::atomic<bool> lose{false};                                     ///< closes with ConnectionLost
        std::atomic<int> begun{0};                                         ///< subscriptions so far
        std::atomic<int> frames{0};                                        ///< that were about to be delivered
    };
    Course& of(media::Quality quality) { return courses_[quality == media::Quality::Main ? 1 : 0]; }
    void noteSubscription(const media::Subscription& subscription);
    [[nodiscard]] std::vector<media::Subscription> subscriptions() const;
    /// The options of the hub made last.
    void setOptions(media::HubOptions options);
    [[nodiscard]] media::HubOptions options() const;

    std::atomic<int> running{0};    ///< subscriptions that have not ended
    std::atomic<bool> lose{false};  ///< every running stream closes with ConnectionLost
    std::atomic<bool> stall{false}; ///< previews take until the hub is stopped
    std::atomic<int> stalled{0};    ///< previews that wait for that

private:
    mutable std::mutex mutex_;
    std::map<std::string, media::StreamError> failures_;
    std::vector<media::Subscription> subscriptions_;
    media::HubOptions options_;
    std::array<Course, 2> courses_;
};

/// A hub without video: each subscription runs on a thread of its own and delivers tiny frames as fast as its
/// listener takes them. Of the access units each fifth is a key frame. A snapshot's file tells the stream's quality.
class FakeHub final : public api::VideoHub {
public:
    FakeHub(std::shared_ptr<HubScript> script, media::HubOptions options);
    ~FakeHub() override;

    int subscribe(const media::Subscription& subscription, std::shared_ptr<media::StreamListener> listener) override;
    void unsubscribe(int id) override;
    void stop() override;
    media::StreamError snapshot(int id, const std::filesystem::path& file) override;
    media::StreamError preview(const media::Subscription& subscription, int pixels, std::chrono::milliseconds timeout,
                               std::vector<std::uint8_t>& jpeg) override;

    static constexpr int width = 4; ///< of the light stream, as `height`; twice that in the main stream
    static constexpr int height = 2;

private:
    struct Stream;
    static void serve(const std::shared_ptr<Stream>& stream, HubScript& script);

    const std::shared_ptr<HubScript> script_;
    std::atomic<bool> stopped_{false};
    std::mutex mutex_;
    int lastId_ = 0;
    std::map<int, std::shared_ptr<Stream>> streams_;
    std::vector<std::thread> threads_;
};

} // namespace ipncsdk::test
