#pragma once

#include "media/StreamReader.h"
#include "media/backchannel/BackChannels.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace ipncsdk {
class TCPSocketDelegate;
}

namespace ipncsdk::media {

struct RtspOptions {
    /// Asks for a transport; empty or a null answer means a direct connection.
    std::function<TCPSocketDelegate*()> socketDelegate;
    std::chrono::milliseconds firstPause;
    std::chrono::milliseconds longestPause;
    std::chrono::milliseconds networkTimeout;
    std::shared_ptr<BackChannels> backChannels; ///< never null
};

/// Reads a network camera over RTSP and makes a lost connection again by itself.
class RtspReader final : public StreamReader {
public:
    RtspReader(std::string camera, RtspSource source, RtspOptions options);
    StreamError run(ReaderHost& host) override;

private:
    const std::string camera_;
    const RtspSource source_;
    const RtspOptions options_;
};

} // namespace ipncsdk::media
