#pragma once

#include "onvif/Outcome.h"
#include "onvif/Url.h"
#include "onvif/UsernameToken.h"

#include <chrono>
#include <functional>
#include <string>

namespace ipncsdk {
class TCPSocketDelegate;
}

namespace ipncsdk::onvif {

/// How cameras are reached. The functions are called on the thread that asks the camera.
struct Transport {
    /// Asks the client for a transport for one connection; null, or one that returns null, means: connect directly.
    std::function<TCPSocketDelegate*()> socketDelegate;
    /// Asked several times a second; true breaks off what is under way.
    std::function<bool()> cancelled;
    /// For one operation, from connecting to the last byte of the answer.
    std::chrono::milliseconds timeout{5000};
};

struct HttpAnswer {
    long status = 0;
    std::string body;
    bool digestOffered = false; ///< the answer asks for HTTP's own digest
};

/// Posts `body` and returns what came back, whatever its status. Redirects are not followed, certificates are not
/// checked (cameras make their own), and the environment's proxies are not asked.
/// `digest` (may be null): who answers a challenge for HTTP's own digest.
Outcome<HttpAnswer> post(const Transport& transport, const Url& url, const std::string& contentType,
                         const std::string& body, const Credentials* digest);

} // namespace ipncsdk::onvif
