#include "media/backchannel/RtspMessage.h"

#include <algorithm>

namespace ipncsdk::media {

std::string_view RtspResponse::header(std::string_view name) const {
    const auto found =
        std::find_if(headers.begin(), headers.end(), [&](const auto& header) { return header.first == name; });
    return found == headers.end() ? std::string_view() : std::string_view(found->second);
}

std::string RtspRequest::text(int sequence) const {
    std::string text = method + ' ' + url + " RTSP/1.0\r\nCSeq: " + std::to_string(sequence) + "\r\n";
    for (const auto& [name, value] : headers) {
        text.append(name).append(": ").append(value).append("\r\n");
    }
    return text + "\r\n";
}

} // namespace ipncsdk::media
