#include "api/VideoService.h"

#include "api/DeviceStream.h"
#include "api/VideoMessages.h"
#include "base/Text.h"
#include "device/AddedCameras.h"
#include "device/DeviceRequests.h"
#include "media/sound/Talk.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
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
constexpr std::size_t longestCredential = 256;
constexpr std::int64_t usualTalkRate = 8000;
constexpr std::int64_t usualTalkChannels = 1;

/// What an "avreq" object asks for.
struct OpenWishes {
    media::Subscription stream; ///< quality and source are still to be found
    bool mainStream = false;
};

/// A flag that may be missing; nothing when it is of another type.
std::optional<bool> optionalFlag(const Json& object, const char* key) {
    return memberAt(object, key) == nullptr ? std::optional<bool>(false) : flagAt(object, key);
}

/// The time for opening: 0 without a limit; nothing when it is no whole number.
std::optional<std::int64_t> openMinutes(const Json& avreq) {
    const Json* const value = memberAt(avreq, "maxopentime");
    if (value == nullptr)
        return 0;
    if (const auto minutes = integerOf(*value))
        return std::clamp<std::int64_t>(*minutes, 0, longestOpenMinutes);
    // Numbers of any size may come, written in any way.
    const double minutes = value->is_number() ? value->get<double>() : 0.5;
    if (std::trunc(minutes) != minutes)
        return std::nullopt;
    return minutes > 0 ? longestOpenMinutes : 0;
}

/// A whole number from `least` to `most` that may be missing; nothing when it is anything else.
std::optional<int> numberWithin(const Json& object, const char* key, std::int64_t missing, std::int64_t least,
                                std::int64_t most) {
    const auto number = memberAt(object, key) == nullptr ? missing : integerAt(object, key);
    return number && *number >= least && *number <= most ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

/// Adds what is to be heard or said to the wishes; false when that makes no sense.
bool readSoundWishes(const Json& avreq, media::Subscription& stream) {
    const auto listens = optionalFlag(avreq, "recvaudiodata");
    const auto talks = optionalFlag(avreq, "sendaudiodata");
    const bool watches = stream.decoded || stream.coded;
    // Each of the three is a request of its own.
    if (!listens || !talks || (watches ? 1 : 0) + (*listens ? 1 : 0) + (*talks ? 1 : 0) != 1)
        return false;
    stream.sound = *listens;
    if (*talks) {
        const auto rate = numberWithin(avreq, "rate", usualTalkRate, media::lowestSoundRate, media::highestSoundRate);
        const auto channels = numberWithin(avreq, "channels", usualTalkChannels, 1, 2);
        if (!rate || !channels)
            return false;
        stream.talk = std::make_shared<media::Talk>(*rate, *channels);
    }
    return true;
}

std::optional<OpenWishes> readWishes(const Json& message) {
    const Json& avreq = message["avreq"];
    const auto ipncid = textAt(avreq, "ipncid");
    const auto hd = optionalFlag(avreq, "hd");
    const auto decoded = optionalFlag(avreq, "recvdecodeavdata");
    const auto coded = optionalFlag(avreq, "recvavdata");
    const auto minutes = openMinutes(avreq);
    if (!ipncid || !hd || !decoded || !coded || !minutes)
        return std::nullopt;
    OpenWishes wishes;
    wishes.stream.camera = *ipncid;
    wishes.stream.decoded = *decoded;
    wishes.stream.coded = *coded;
    if (!readSoundWishes(avreq, wishes.stream))
        return std::nullopt;
    wishes.mainStream = *hd;
    if (*minutes > 0)
        wishes.stream.openTimeout = std::chrono::minutes(*minutes);
    return wishes;
}

/// A path that a client gave: plain text without NUL and other control characters, taken from `root` when relative.
std::optional<std::filesystem::path> pathAt(const Json& message, const char* key, const std::filesystem::path& root) {
    const auto text = textAt(message, key);
    if (!text || text->empty() || !isPlainText(*text, longestPath))
        return std::nullopt;
    return root / std::filesystem::path(std::u8string(text->begin(), text->end()));
}

/// The video request that a command names under "reqid"; null when it has no stream.
std::shared_ptr<LiveStream> liveAt(const RequestTable& requests, const Json& message) {
    const auto id = integerAt(message, "reqid");
    if (!id || *id <= 0 || *id > std::numeric_limits<int>::max())
        return nullptr;
    const auto request = requests.find(static_cast<int>(*id));
    return request ? request->live() : nullptr;
}

/// An address as messages carry it; null when it is none that this machine has.
const void* addressAt(const Json& message, const char* key) {
    const Json* const member = memberAt(message, key);
    if (member == nullptr)
        return nullptr;
    // Above the middle of 64 bits a number fits no signed type.
    const std::uint64_t number =
        member->is_number_unsigned()
            ? member->get<std::uint64_t>()
            : static_cast<std::uint64_t>(std::max<std::int64_t>(integerOf(*member).value_or(0), 0));
    if (number > std::numeric_limits<std::uintptr_t>::max())
        return nullptr;
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(number));
}

