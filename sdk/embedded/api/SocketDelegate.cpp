#include "api/SocketDelegate.h"

#include "base/Log.h"

#include <charconv>
#include <cstdint>

namespace ipncsdk::api {

TCPSocketDelegate* delegateFromReply(std::string_view reply) {
    if (reply.empty())
        return nullptr;
    std::intptr_t address = 0;
    const char* end = reply.data() + reply.size();
    const auto [stop, error] = std::from_chars(reply.data(), end, address);
    if (error != std::errc() || stop != end || address == 0) {
        logLine("the client's reply to getsocketdelegate is not an address");
        return nullptr;
    }
    return reinterpret_cast<TCPSocketDelegate*>(address);
}

} // namespace ipncsdk::api
