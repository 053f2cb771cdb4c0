#pragma once

#include "ipncsdk/TCPSocketDelegate.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>

namespace ipncsdk::media {

/// Carries one connection between a port of this machine's loopback and the client's transport.
///
/// Life: made; `connected` becomes `Yes` or `No`; when `Yes`, the first one who comes to `port` talks to the camera
/// until either side ends. The destructor breaks everything off. All calls from one thread.
class Relay final {
public:
    enum class Connected { Pending, Yes, No };

    /// Begins to connect `delegate` to the camera. From now on the delegate is used by the relay alone; it is closed
    /// exactly once, by the destructor at the latest.
    Relay(TCPSocketDelegate& delegate, std::string host, std::uint16_t port, std::chrono::milliseconds timeout);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    Connected connected() const { return connected_; }
    /// Where to connect to; 0 before `connected` is `Yes`.
    std::uint16_t port() const { return port_; }

private:
    class Pipe;
    struct CloseDelegate {
        void operator()(TCPSocketDelegate* delegate) const { delegate->Close(); }
    };

    void work();

    /// First, so that it is closed last and also when the rest cannot be made.
    const std::unique_ptr<TCPSocketDelegate, CloseDelegate> delegate_;
    const std::string host_;
    const std::uint16_t cameraPort_;
    const std::chrono::milliseconds timeout_;
    const std::unique_ptr<Pipe> pipe_;
    std::atomic<bool> stop_{false};
    std::atomic<Connected> connected_{Connected::Pending};
    std::atomic<std::uint16_t> port_{0};
    std::thread thread_; // last, for it uses the others
};

} // namespace ipncsdk::media
