#pragma once

#include "api/Request.h"
#include "api/Worker.h"
#include "base/JsonText.h"
#include "base/Reply.h"
#include "device/FoundCameras.h"
#include "onvif/Discovery.h"
#include "onvif/HttpPost.h"

#include <atomic>
#include <functional>
#include <memory>

namespace ipncsdk::api {

/// Finds network cameras and asks them what they are, on a worker of its own: the network takes its time.
class CameraFinder final {
public:
    struct Parts {
        RequestTable& requests;
        device::FoundCameras& found;
        Worker& network; ///< waits for cameras; outlived by this
        const std::atomic<bool>& stopping;
        onvif::DiscoveryOptions discovery;
        std::function<TCPSocketDelegate*()> socketDelegate;
    };

    explicit CameraFinder(Parts parts);
    CameraFinder(const CameraFinder&) = delete;
    CameraFinder& operator=(const CameraFinder&) = delete;

    /// "onvifprobe" of an account that is signed in: asks one camera and responds with what it is.
    void probe(const std::shared_ptr<Request>& request, const Json& message);

    /// Searches the local network, unless a search is under way, and calls `changed` on the worker whenever other
    /// cameras than before are known.
    void search(std::function<void()> changed);

private:
    void respond(const std::shared_ptr<Request>& request, const Reply& reply);
    void runSearch(const std::function<void()>& changed);

    const Parts parts_;
    std::atomic<bool> searching_{false};
};

} // namespace ipncsdk::api
