#include "api/VideoService.h"

#include "api/StreamSession.h"
#include "base/Text.h"
#include "device/DeviceRequests.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace ipncsdk::api {

namespace {

using media::StreamError;

constexpr std::chrono::milliseconds previewTimeout{8000};
constexpr std::int64_t longestOpenMinutes = std::int64_t{7} * 24 * 60;
constexpr std::int64_t leastPreviewWidth = 16;
constexpr std::int64_t mostPreviewWidth = 1920;
constexpr std::int64_t usualPreviewWidth = 320;
constexpr std::size_t longestPath = 4096;

/// What an "avreq" object asks for.
struct OpenWishes {
    StreamSession::Wishes session;
    std::optional<std::chrono::milliseconds> timeout;
};

/// A flag that may be missing; nothing when it is of another type.
std::optional<bool> optionalFlag(const Json& object, const char* key) {
    return memberAt(object, key) == nullptr ? std::optional<bool>(false) : flagAt(object, key);
}

std::optional<OpenWishes> readWishes(const Json& message) {
    const Json& avreq = message["avreq"];
    const auto ipncid = textAt(avreq, "ipncid");
    const auto hd = optionalFlag(avreq, "hd");
    const auto decoded = optionalFlag(avreq, "recvdecodeavdata");
    const auto coded = optionalFlag(avreq, "recvavdata");
    const bool timed = memberAt(avreq, "maxopentime") != nullptr;
    const auto minutes = integerAt(avreq, "maxopentime");
    if (!ipncid || !hd || !decoded || !coded || (!*decoded && !*coded))
        return std::nullopt;
    if (timed && (!minutes || *minutes < 0 || *minutes > longestOpenMinutes))
        return std::nullopt;
    OpenWishes wishes{{*ipncid, *hd, *decoded, *coded}, std::nullopt};
    if (timed && *minutes > 0)
        wishes.timeout = std::chrono::minutes(*minutes);
    return wishes;
}

/// A path that a client gave: plain text without NUL and other control characters, taken from `root` when relative.
std::optional<std::filesystem::path> pathAt(const Json& message, const char* key, const std::filesystem::path& root) {
    const auto text = textAt(message, key);
    if (!text || text->empty() || !isPlainText(*text, longestPath))
        return std::nullopt;
    return root / std::filesystem::path(std::u8string(text->begin(), text->end()));
}

media::Source sourceOf(const store::Device& device, const device::NetworkCameras& cameras, bool mainStream) {
    if (const device::NetworkCamera* camera = cameras.find(device.ipncid); camera != nullptr)
        return media::RtspSource{mainStream ? camera->mainUrl : camera->lightUrl, camera->user, camera->password};
    return media::LoopSource{device.name, static_cast<int>(device.scene), static_cast<unsigned>(device.phase)};
}

} // namespace

VideoService::VideoService(const Parts& parts)
    : parts_(parts) {}

void VideoService::open(const std::shared_ptr<Request>& request, const Json& message) {
    const auto wishes = readWishes(message);
    if (!wishes)
        return refuse(*request, StreamError::BadRequest);
    // Coded frames are what recordings are made of.
    Found found = wishes->session.coded ? lookUp(wishes->session.ipncid,
                                                 {device::Right::Video, device::Right::Record}, wishes->session.hd)
                                        : lookUp(wishes->session.ipncid, {device::Right::Video}, wishes->session.hd);
    if (const auto* reason = std::get_if<StreamError>(&found))
        return refuse(*request, *reason);
    auto& subscription = std::get<media::Subscription>(found);
    subscription.decoded = wishes->session.decoded;
    subscription.coded = wishes->session.coded;
    subscription.openTimeout = wishes->timeout;
    auto session = std::make_shared<StreamSession>(request, parts_.requests, parts_.cameras, wishes->session);
    const int hubId = parts_.hub.subscribe(subscription, std::move(session));
    if (!request->bind(hubId))
        parts_.hub.unsubscribe(hubId);
}

