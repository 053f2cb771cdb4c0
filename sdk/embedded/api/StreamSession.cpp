#include "api/StreamSession.h"

#include "base/JsonText.h"

#include <cstdint>
#include <utility>

namespace ipncsdk::api {

namespace {

/// An address as messages carry it: a whole number, exact at pointer width.
std::string addressText(const void* address) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(address));
}

} // namespace

StreamSession::StreamSession(std::shared_ptr<Request> request, RequestTable& requests,
                             device::NetworkCameras& cameras, Wishes wishes)
    : request_(std::move(request))
    , requests_(requests)
    , cameras_(cameras)
    , wishes_(std::move(wishes)) {}

void StreamSession::onStage(media::OpenStage stage) {
    request_->respond(toText({{"type", "avstate"}, {"reqid", request_->id()}, {"state", static_cast<int>(stage)}}));
}

void StreamSession::onOpened(const media::StreamParameters& parameters) {
    cameras_.setReachable(wishes_.ipncid, true);
    // Clients read the width under this spelling.
    const Json avparam = {{"framerate", parameters.frameRate},
                          {"weidth", parameters.width},
                          {"height", parameters.height},
                          {"codec", "H264"},
                          {"hd", wishes_.hd},
                          {"audiolisten", 0},
                          {"audioplay", 0}};
    request_->respond(toText({{"type", "avopen"},
                              {"reqid", request_->id()},
                              {"retcode", 0},
                              {"contype", parameters.connectionType},
                              {"avparam", avparam}}));
}

void StreamSession::onDecoded(const media::DecodedFrame& frame) {
    if (!wishes_.decoded)
        return;
    // Some thousand times a second over all streams: written without a document in between.
    request_->respond(R"({"type":"decodevideodata","reqid":)" + std::to_string(request_->id()) + R"(,"data":)" +
                      addressText(frame.data) + R"(,"w":)" + std::to_string(frame.width) + R"(,"h":)" +
                      std::to_string(frame.height) + "}");
}

void StreamSession::onCoded(const media::CodedFrame& frame) {
    if (!wishes_.coded)
        return;
    request_->respond(R"({"type":"videodata","reqid":)" + std::to_string(request_->id()) + R"(,"data":)" +
                      addressText(frame.data) + R"(,"len":)" + std::to_string(frame.size) + R"(,"key":)" +
                      (frame.keyFrame ? "true" : "false") + "}");
}

void StreamSession::onClosed(media::StreamError reason) {
    const bool unreachable =
        reason == media::StreamError::AddressUnreachable || reason == media::StreamError::TimedOut;
    if (unreachable && cameras_.find(wishes_.ipncid) != nullptr)
        cameras_.setReachable(wishes_.ipncid, false);
    if (!request_->end())
        return;
    // The request stays in the table while its last callback runs, so that a stop waits for it.
    request_->respond(closeText(request_->id(), reason));
    requests_.take(request_->id());
}

std::string closeText(int requestId, media::StreamError reason) {
    return toText({{"type", "avclose"}, {"reqid", requestId}, {"retcode", static_cast<int>(reason)}});
}

} // namespace ipncsdk::api
