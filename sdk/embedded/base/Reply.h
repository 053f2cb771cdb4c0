#pragma once

#include "base/JsonText.h"
#include "base/ServiceCode.h"

#include <string>
#include <utility>

namespace ipncsdk {

/// What a request came to: a code, and what the response's "resp" object holds besides "state" and "errcode".
struct Reply {
    ServiceCode code = ServiceCode::Done;
    Json content = Json::object();

    Reply() = default;
    Reply(ServiceCode result)
        : code(result) {} // NOLINT: a code alone is a whole reply
    explicit Reply(Json data)
        : content(std::move(data)) {}
};

/// The response text of a request of `family`; `extra` holds further keys of the envelope.
std::string responseText(const char* family, int requestId, const Reply& reply, Json extra = Json::object());

} // namespace ipncsdk
