#include "onvif/LocalAddresses.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <memory>

namespace ipncsdk::onvif {

std::vector<std::string> localAddresses() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0)
        return {};
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(first, &freeifaddrs);
    std::vector<std::string> addresses;
    for (const ifaddrs* each = first; each != nullptr; each = each->ifa_next) {
        const bool up = (each->ifa_flags & IFF_UP) != 0;
        const bool speaks = (each->ifa_flags & (IFF_MULTICAST | IFF_LOOPBACK)) != 0;
        if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET || !up || !speaks)
            continue;
        std::array<char, INET_ADDRSTRLEN> text{};
        const auto* const address = reinterpret_cast<const sockaddr_in*>(each->ifa_addr);
        if (inet_ntop(AF_INET, &address->sin_addr, text.data(), text.size()) != nullptr)
            addresses.emplace_back(text.data());
    }
    return addresses;
}

} // namespace ipncsdk::onvif
