#pragma once

#include "api/LiveStream.h"
#include "api/Request.h"
#include "api/VideoHub.h"
#include "api/Worker.h"
#include "base/JsonText.h"
#include "device/NetworkCameras.h"
#include "device/Rights.h"
#include "media/Stream.h"
#include "service/Session.h"
#include "store/Database.h"
#include "store/StoreKey.h"

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace ipncsdk::api {

/// Video requests: who may watch what, and the way to the hub.
class VideoService final {
public:
    struct Parts {
        store::Database& database;
        device::NetworkCameras& cameras;
        const store::StoreKey& key;
        const service::Session& session;
        RequestTable& requests;
        VideoHub& hub;
        Worker& service;            ///< runs `open` and `preview`'s checks
        Worker& pictures;           ///< waits for snapshots and previews
        std::filesystem::path root; ///< where relative paths start
    };

    explicit VideoService(const Parts& parts);
    VideoService(const VideoService&) = delete;
    VideoService& operator=(const VideoService&) = delete;

    /// Begins a stream, or closes the request with the reason why not. On the service worker.
    void open(const std::shared_ptr<Request>& request, const Json& message);
    /// Takes one picture of a camera and responds with it. On the service worker.
    void preview(const std::shared_ptr<Request>& request, const Json& message);
    /// "avchange": writes the newest picture of a running request as a file; or
    /// exchanges the light and the main stream of one. The result goes to `request`. On the service worker.
    void change(const std::shared_ptr<Request>& request, const Json& message);

    /// "avchange" with "audiodata": takes samples for the camera that a running request talks to, and returns the
    /// result's text. The samples are copied before this returns. Any thread; waits for nothing.
    [[nodiscard]] std::string say(const Json& message);

    /// Ends one request, with the guarantees of `CallbackKeeper::close`. Any thread.
    void stop(int requestId);
    /// Closes the streams of devices that the account may not watch any more. On the service worker.
    void closeForbidden();
    /// Closes every stream with `reason`. On the service worker.
    void closeAll(media::StreamError reason);

    /// A camera's light stream in coded form; nothing when who is signed in may not have it now.
    std::optional<media::Subscription> lightStream(const std::string& ipncid);

private:
    using Found = std::variant<media::StreamError, media::Subscription>;

    /// The stream that a video request asks for, or why the account can't have it.
    Found streamFor(const media::Subscription& wishes, bool mainStream);
    /// Why the account may not watch a device that it watches; `None` when it may.
    media::StreamError refusalOf(soci::session& sql, store::AccountId account, const media::Subscription& wishes);
    void close(const std::shared_ptr<Request>& request, media::StreamError reason);
    /// The stream of an address that need not belong to a device yet.
    Found streamAt(const Json& message) const;
    Found lookUp(const std::string& ipncid, std::initializer_list<device::Right> rights, bool mainStream);
    void refuse(Request& request, media::StreamError reason);
    static void refuseChange(Request& request);
    void capture(const std::shared_ptr<Request>& request, const Json& message);
    void exchange(const std::shared_ptr<Request>& request, const Json& message);
    media::StreamError takePicture(const LiveStream& live, const std::filesystem::path& file);

    const Parts parts_;
};

} // namespace ipncsdk::api
