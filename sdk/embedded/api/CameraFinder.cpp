#include "api/CameraFinder.h"

#include "base/Log.h"
#include "base/Text.h"
#include "device/OnvifDriver.h"
#include "onvif/CameraProbe.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ipncsdk::api {

namespace {

using std::chrono::steady_clock;

constexpr std::size_t longestUrl = 1024;
constexpr std::size_t longestUser = 256;
/// For all questions together; each has its own, shorter limit.
constexpr std::chrono::seconds probeLimit{20};
constexpr std::chrono::milliseconds tellEvery{500};

/// A text that may be missing; nothing when it is of another type, too long or not plain.
std::optional<std::string> plainTextAt(const Json& message, const char* key, std::size_t longest) {
    if (memberAt(message, key) == nullptr)
        return std::string();
    auto text = textAt(message, key);
    return text && isPlainText(*text, longest) ? text : std::nullopt;
}

std::optional<onvif::CameraAddress> addressIn(const Json& message) {
    auto url = plainTextAt(message, "url", longestUrl);
    auto user = plainTextAt(message, "user", longestUser);
    auto password = plainTextAt(message, "password", longestUser);
    if (!url || url->empty() || !user || !password)
        return std::nullopt;
    return onvif::CameraAddress{std::move(*url), {std::move(*user), std::move(*password)}};
}

/// A camera that has not what every camera must have is at fault.
ServiceCode probeCode(onvif::Refusal refusal) {
    return refusal == onvif::Refusal::NotSupported ? ServiceCode::CameraFault : device::codeOf(refusal);
}

Reply replyOf(const onvif::Outcome<onvif::CameraDescription>& camera) {
    if (!camera) {
        Reply reply(probeCode(camera.failure().refusal));
        reply.content["text"] = camera.failure().text;
        return reply;
    }
    Json profiles = Json::array();
    for (const onvif::MediaProfile& profile : camera->profiles)
        profiles.push_back({{"token", profile.token},
                            {"name", profile.name},
                            {"codec", profile.codec},
                            {"w", profile.width},
                            {"h", profile.height},
                            {"fps", profile.frameRate},
                            {"url", profile.url}});
    return Reply(Json{{"manufacturer", camera->manufacturer},
                      {"model", camera->model},
                      {"firmware", camera->firmware},
                      {"serial", camera->serial},
                      {"profiles", std::move(profiles)},
                      {"main", camera->mainUrl},
                      {"light", camera->lightUrl},
                      {"ptz", camera->ptz},
                      {"imaging", camera->imaging}});
}

} // namespace

CameraFinder::CameraFinder(Parts parts)
    : parts_(std::move(parts)) {}

void CameraFinder::respond(const std::shared_ptr<Request>& request, const Reply& reply) {
    request->respond(responseText("onvifprobe", request->id(), reply));
    parts_.requests.take(request->id());
}

void CameraFinder::probe(const std::shared_ptr<Request>& request, const Json& message) {
    auto address = addressIn(message);
    if (!address)
        return respond(request, ServiceCode::BadRequest);
    parts_.network.post([this, request, address = std::move(*address)] {
        onvif::Transport transport;
        transport.socketDelegate = parts_.socketDelegate;
        transport.cancelled = [this, request, end = steady_clock::now() + probeLimit] {
            return parts_.stopping || request->hasEnded() || steady_clock::now() >= end;
        };
        onvif::CameraSession session(address, transport);
        const auto camera = onvif::probe(session);
        if (!camera)
            logLine("onvifprobe: " + camera.failure().text);
        respond(request, replyOf(camera));
    });
}

void CameraFinder::search(std::function<void()> changed) {
    if (searching_.exchange(true))
        return;
    const bool taken = parts_.network.post([this, told = std::move(changed)] {
        // Also when the search throws: it is the last one otherwise.
        const std::shared_ptr<void> over(nullptr, [this](void*) { searching_ = false; });
        runSearch(told);
    });
    if (!taken)
        searching_ = false;
}

void CameraFinder::runSearch(const std::function<void()>& changed) {
    auto last = steady_clock::now();
    std::vector<onvif::FoundCamera> cameras =
        onvif::discover(parts_.discovery, [&](const std::vector<onvif::FoundCamera>& sofar) {
            const auto now = steady_clock::now();
            if (now - last >= tellEvery) {
                last = now;
                // Those of the last search are known until this one is over.
                if (!sofar.empty() && parts_.found.add(sofar))
                    changed();
            }
            return parts_.stopping.load();
        });
    if (!parts_.stopping && parts_.found.replace(std::move(cameras)))
        changed();
}

} // namespace ipncsdk::api
