#include "media/rtsp/RtspReader.h"

namespace ipncsdk::media {

RtspReader::RtspReader(RtspSource source, RtspOptions options)
    : source_(std::move(source))
    , options_(std::move(options)) {}

StreamError RtspReader::run(ReaderHost& host) {
    host.stage(OpenStage::Information);
    return StreamError::AddressUnreachable;
}

} // namespace ipncsdk::media
