#pragma once

#include "media/Stream.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ipncsdk {
class TCPSocketDelegate;
}

namespace ipncsdk::media {

class LoopControl;

struct HubOptions {
    /// Where the recorded loops are kept once they are made; created when missing.
    std::filesystem::path loopFolder;
    /// Asks the client for a transport to one camera; null means: connect directly. Called on hub threads.
    std::function<TCPSocketDelegate*()> socketDelegate;
    /// One line of diagnostics; called on any thread.
    std::function<void(const std::string&)> log;
    /// Pauses before a lost connection is made again: the first, doubled each time up to the longest.
    std::chrono::milliseconds firstPause{1000};
    std::chrono::milliseconds longestPause{30000};
    /// How long the network may be silent while running, and how long opening may take where the subscription does
    /// not say otherwise.
    std::chrono::milliseconds networkTimeout{10000};
    /// What moves and restarts a loop camera; null where nothing does. Called from inside `subscribe` and `preview`.
    std::function<std::shared_ptr<const LoopControl>(const std::string& camera)> loopControl = nullptr;
};

/// Reads, decodes and hands out streams. Thread-safe.
///
/// One reader thread serves all subscribers of one stream (camera, quality, source), and decodes only while at
/// least one of them wants pictures. A reader ends with its last subscriber.
class StreamHub {
public:
    using Id = int;

    explicit StreamHub(HubOptions options);
    /// Ends every subscription (without `onClosed`) and joins every thread.
    ~StreamHub();
    StreamHub(const StreamHub&) = delete;
    StreamHub& operator=(const StreamHub&) = delete;

    /// Does the destructor's work early: whoever waits in `snapshot` or `preview` on another thread comes back at
    /// once, and later calls of `subscribe` return 0 and do nothing. Never called from a listener.
    void stop();

    /// Begins a subscription and returns its id (above 0). Everything else is reported to the listener, never from
    /// inside this call.
    Id subscribe(const Subscription& subscription, std::shared_ptr<StreamListener> listener);

    /// Ends a subscription without `onClosed`. No call to its listener starts any more when this returns; one that
    /// runs on another thread has been waited for (so two listeners must not end each other's subscriptions at the
    /// same time). Network reads that are pending are broken off, not waited for. Unknown ids are ignored.
    void unsubscribe(Id id);

    /// Writes the newest picture of a running subscription as a JPEG file, whole or not at all. Also works for
    /// a subscription that takes coded frames only (then the next key frame is decoded for it, up to 3 s later).
    /// An id that is not running gives `BadRequest`.
    StreamError snapshot(Id id, const std::filesystem::path& file);

    /// Makes one JPEG picture of a camera at most `width` pixels wide, from a running reader of it where there is
    /// one, else by opening the light stream for as long as it takes. Blocks up to the time-out. `jpeg` is left empty
    /// when no picture came.
    StreamError preview(const Subscription& subscription, int width, std::chrono::milliseconds timeout,
                        std::vector<std::uint8_t>& jpeg);

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace ipncsdk::media
