#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace ipncsdk::media {

/// Makes RTP packets (RFC 3550, 5.1) of one stream, each behind the four bytes that carry it inside an RTSP
/// connection (RFC 2326, 10.12). Numbers and times wrap round.
class RtpPacker final {
public:
    /// Where a stream begins; by rule at random.
    struct Begin {
        std::uint16_t number = 0;
        std::uint32_t time = 0;
        std::uint32_t source = 0; ///< SSRC
    };

    RtpPacker(std::uint8_t payloadType, std::uint8_t channel, const Begin& begin)
        : payloadType_(payloadType)
        , channel_(channel)
        , next_(begin) {}

    /// The next packet; of G.711, where a sample is a byte. At most 65523 of them.
    std::string pack(std::span<const std::uint8_t> samples);
    /// Time passes in which nothing is said: the next packet is the first one of a run.
    void pass(std::uint32_t samples);

private:
    const std::uint8_t payloadType_;
    const std::uint8_t channel_;
    Begin next_;
    bool begins_ = true;
};

} // namespace ipncsdk::media
