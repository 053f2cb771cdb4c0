#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ipncsdk::media {

/// What a camera answers to a request.
struct RtspResponse {
    int status = 0;
    int sequence = 0; ///< CSeq: the request that this answers
    /// Names in small letters; values without surrounding blanks and without control characters.
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;

    /// The first value under a name in small letters; empty when there is none.
    std::string_view header(std::string_view name) const;
    bool isGood() const { return status >= 200 && status < 300; }
};

/// What is asked of a camera. No part may hold a control character.
struct RtspRequest {
    std::string method;
    std::string url; ///< without credentials
    std::vector<std::pair<std::string, std::string>> headers;

    /// As it goes over the wire, without a body.
    std::string text(int sequence) const;
};

} // namespace ipncsdk::media