void VideoService::preview(const std::shared_ptr<Request>& request, const Json& message) {
    const auto finish = [this, request](const std::string& ipncid, StreamError error,
                                        const std::vector<std::uint8_t>& jpeg) {
        Json response = {
            {"type", "preview"}, {"reqid", request->id()}, {"ipncid", ipncid}, {"retcode", static_cast<int>(error)}};
        if (error == StreamError::None) {
            response["data"] = reinterpret_cast<std::uintptr_t>(jpeg.data());
            response["len"] = jpeg.size();
        }
        request->respond(toText(response));
        parts_.requests.take(request->id());
    };
    const auto ipncid = textAt(message, "ipncid");
    const bool sized = memberAt(message, "width") != nullptr;
    const auto width = sized ? integerAt(message, "width") : usualPreviewWidth;
    if (!ipncid || !width || *width < leastPreviewWidth || *width > mostPreviewWidth)
        return finish(ipncid.value_or(""), StreamError::BadRequest, {});
    Found found = lookUp(*ipncid, {device::Right::Video}, false);
    if (const auto* reason = std::get_if<StreamError>(&found))
        return finish(*ipncid, *reason, {});
    parts_.pictures.post([this, request, finish, ipncid = *ipncid, pixels = static_cast<int>(*width),
                          subscription = std::get<media::Subscription>(std::move(found))] {
        if (request->hasEnded())
            return;
        std::vector<std::uint8_t> jpeg;
        const StreamError error = parts_.hub.preview(subscription, pixels, previewTimeout, jpeg);
        finish(ipncid, error, jpeg);
    });
}

void VideoService::change(const std::shared_ptr<Request>& request, const Json& message,
                          const std::filesystem::path& root) {
    const auto finish = [request](StreamError error) {
        request->respond(toText({{"type", "avchange"}, {"retcode", static_cast<int>(error)}}));
    };
    const auto id = integerAt(message, "reqid");
    const auto file = pathAt(message, "capture", root);
    if (!id || !file || *id <= 0 || *id > std::numeric_limits<int>::max())
        return finish(StreamError::BadRequest);
    const auto video = parts_.requests.find(static_cast<int>(*id));
    const int hubId = video ? video->hubId() : 0;
    if (hubId == 0)
        return finish(StreamError::BadRequest);
    parts_.pictures.post([this, finish, hubId, file = *file] { finish(parts_.hub.snapshot(hubId, file)); });
}

void VideoService::stop(int requestId) {
    const auto request = parts_.requests.find(requestId);
    if (!request)
        return;
    const bool waited = request->close();
    if (const auto hubId = request->end(); hubId && *hubId != 0) {
        // Where waiting would never end, the hub must not wait either: another thread ends the stream then.
        if (waited)
            parts_.hub.unsubscribe(*hubId);
        else
            parts_.service.post([this, id = *hubId] { parts_.hub.unsubscribe(id); });
    }
    parts_.requests.take(requestId);
}

void VideoService::closeAll(StreamError reason) {
    for (const auto& request : parts_.requests.all()) {
        if (request->hubId() == 0)
            continue;
        const auto hubId = request->end();
        if (!hubId)
            continue;
        parts_.hub.unsubscribe(*hubId);
        request->respond(closeText(request->id(), reason));
        parts_.requests.take(request->id());
    }
}

VideoService::Found VideoService::lookUp(const std::string& ipncid, std::initializer_list<device::Right> rights,
                                         bool mainStream) {
    const auto caller = parts_.session.current();
    if (!caller)
        return StreamError::NotSignedIn;
    std::optional<store::PlacedDevice> placed;
    const ServiceCode code = parts_.database.read("look up a device", [&](soci::session& sql) {
        placed = device::visibleDevice(sql, caller->id, ipncid, parts_.cameras);
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return StreamError::Internal;
    if (!placed)
        return StreamError::UnknownDevice;
    if (placed->device.type != "video")
        return StreamError::NoVideo;
    for (const device::Right right : rights) {
        if (!device::allows(*placed, right))
            return StreamError::NoRight;
    }
    // A network camera that failed before is tried again: only trying shows whether it is back.
    if (!placed->device.online)
        return StreamError::DeviceOffline;
    media::Subscription subscription;
    subscription.camera = ipncid;
    subscription.quality = mainStream ? media::Quality::Main : media::Quality::Light;
    subscription.source = sourceOf(placed->device, parts_.cameras, mainStream);
    return subscription;
}

void VideoService::refuse(Request& request, StreamError reason) {
    if (!request.end())
        return;
    request.respond(closeText(request.id(), reason));
    parts_.requests.take(request.id());
}

} // namespace ipncsdk::api
