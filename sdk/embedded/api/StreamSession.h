#pragma once

#include "api/Request.h"
#include "device/NetworkCameras.h"
#include "media/Stream.h"

#include <memory>
#include <string>

namespace ipncsdk::api {

/// Turns what happens on one subscription into the messages of its request. Called on the hub's threads.
class StreamSession final : public media::StreamListener {
public:
    struct Wishes {
        std::string ipncid;
        bool hd = false;      ///< the main stream was asked for
        bool decoded = false; ///< deliver pictures
        bool coded = false;   ///< deliver access units
    };

    StreamSession(std::shared_ptr<Request> request, RequestTable& requests, device::NetworkCameras& cameras,
                  Wishes wishes);
    StreamSession(const StreamSession&) = delete;
    StreamSession& operator=(const StreamSession&) = delete;

    void onStage(media::OpenStage stage) override;
    void onOpened(const media::StreamParameters& parameters) override;
    void onDecoded(const media::DecodedFrame& frame) override;
    void onCoded(const media::CodedFrame& frame) override;
    void onClosed(media::StreamError reason) override;

private:
    const std::shared_ptr<Request> request_;
    RequestTable& requests_;
    device::NetworkCameras& cameras_;
    const Wishes wishes_;
};

/// The "avclose" message of a request.
std::string closeText(int requestId, media::StreamError reason);

} // namespace ipncsdk::api
