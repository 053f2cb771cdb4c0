#pragma once

#include <string>
#include <vector>

namespace ipncsdk::onvif {

/// The IPv4 addresses of this machine's interfaces that are up, as text; the loopback's, too.
std::vector<std::string> localAddresses();

} // namespace ipncsdk::onvif
