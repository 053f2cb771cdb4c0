#pragma once

#include "media/StreamReader.h"
#include "media/backchannel/RtspMessage.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ipncsdk::media {

/// Asked at least every 20 ms while something is waited for; false: it is waited for no longer.
using GoesOn = std::function<bool()>;

/// One connection to a camera: bytes go out, answers come in, and whatever else comes in is read and dropped. It
/// works while one of the functions below runs, which belong to one thread, and never waits longer than it is told.
class RtspLink final {
public:
    explicit RtspLink(GoesOn goesOn);
    /// Breaks off what is under way.
    ~RtspLink();
    RtspLink(const RtspLink&) = delete;
    RtspLink& operator=(const RtspLink&) = delete;

    /// Connects to the first of some numeric addresses that takes the connection; false when none does in time.
    bool connect(const std::vector<std::string>& addresses, std::uint16_t port,
                 std::optional<Clock::time_point> giveUp);
    /// Puts bytes behind those that wait to go out.
    void send(std::string bytes);
    /// How many bytes wait to go out.
    std::size_t unsent() const;
    /// Works until a moment, until an answer is there, or until the link is broken or no longer wanted; where the
    /// moment has come, works off what is there.
    void workUntil(Clock::time_point moment);
    /// From now on works whether it is wanted or not: for what is said at the end.
    void insist() { goesOn_ = nullptr; }
    /// The next answer that has come.
    std::optional<RtspResponse> takeAnswer();

    /// The camera has ended the connection, or has sent what cannot be taken.
    bool isBroken() const;
    /// What the camera sent that cannot be taken; empty when it sent no such thing.
    std::string_view complaint() const;

private:
    class Socket;

    bool isWanted() const { return !goesOn_ || goesOn_(); }

    GoesOn goesOn_;
    const std::unique_ptr<Socket> socket_;
};

} // namespace ipncsdk::media
