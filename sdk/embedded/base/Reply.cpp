#include "base/Reply.h"

namespace ipncsdk {

std::string responseText(const char* family, int requestId, const Reply& reply, Json extra) {
    Json message = std::move(extra);
    message["type"] = family;
    message["reqid"] = requestId;
    message["retcode"] = static_cast<int>(reply.code);
    if (reply.code == ServiceCode::Done) {
        message["resp"] = reply.content;
        message["resp"]["state"] = "ok";
    } else {
        message["resp"] = {{"state", "error"}, {"errcode", errorText(reply.code)}};
    }
    return toText(message);
}

} // namespace ipncsdk
