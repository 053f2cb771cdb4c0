#include "onvif/LocalAddresses.h"

// Before the others, which build on it.
#include <winsock2.h>
// Behind it.
#include <iphlpapi.h>
#include <ws2tcpip.h>

#include <cstdint>
#include <cstdio>

namespace ipncsdk::onvif {

std::vector<std::string> localAddresses() {
    constexpr ULONG wanted = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
    constexpr int attempts = 3; // interfaces may come up between asking for the size and asking for the list
    // In units that are aligned as the list is.
    std::vector<std::uint64_t> memory(2048);
    ULONG result = ERROR_BUFFER_OVERFLOW;
    auto* const list = [&]() -> IP_ADAPTER_ADDRESSES* {
        for (int attempt = 0; attempt < attempts && result == ERROR_BUFFER_OVERFLOW; ++attempt) {
            auto size = static_cast<ULONG>(memory.size() * sizeof(std::uint64_t));
            auto* const begin = reinterpret_cast<IP_ADAPTER_ADDRESSES*>(memory.data());
            result = GetAdaptersAddresses(AF_INET, wanted, nullptr, begin, &size);
            if (result == NO_ERROR)
                return begin;
            memory.resize(size / sizeof(std::uint64_t) + 1);
        }
        return nullptr;
    }();
    std::vector<std::string> addresses;
    for (const IP_ADAPTER_ADDRESSES* each = list; each != nullptr; each = each->Next) {
        if (each->OperStatus != IfOperStatusUp)
            continue;
        for (const auto* unicast = each->FirstUnicastAddress; unicast != nullptr; unicast = unicast->Next) {
            const auto* const address = reinterpret_cast<const sockaddr_in*>(unicast->Address.lpSockaddr);
            const auto* const bytes = reinterpret_cast<const unsigned char*>(&address->sin_addr);
            char text[16] = {};
            std::snprintf(text, sizeof(text), "%u.%u.%u.%u", unsigned{bytes[0]}, unsigned{bytes[1]},
                          unsigned{bytes[2]}, unsigned{bytes[3]});
            addresses.emplace_back(text);
        }
    }
    return addresses;
}

} // namespace ipncsdk::onvif
