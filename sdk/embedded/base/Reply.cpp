#include "base/Reply.h"

namespace ipncsdk {

std::string responseText(const char* family, int requestId, const Reply& reply, Json extra) {
    Json message = std::move(extra);
    message["type"] = family;
    message["reqid"] = requestId;
    message["retcode"] = static_cast<int>(reply.code);
    Json& content = message["resp"] = reply.content;
    content["state"] = reply.code == ServiceCode::Done ? "ok" : "error";
    if (reply.code != ServiceCode::Done)
        content["errcode"] = errorText(reply.code);
    return toText(message);
}

} // namespace ipncsdk
