#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ipncsdk::onvif {

/// A camera that answered a search.
struct FoundCamera {
    std::string uuid; ///< of its endpoint, in small letters, letters, digits and '-' only
    std::string url;  ///< device service, on the host that the answer came from
    std::string host; ///< that host
    std::string name; ///< may be empty, as the next ones
    std::string model;
    std::string mac; ///< "00:11:22:33:44:55"
    friend bool operator==(const FoundCamera&, const FoundCamera&) = default;
};

enum class Sought { Device, VideoTransmitter };

/// The question to the group, as WS-Discovery of April 2005 has it.
std::string probeMessage(const std::string& messageId, Sought sought);

/// The cameras in one answer, 16 at most; none when it is no answer to one of `questions` (message ids), or not well
/// formed. `sender` is the host that it came from.
std::vector<FoundCamera> readProbeMatches(std::string_view datagram, const std::string& sender,
                                          const std::vector<std::string>& questions);

} // namespace ipncsdk::onvif
