#include "onvif/CameraProbe.h"

#include "onvif/Names.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ipncsdk::onvif {

namespace {

constexpr std::size_t mostProfiles = 32;
constexpr std::size_t longestName = 64;
/// Tokens go back to the camera as they came, so they are kept whole or not at all.
constexpr std::size_t longestToken = 64;
constexpr int largestSide = 32768;
constexpr auto wantedCodec = "H264";

int boundedNumber(const pugi::xml_node& element, int most) {
    const double value = xml::numberOf(element).value_or(0);
    return value >= 0 && value <= most ? static_cast<int>(std::lround(value)) : 0;
}

std::string tokenText(std::string text) {
    return text.size() <= longestToken ? std::move(text) : std::string();
}

MediaProfile readProfile(const pugi::xml_node& element) {
    const auto inner = [&](std::initializer_list<std::string_view> path) {
        return xml::descend(element, ns::schema, path);
    };
    MediaProfile profile;
    profile.token = tokenText(element.attribute("token").value());
    profile.name = xml::plain(xml::textOf(inner({"Name"})), longestName);
    profile.codec = xml::plain(xml::textOf(inner({"VideoEncoderConfiguration", "Encoding"})), longestName);
    profile.width = boundedNumber(inner({"VideoEncoderConfiguration", "Resolution", "Width"}), largestSide);
    profile.height = boundedNumber(inner({"VideoEncoderConfiguration", "Resolution", "Height"}), largestSide);
    profile.frameRate = boundedNumber(inner({"VideoEncoderConfiguration", "RateControl", "FrameRateLimit"}), 1000);
    profile.videoSource = tokenText(xml::textOf(inner({"VideoSourceConfiguration", "SourceToken"})));
    const pugi::xml_node ptz = inner({"PTZConfiguration"});
    profile.ptzNode = tokenText(xml::textOf(xml::child(ptz, {ns::schema, "NodeToken"})));
    profile.ptzConfiguration = tokenText(ptz.attribute("token").value());
    return profile;
}

Outcome<std::string> streamUrl(CameraSession& session, const std::string& profile) {
    const auto reply = session.call(ns::media, "GetStreamUri",
                                    "<q:StreamSetup><tt:Stream>RTP-Unicast</tt:Stream><tt:Transport>"
                                    "<tt:Protocol>RTSP</tt:Protocol></tt:Transport></q:StreamSetup>"
                                    "<q:ProfileToken>" +
                                        xml::escaped(profile) + "</q:ProfileToken>");
    if (!reply)
        return reply.failure();
    const pugi::xml_node media = xml::child(reply->content(), {ns::media, "MediaUri"});
    auto url = parseRtspUrl(xml::textOf(xml::child(media, {ns::schema, "Uri"})));
    if (!url)
        return Failure{Refusal::NoMedia, "the camera tells no rtsp address"};
    return session.reachable(std::move(*url));
}

/// True for reasons that will not be any others at the next question.
bool endsEverything(Refusal refusal) {
    return refusal != Refusal::Fault && refusal != Refusal::NotSupported && refusal != Refusal::NoMedia &&
           refusal != Refusal::NoOnvif;
}

/// A camera may have profiles that cannot be shown just now; they must not cost the others.
Outcome<Done> findUrls(CameraSession& session, std::vector<MediaProfile>& profiles) {
    Failure last{Refusal::NoMedia, {}};
    bool any = false;
    for (MediaProfile& profile : profiles) {
        auto url = streamUrl(session, profile.token);
        if (url) {
            profile.url = *url;
            any = true;
        } else if (last = url.failure(); endsEverything(last.refusal)) {
            return last;
        }
    }
    if (!any)
        return last;
    return Done{};
}

void chooseStreams(CameraDescription& camera) {
    const MediaProfile* largest = nullptr;
    const MediaProfile* smallest = nullptr;
    const auto area = [](const MediaProfile& profile) {
        return profile.width * profile.height;
    };
    for (const MediaProfile& profile : camera.profiles) {
        if (profile.url.empty() || profile.codec != wantedCodec)
            continue;
        if (largest == nullptr || area(profile) > area(*largest))
            largest = &profile;
        if (smallest == nullptr || area(profile) < area(*smallest))
            smallest = &profile;
    }
    camera.mainUrl = largest != nullptr ? largest->url : std::string();
    camera.lightUrl = smallest != nullptr ? smallest->url : std::string();
}

} // namespace

Outcome<std::vector<MediaProfile>> readProfiles(CameraSession& session) {
    const auto has = session.has(ns::media);
    if (!has)
        return has.failure();
    if (!*has)
        return Failure{Refusal::NoMedia, "the camera has no media service"};
    const auto reply = session.call(ns::media, "GetProfiles");
    if (!reply)
        return reply.failure();
    std::vector<MediaProfile> profiles;
    for (const pugi::xml_node& element : xml::children(reply->content(), {ns::media, "Profiles"})) {
        MediaProfile profile = readProfile(element);
        if (!profile.token.empty() && profiles.size() < mostProfiles)
            profiles.push_back(std::move(profile));
    }
    if (profiles.empty())
        return Failure{Refusal::NoMedia, "the camera has no profiles"};
    return profiles;
}

Outcome<CameraDescription> probe(CameraSession& session) {
    CameraDescription camera;
    const auto info = session.call(ns::device, "GetDeviceInformation");
    if (!info)
        return info.failure();
    const auto told = [&](const char* name) {
        return xml::plain(xml::textOf(xml::child(info->content(), {ns::device, name})), longestName);
    };
    camera.manufacturer = told("Manufacturer");
    camera.model = told("Model");
    camera.firmware = told("FirmwareVersion");
    camera.serial = told("SerialNumber");
    auto profiles = readProfiles(session);
    if (!profiles)
        return profiles.failure();
    camera.profiles = std::move(*profiles);
    if (const auto found = findUrls(session, camera.profiles); !found)
        return found.failure();
    chooseStreams(camera);
    if (camera.mainUrl.empty())
        return Failure{Refusal::NoMedia, "the camera has no H.264 stream"};
    const auto has = [&](const char* service, std::string MediaProfile::*token) {
        const auto offered = session.has(service);
        return offered && *offered &&
               std::any_of(camera.profiles.begin(), camera.profiles.end(),
                           [token](const MediaProfile& profile) { return !(profile.*token).empty(); });
    };
    camera.ptz = has(ns::ptz, &MediaProfile::ptzNode);
    camera.imaging = has(ns::imaging, &MediaProfile::videoSource);
    return camera;
}

} // namespace ipncsdk::onvif
