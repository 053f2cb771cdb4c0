// What cameras send: answers to searches, to SOAP and to RTSP requests, descriptions of their sound.

#include "Fuzz.h"
#include "media/backchannel/BackChannelMedia.h"
#include "media/backchannel/RtspAuthorization.h"
#include "media/backchannel/RtspParser.h"
#include "onvif/DiscoveryMessage.h"
#include "onvif/Names.h"
#include "onvif/Soap.h"
#include "onvif/Url.h"

#include <tuple>

using namespace ipncsdk;

namespace {

/// In pieces as the network may cut it, the cuts told by the input itself.
void readRtsp(const std::string& text) {
    media::RtspParser parser;
    media::RtspAuthorization authorization("user", "password");
    std::size_t place = 0;
    while (place < text.size()) {
        const std::size_t piece = 1 + static_cast<unsigned char>(text[place]) % 64U;
        parser.feed(std::string_view(text).substr(place, piece));
        place += piece;
        media::RtspResponse response;
        auto found = parser.next(response);
        for (; found == media::RtspParser::Found::Response; found = parser.next(response)) {
            if (authorization.accept(response)) {
                for (const char character : authorization.header("DESCRIBE", "rtsp://camera/"))
                    fuzz::demand(static_cast<unsigned char>(character) >= ' ' || character == '\t',
                                 "no header has control characters");
            }
            media::BackChannelMedia::choose(response.body, "rtsp://camera/");
        }
        if (found == media::RtspParser::Found::Bad) {
            fuzz::demand(!parser.complaint().empty(), "what is wrong is said");
            return;
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = fuzz::textOf(data, size);
    readRtsp(text);
    media::BackChannelMedia::choose(text, "rtsp://camera/stream");
    onvif::readProbeMatches(text, "192.0.2.1", {"urn:uuid:1"});
    std::ignore = onvif::SoapReply::read(text, {onvif::ns::media, "GetProfilesResponse"});
    onvif::deviceServiceUrl(text);
    onvif::parseRtspUrl(text);
    return 0;
}
