#include "media/rtsp/RtspReader.h"

#include "media/backchannel/BackChannelQuestion.h"
#include "media/rtsp/RtspAddress.h"
#include "media/rtsp/RtspSession.h"

#include <algorithm>
#include <string>

namespace ipncsdk::media {

namespace {

const char* wordsFor(StreamError error) {
    switch (error) {
    case StreamError::AddressUnreachable:
        return "cannot be reached";
    case StreamError::StreamNotFound:
        return "has no stream under this path";
    case StreamError::PasswordRefused:
        return "refuses user name or password";
    case StreamError::CodecNotSupported:
        return "sends no H.264 video";
    case StreamError::TimedOut:
        return "sent nothing in time";
    case StreamError::ConnectionLost:
        return "broke the connection";
    case StreamError::ProxyFailed:
        return "cannot be reached through the client's transport";
    default:
        return "could not be read";
    }
}

/// Errors that trying again cannot mend.
bool isFinal(StreamError error) {
    return error == StreamError::PasswordRefused || error == StreamError::CodecNotSupported ||
           error == StreamError::Internal;
}

} // namespace

RtspReader::RtspReader(std::string camera, RtspSource source, RtspOptions options)
    : camera_(std::move(camera))
    , source_(std::move(source))
    , options_(std::move(options)) {}

StreamError RtspReader::run(ReaderHost& host) {
    host.stage(OpenStage::Information);
    const auto address = RtspAddress::parse(source_);
    if (!address) {
        host.log("the camera's address is no rtsp address");
        return StreamError::AddressUnreachable;
    }
    const std::string place = "the camera at " + address->host() + ':' + std::to_string(address->port()) + ' ';
    BackChannelQuestion question({camera_, source_, options_.socketDelegate, options_.networkTimeout},
                                 options_.backChannels, [&host](const std::string& line) { host.log(line); });
    StreamClock clock;
    bool everOpened = false;
    bool withSound = true;
    auto pause = options_.firstPause;
    while (host.running()) {
        TCPSocketDelegate* delegate = options_.socketDelegate ? options_.socketDelegate() : nullptr;
        StreamError error = StreamError::None;
        bool soundRefused = false;
        {
            RtspSession session(host, *address, clock, question, delegate, options_.networkTimeout, everOpened,
                                withSound);
            error = session.run();
            // Some cameras describe sound and then refuse it; that must not cost the pictures.
            soundRefused = error == StreamError::StreamNotFound && session.failedWithSound();
            withSound = !soundRefused && (withSound || !session.opened());
            if (session.opened()) {
                everOpened = true;
                pause = options_.firstPause;
            }
        }
        if (!host.running()) {
            break;
        }
        host.log(place + (soundRefused ? "refuses to send its sound" : wordsFor(error)));
        if (soundRefused) {
            host.waitUntil(Clock::now() + options_.firstPause);
            continue;
        }
        if (!everOpened || isFinal(error)) {
            return error;
        }
        host.stage(OpenStage::Connecting);
        if (!host.waitUntil(Clock::now() + pause)) {
            break;
        }
        pause = std::min(pause * 2, options_.longestPause);
    }
    return StreamError::None;
}

} // namespace ipncsdk::media
