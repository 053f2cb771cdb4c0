#pragma once

#include "onvif/DiscoveryMessage.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace ipncsdk::onvif {

struct DiscoveryOptions {
    std::string group = "239.255.255.250";
    std::uint16_t port = 3702; ///< 0: nothing is sought
    /// Over the loopback alone, or over every interface that is up, the loopback among them.
    bool loopbackOnly = false;
    int rounds = 2; ///< how often is asked: datagrams get lost
    std::chrono::milliseconds round{2000};
};

/// Asks the local network for cameras and collects who answers, until the rounds are over or `cancelled` says true,
/// which is asked several times a second with what was found so far. Blocks. One entry a camera, in the order of
/// their ids. What answers is bounded: in size, in number, and to answers to the questions that were asked.
std::vector<FoundCamera> discover(const DiscoveryOptions& options,
                                  const std::function<bool(const std::vector<FoundCamera>&)>& cancelled);

} // namespace ipncsdk::onvif
