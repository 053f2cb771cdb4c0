#pragma once

#include "media/StreamReader.h"

#include <chrono>
#include <functional>

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
};

/// Reads a network camera over RTSP and makes a lost connection again by itself.
class RtspReader final : public StreamReader {
public:
    RtspReader(RtspSource source, RtspOptions options);
    StreamError run(ReaderHost& host) override;

private:
    const RtspSource source_;
    const RtspOptions options_;
};

} // namespace ipncsdk::media