/// The result of a change-video-operation.
std::string changeText(StreamError outcome, Json more = Json::object()) {
    more["type"] = "avchange";
    more["retcode"] = static_cast<int>(outcome);
    return toText(more);
}

} // namespace

VideoService::VideoService(const Parts& parts)
    : parts_(parts) {}

void VideoService::open(const std::shared_ptr<Request>& request, const Json& message) {
    const auto wishes = readWishes(message);
    if (!wishes)
        return refuse(*request, StreamError::BadRequest);
    const Found found = streamFor(wishes->stream, wishes->mainStream);
    if (const auto* reason = std::get_if<StreamError>(&found))
        return refuse(*request, *reason);
    const auto live = std::make_shared<LiveStream>(
        request, LiveStream::Parts{parts_.requests, parts_.cameras, parts_.hub, parts_.service},
        std::get<media::Subscription>(found));
    if (request->bind(live))
        live->open(std::get<media::Subscription>(found), wishes->mainStream);
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
    const bool atAddress = memberAt(message, "ipncid") == nullptr && memberAt(message, "url") != nullptr;
    const auto ipncid = atAddress ? std::string() : textAt(message, "ipncid");
    const bool sized = memberAt(message, "width") != nullptr;
    const auto width = sized ? integerAt(message, "width") : usualPreviewWidth;
    if (!ipncid || !width || *width < leastPreviewWidth || *width > mostPreviewWidth)
        return finish(ipncid.value_or(""), StreamError::BadRequest, {});
    Found found = atAddress ? streamAt(message) : lookUp(*ipncid, {device::Right::Video}, false);
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

void VideoService::refuseChange(Request& request) {
    request.respond(changeText(StreamError::BadRequest));
}

void VideoService::change(const std::shared_ptr<Request>& request, const Json& message) {
    const bool captures = memberAt(message, "capture") != nullptr;
    const bool exchanges = memberAt(message, "hd") != nullptr;
    if (captures == exchanges)
        return refuseChange(*request);
    if (captures)
        return capture(request, message);
    exchange(request, message);
}

void VideoService::capture(const std::shared_ptr<Request>& request, const Json& message) {
    const auto file = pathAt(message, "capture", parts_.root);
    const auto live = liveAt(parts_.requests, message);
    if (!file || !live || !live->isWatched() || live->hubId() == 0)
        return refuseChange(*request);
    parts_.pictures.post(
        [this, request, live, file = *file] { request->respond(changeText(takePicture(*live, file))); });
}

StreamError VideoService::takePicture(const LiveStream& live, const std::filesystem::path& file) {
    for (int hubId = live.hubId();;) {
        const StreamError error = hubId == 0 ? StreamError::BadRequest : parts_.hub.snapshot(hubId, file);
        const int now = live.hubId();
        // Another stream may have taken over, and the one that was asked may be gone.
        if (error == StreamError::None || now == hubId || now == 0)
            return error;
        hubId = now;
    }
}

void VideoService::exchange(const std::shared_ptr<Request>& request, const Json& message) {
    const auto id = integerAt(message, "reqid");
    const auto mainStream = flagAt(message, "hd");
    if (!id || !mainStream)
        return refuseChange(*request);
    const auto finish = [request, id = *id, hd = *mainStream](StreamError outcome) {
        request->respond(changeText(outcome, {{"reqid", id}, {"hd", hd}}));
    };
    const auto live = liveAt(parts_.requests, message);
    if (!live || !live->isWatched())
        return finish(StreamError::BadRequest);
    const Found found = streamFor(live->wishes(), *mainStream);
    if (const auto* reason = std::get_if<StreamError>(&found))
        return finish(*reason);
    live->change(std::get<media::Subscription>(found), *mainStream, finish);
}

std::string VideoService::say(const Json& message) {
    const auto finish = [&message](StreamError outcome) {
        const auto id = integerAt(message, "reqid");
        return changeText(outcome, id ? Json{{"reqid", *id}} : Json::object());
    };
    const auto live = liveAt(parts_.requests, message);
    const void* const samples = addressAt(message, "audiodata");
    const auto bytes = integerAt(message, "len");
    const bool alone = memberAt(message, "capture") == nullptr && memberAt(message, "hd") == nullptr;
    if (!alone || !live || !live->wishes().talk || samples == nullptr || !bytes || *bytes <= 0)
        return finish(StreamError::BadRequest);
    media::Talk& talk = *live->wishes().talk;
    // Compared before anything is read: a length that is not meant leads out of the client's memory.
    const bool fits = *bytes <= static_cast<std::int64_t>(talk.secondOfBytes()) &&
                      reinterpret_cast<std::uintptr_t>(samples) <=
                          std::numeric_limits<std::uintptr_t>::max() - static_cast<std::uintptr_t>(*bytes);
    const bool taken = fits && talk.push(samples, static_cast<std::size_t>(*bytes));
    return finish(taken ? StreamError::None : StreamError::BadRequest);
}

void VideoService::stop(int requestId) {
    const auto request = parts_.requests.find(requestId);
    if (!request)
        return;
    // First the end, which lets those go who wait for their turn to call the client; then whoever is inside is
    // waited for.
    const auto live = request->end();
    const std::vector<int> hubIds = live && *live ? (*live)->end(StreamError::Stopped) : std::vector<int>();
    const bool waited = request->close();
    for (const int hubId : hubIds) {
        // Where waiting would never end, the hub must not wait either: another thread ends the stream then.
        if (waited)
            parts_.hub.unsubscribe(hubId);
        else
            parts_.service.post([this, hubId] { parts_.hub.unsubscribe(hubId); });
    }
    parts_.requests.take(requestId);
}

void VideoService::closeAll(StreamError reason) {
    for (const auto& request : parts_.requests.all())
        close(request, reason);
}

void VideoService::close(const std::shared_ptr<Request>& request, StreamError reason) {
    if (!request->live())
        return;
    const auto live = request->end();
    if (!live)
        return;
    if (*live) {
        for (const int hubId : (*live)->end(reason))
            parts_.hub.unsubscribe(hubId);
    }
    request->respond(closeText(request->id(), reason));
    parts_.requests.take(request->id());
}

void VideoService::closeForbidden() {
    const auto caller = parts_.session.current();
    if (!caller)
        return;
    std::vector<std::pair<std::shared_ptr<Request>, StreamError>> forbidden;
    parts_.database.read("check who may watch", [&](soci::session& sql) {
        for (const auto& request : parts_.requests.all()) {
            const auto live = request->live();
            if (!live)
                continue;
            if (const StreamError reason = refusalOf(sql, caller->id, live->wishes()); reason != StreamError::None)
                forbidden.emplace_back(request, reason);
        }
        return ServiceCode::Done;
    });
    for (const auto& [request, reason] : forbidden)
        close(request, reason);
}

StreamError VideoService::refusalOf(soci::session& sql, store::AccountId account, const media::Subscription& wishes) {
    const auto placed = store::deviceOf(sql, account, wishes.camera);
    // A share that was taken back leaves the device where it is; a deleted one is not there any more.
    if (!placed)
        return store::deviceById(sql, wishes.camera) ? StreamError::NoRight : StreamError::UnknownDevice;
    const bool allowed = device::allows(*placed, device::Right::Video) &&
                         (!wishes.coded || device::allows(*placed, device::Right::Record));
    return allowed ? StreamError::None : StreamError::NoRight;
}

VideoService::Found VideoService::streamFor(const media::Subscription& wishes, bool mainStream) {
    // Coded frames are what recordings are made of.
    Found found = wishes.coded ? lookUp(wishes.camera, {device::Right::Video, device::Right::Record}, mainStream)
                               : lookUp(wishes.camera, {device::Right::Video}, mainStream);
    if (auto* const stream = std::get_if<media::Subscription>(&found)) {
        stream->decoded = wishes.decoded;
        stream->coded = wishes.coded;
        stream->sound = wishes.sound;
        stream->talk = wishes.talk;
        stream->openTimeout = wishes.openTimeout;
    }
    return found;
}

std::optional<media::Subscription> VideoService::lightStream(const std::string& ipncid) {
    media::Subscription wishes;
    wishes.camera = ipncid;
    wishes.coded = true;
    Found found = streamFor(wishes, false);
    auto* const stream = std::get_if<media::Subscription>(&found);
    return stream != nullptr ? std::make_optional(std::move(*stream)) : std::nullopt;
}

VideoService::Found VideoService::streamAt(const Json& message) const {
    if (!parts_.session.current())
        return StreamError::NotSignedIn;
    const auto optionalText = [&message](const char* key) {
        auto text = memberAt(message, key) == nullptr ? std::string() : textAt(message, key);
        return text && isPlainText(*text, longestCredential) ? text : std::nullopt;
    };
    const auto url = textAt(message, "url");
    const auto user = optionalText("user");
    const auto password = optionalText("password");
    if (!url || !user || !password || !device::parseRtspAddress(*url))
        return StreamError::BadRequest;
    media::Subscription subscription;
    subscription.source = media::RtspSource{*url, *user, *password};
    return subscription;
}

VideoService::Found VideoService::lookUp(const std::string& ipncid, std::initializer_list<device::Right> rights,
                                         bool mainStream) {
    const auto caller = parts_.session.current();
    if (!caller)
        return StreamError::NotSignedIn;
    std::optional<store::PlacedDevice> placed;
    std::optional<device::NetworkCamera> camera;
    const ServiceCode code = parts_.database.read("look up a device", [&](soci::session& sql) {
        placed = device::visibleDevice(sql, caller->id, ipncid, parts_.cameras);
        if (placed && placed->device.origin == device::addedOrigin)
            camera = device::addedCamera(sql, ipncid, parts_.key);
        else if (const auto* const known = parts_.cameras.find(ipncid); known != nullptr)
            camera = *known;
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
    if (!placed->device.online || (placed->device.origin == device::addedOrigin && !camera))
        return StreamError::DeviceOffline;
    media::Subscription subscription;
    subscription.camera = ipncid;
    // One address for both is one stream, whatever it is called.
    const bool both = camera && camera->mainUrl == camera->lightUrl;
    subscription.quality = mainStream || both ? media::Quality::Main : media::Quality::Light;
    subscription.source = sourceOf(placed->device, camera ? &*camera : nullptr, mainStream, parts_.root);
    return subscription;
}

void VideoService::refuse(Request& request, StreamError reason) {
    if (!request.end())
        return;
    request.respond(closeText(request.id(), reason));
    parts_.requests.take(request.id());
}

} // namespace ipncsdk::api
