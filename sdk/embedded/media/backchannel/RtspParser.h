#pragma once

#include "media/backchannel/RtspMessage.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace ipncsdk::media {

/// Finds answers in what comes from a camera. Interleaved media and the camera's own requests are left out. What
/// is kept never grows beyond the longest message that is taken.
class RtspParser final {
public:
    static constexpr std::size_t longestHead = 16384; ///< bytes
    static constexpr std::size_t longestBody = 65536; ///< bytes

    enum class Found {
        Nothing,  ///< more has to come
        Response, ///< one answer
        Bad       ///< this is no RTSP, or an answer that cannot be taken; it stays so
    };

    /// Takes what came. To be followed by `next` until that finds nothing.
    void feed(std::string_view bytes);
    Found next(RtspResponse& response);
    /// What is wrong, once something is.
    std::string_view complaint() const { return complaint_; }

private:
    Found refuse(const char* complaint);
    bool skipMedia();
    Found takeHead();
    Found takeFirstLine(std::string_view line);
    Found takeHeader(std::string_view line);

    std::string buffer_;
    std::size_t skip_ = 0; ///< bytes of media that are still to be left out
    RtspResponse response_;
    bool inBody_ = false;    ///< the head of `response_` has been taken
    bool isRequest_ = false; ///< the camera asks: left out as a whole
    std::size_t bodySize_ = 0;
    std::string_view complaint_;
};

} // namespace ipncsdk::media
