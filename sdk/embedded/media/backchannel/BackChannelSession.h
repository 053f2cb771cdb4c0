#pragma once

#include "media/backchannel/BackChannelMedia.h"
#include "media/backchannel/RtspAuthorization.h"
#include "media/backchannel/RtspLink.h"
#include "media/rtsp/Relay.h"
#include "media/rtsp/RtspAddress.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace ipncsdk::media {

/// A camera's way for sound to it: the conversation about it and the connection that carries it. Everything is called
/// on one thread, and ends early with `Stopped` when `goesOn` says no.
class BackChannelSession final {
public:
    /// `delegate` (may be null) carries the connection, is made to connect at once, and is closed at the end.
    /// `silence` is how long a camera may be silent that is talked to; before that `giveUp` counts, if there is one.
    BackChannelSession(const RtspAddress& address, TCPSocketDelegate* delegate, std::chrono::milliseconds silence,
                       std::optional<Clock::time_point> giveUp, GoesOn goesOn);
    /// Says good-bye where a way was opened.
    ~BackChannelSession();
    BackChannelSession(const BackChannelSession&) = delete;
    BackChannelSession& operator=(const BackChannelSession&) = delete;

    /// Connects and asks whether there is a way. `NoTalk`: there is none.
    StreamError describe();
    /// `describe`, and opens the way. `TalkBusy`: the camera says that others use it.
    StreamError open();
    /// What was wrong, in words for the log; empty when the error itself says it.
    const std::string& why() const { return why_; }

    const BackChannelMedia& media() const { return media_; }
    /// Where in the connection the camera awaits sound.
    std::uint8_t channel() const { return channel_; }
    bool isRelayed() const { return relay_ != nullptr; }

    /// Sends a packet; false when it was left out, for the camera takes no more.
    bool send(std::string packet);
    /// Works until a moment and keeps the way open; not `None` when it is lost.
    StreamError workUntil(Clock::time_point moment);

private:
    bool waits() const;
    StreamError reach();
    StreamError exchange(const RtspRequest& request, RtspResponse& response);
    StreamError await(int sequence, RtspResponse& response);
    StreamError refusal(const RtspRequest& request, int status);
    int post(RtspRequest request);
    StreamError setUp();
    bool takeSession(std::string_view header);
    void keepAlive();
    StreamError takeAnswers();
    bool isPast(const std::optional<Clock::time_point>& moment) const { return moment && Clock::now() >= *moment; }

    const RtspAddress address_;
    const std::chrono::milliseconds silence_;
    const std::optional<Clock::time_point> giveUp_;
    const GoesOn goesOn_;
    std::unique_ptr<Relay> relay_; ///< outlives the connection through it
    RtspLink link_;
    RtspAuthorization authorization_;
    int sequence_ = 0; ///< of the last request
    std::string why_;

    BackChannelMedia media_;
    std::uint8_t channel_ = 0;
    std::string session_; ///< the camera's name for it; empty before there is one
    std::chrono::seconds life_{60};
    Clock::time_point nextKeepAlive_;
    int awaited_ = 0;          ///< number of the request that keeps the way open and is not answered yet; 0: none
    bool asksOptions_ = false; ///< the camera does not know the usual request for that
};

} // namespace ipncsdk::media
