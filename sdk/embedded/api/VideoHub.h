#pragma once

#include "media/Stream.h"
#include "media/StreamHub.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace ipncsdk::api {

/// What the SDK needs of `media::StreamHub`, member for member, so that tests can stand in for it.
class VideoHub {
public:
    VideoHub() = default;
    VideoHub(const VideoHub&) = delete;
    VideoHub& operator=(const VideoHub&) = delete;
    virtual ~VideoHub() = default;

    virtual int subscribe(const media::Subscription& subscription,
                          std::shared_ptr<media::StreamListener> listener) = 0;
    virtual void unsubscribe(int id) = 0;
    /// Ends every subscription and breaks off pending snapshots and previews; nothing begins any more.
    virtual void stop() = 0;
    virtual media::StreamError snapshot(int id, const std::filesystem::path& file) = 0;
    virtual media::StreamError preview(const media::Subscription& subscription, int width,
                                       std::chrono::milliseconds timeout, std::vector<std::uint8_t>& jpeg) = 0;
};

using HubFactory = std::function<std::unique_ptr<VideoHub>(media::HubOptions options)>;

/// Makes the real hub.
std::unique_ptr<VideoHub> makeStreamHub(media::HubOptions options);

} // namespace ipncsdk::api
