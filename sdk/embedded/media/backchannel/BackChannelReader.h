#pragma once

#include "media/StreamReader.h"
#include "media/backchannel/BackChannels.h"
#include "media/rtsp/RtspReader.h"
#include "media/sound/Talk.h"

#include <memory>
#include <string>

namespace ipncsdk::media {

class BackChannelSession;

/// The stream of those who talk to a network camera: nothing comes from it, and what is said goes to the camera over
/// a connection of its own. It ends when that is lost.
class BackChannelReader final : public StreamReader {
public:
    BackChannelReader(std::string camera, RtspSource source, RtspOptions options, std::shared_ptr<TalkLine> line);
    StreamError run(ReaderHost& host) override;

private:
    StreamError talk(ReaderHost& host, BackChannelSession& session) const;

    const std::string camera_;
    const RtspSource source_;
    const RtspOptions options_;
    const std::shared_ptr<TalkLine> line_;
};

} // namespace ipncsdk::media
