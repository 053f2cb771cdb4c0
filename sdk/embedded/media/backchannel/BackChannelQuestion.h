#pragma once

#include "media/Diagnostics.h"
#include "media/backchannel/BackChannels.h"
#include "media/rtsp/RtspAddress.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace ipncsdk {
class TCPSocketDelegate;
}

namespace ipncsdk::media {

/// Finds out whether a camera can be talked to, on a thread of its own that lives as long as that takes. The object
/// belongs to one thread; its destructor breaks off what is under way.
class BackChannelQuestion final {
public:
    struct About {
        std::string camera;
        RtspSource source;
        std::function<TCPSocketDelegate*()> socketDelegate; ///< as `RtspOptions` have it
        std::chrono::milliseconds timeout;                  ///< for the whole
    };

    BackChannelQuestion(About about, std::shared_ptr<BackChannels> known, Log log);
    ~BackChannelQuestion();
    BackChannelQuestion(const BackChannelQuestion&) = delete;
    BackChannelQuestion& operator=(const BackChannelQuestion&) = delete;

    /// Asks the camera, unless that was done before. Returns at once.
    void ask(const RtspAddress& address);
    /// It is known that the camera can be talked to.
    bool isAnsweredYes() const { return known_->wayTo(about_.camera).has_value(); }

private:
    void work(const RtspAddress& address);

    const About about_;
    const std::shared_ptr<BackChannels> known_;
    const Log log_;
    std::atomic<bool> stop_{false};
    std::thread thread_; ///< once the camera is or was asked
};

} // namespace ipncsdk::media
