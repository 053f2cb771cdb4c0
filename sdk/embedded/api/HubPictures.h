#pragma once

#include "api/VideoHub.h"
#include "sensor/PictureSource.h"

#include <atomic>
#include <memory>

namespace ipncsdk::api {

/// Pictures of a stream of the hub. One that nobody waits for is not copied.
class HubPictures final : public sensor::PictureSource {
public:
    /// The hub outlives this; who waits comes back soon after `stopping` has been set.
    HubPictures(VideoHub& hub, media::Subscription subscription, const std::atomic<bool>& stopping);
    ~HubPictures() override;

    std::optional<media::Picture> next(std::chrono::milliseconds timeout) override;

private:
    class Grabber;

    VideoHub& hub_;
    const std::atomic<bool>& stopping_;
    const std::shared_ptr<Grabber> grabber_;
    const int id_;
};

} // namespace ipncsdk::api
