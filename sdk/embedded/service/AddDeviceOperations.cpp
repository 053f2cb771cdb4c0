#include "base/Text.h"
#include "device/AddedCameras.h"
#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/AddableDevices.h"
#include "store/Devices.h"
#include "store/Groups.h"
#include "store/Maps.h"

#include <sodium.h>

#include <array>
#include <cstdint>
#include <cstdio>

namespace ipncsdk::service {

namespace {

constexpr std::size_t longestWord = 64;
constexpr std::size_t longestText = 256;
constexpr std::size_t mostDevices = 2000;

/// Where a new device goes and how the account calls it.
struct Place {
    std::optional<store::GroupId> group; ///< none: the account's first one
    std::string name;                    ///< empty: as the device calls itself
};

/// Nothing when a value is of the wrong kind.
std::optional<Place> placeAt(const Json& params) {
    const bool hasName = memberAt(params, "name") != nullptr;
    const bool hasGroup = memberAt(params, "groupid") != nullptr;
    const auto name = nameAt(params, "name");
    const auto group = groupIdAt(params, "groupid");
    if ((hasName && !name) || (hasGroup && !group))
        return std::nullopt;
    return Place{group, name.value_or("")};
}

/// Puts the device into the account, which must not be full; `device.owner` is the account.
ServiceCode insertOwned(soci::session& sql, const OperationContext& context, const store::Device& device,
                        const Place& place) {
    if (place.group && !store::hasGroup(sql, device.owner, *place.group))
        return ServiceCode::UnknownGroup;
    if (store::devicesOf(sql, device.owner).size() >= mostDevices)
        return ServiceCode::BadRequest;
    store::insertDevice(sql, device, place.group ? *place.group : store::firstGroup(sql, device.owner),
                        place.name.empty() ? device.name : place.name);
    context.effects.concerned.insert(device.owner);
    return ServiceCode::Done;
}

Reply addByWord(const OperationContext& context, const std::string& ipncid, const std::string& word,
                const Place& place) {
    const std::string guessed = context.caller.phone + ' ' + ipncid;
    if (!context.words.mayTry(guessed))
        return ServiceCode::TryLater;
    const ServiceCode code = context.change("add a device", [&](soci::session& sql) {
        auto device = store::waitingDevice(sql, ipncid);
        if (!device)
            return store::deviceById(sql, ipncid) ? ServiceCode::DeviceTaken : ServiceCode::UnknownDevice;
        const std::string expected = store::deviceWord(sql, ipncid);
        if (expected.size() != word.size() || sodium_memcmp(expected.data(), word.data(), word.size()) != 0)
            return ServiceCode::WordWrong;
        device->owner = context.caller.id;
        store::removeWaiting(sql, ipncid);
        return insertOwned(sql, context, *device, place);
    });
    if (code == ServiceCode::WordWrong)
        context.words.failed(guessed);
    else if (code == ServiceCode::Done)
        context.words.succeeded(guessed);
    return code == ServiceCode::Done ? Reply(Json{{"ipncid", ipncid}}) : Reply(code);
}

/// A short text that may be missing; nothing when it is of another type or holds what it may not.
std::optional<std::string> shortTextAt(const Json& params, const char* key) {
    if (memberAt(params, key) == nullptr)
        return std::string();
    const auto text = textAt(params, key);
    return text && isPlainText(*text, longestText) ? text : std::nullopt;
}

/// The camera that the request describes, without an id when it names none; nothing when something is wrong with it.
std::optional<device::NetworkCamera> cameraAt(const Json& params) {
    const bool hasLight = memberAt(params, "light") != nullptr;
    const bool hasId = memberAt(params, "ipncid") != nullptr;
    const auto main = textAt(params, "main");
    const auto light = hasLight ? textAt(params, "light") : main;
    const auto service = shortTextAt(params, "onvif");
    const auto user = shortTextAt(params, "user");
    const auto password = shortTextAt(params, "password");
    const auto ipncid = hasId ? textAt(params, "ipncid") : std::string();
    if (!main || !light || !service || !user || !password || !ipncid || (hasId && !isDeviceId(*ipncid)) ||
        !device::parseRtspAddress(*main) || !device::parseRtspAddress(*light) ||
        (!service->empty() && !device::isCameraService(*service)))
        return std::nullopt;
    device::NetworkCamera camera;
    camera.ipncid = *ipncid;
    camera.mainUrl = *main;
    camera.lightUrl = *light;
    camera.onvifUrl = *service;
    camera.user = *user;
    camera.password = *password;
    return camera;
}

std::string freeId(soci::session& sql) {
    while (true) {
        std::array<char, 16> text{};
        std::snprintf(text.data(), text.size(), "NET%08u", static_cast<unsigned>(randombytes_uniform(100'000'000)));
        if (!store::isIdTaken(sql, text.data()))
            return text.data();
    }
}

Reply addByAddress(const OperationContext& context, const Json& params, const Place& place) {
    auto camera = cameraAt(params);
    if (!camera || place.name.empty())
        return ServiceCode::BadRequest;
    const ServiceCode code = context.change("add a network camera", [&](soci::session& sql) {
        if (camera->ipncid.empty())
            camera->ipncid = freeId(sql);
        else if (store::isIdTaken(sql, camera->ipncid))
            return ServiceCode::DeviceTaken;
        store::Device device;
        device.ipncid = camera->ipncid;
        device.owner = context.caller.id;
        device.origin = device::addedOrigin;
        device.name = place.name;
        device.type = "video";
        device.info = toText({{"model", "RTSP"},
                              {"serial", camera->ipncid},
                              {"QRinfo", Json::object()},
                              {"Laserinfo", Json::object()}});
        device.extend = R"({"sublist":[]})";
        device.video = R"({"codec":"H264","streams":["main","light"]})";
        const ServiceCode inserted = insertOwned(sql, context, device, place);
        if (inserted == ServiceCode::Done && !device::keepAddedCamera(sql, *camera, context.key))
            return ServiceCode::StoreError;
        return inserted;
    });
    return code == ServiceCode::Done ? Reply(Json{{"ipncid", camera->ipncid}}) : Reply(code);
}

/// Takes a device out of its owner's account and all others.
ServiceCode removeOwned(soci::session& sql, const OperationContext& context, const store::Device& device) {
    // The configuration file would bring it back at the next start.
    if (device.origin == "config")
        return ServiceCode::NoRight;
    for (const store::AccountId account : store::friendsWith(sql, device.ipncid))
        context.effects.concerned.insert(account);
    context.effects.concernedByFiles.merge(store::viewersOfMarkers(sql, {device.ipncid}));
    store::removeDevice(sql, device.ipncid);
    if (device.origin != device::addedOrigin)
        store::insertWaiting(sql, device);
    return ServiceCode::Done;
}

} // namespace

Reply addIpnc(const OperationContext& context, const Json& params) {
    const auto place = placeAt(params);
    const auto ipncid = textAt(params, "ipncid");
    const auto word = textAt(params, "word");
    const bool hasWord = memberAt(params, "word") != nullptr;
    const bool hasAddress = memberAt(params, "main") != nullptr;
    if (!place || hasWord == hasAddress)
        return ServiceCode::BadRequest;
    if (hasAddress)
        return addByAddress(context, params, *place);
    if (!ipncid || !isDeviceId(*ipncid) || !word || !isPlainText(*word, longestWord))
        return ServiceCode::BadRequest;
    return addByWord(context, *ipncid, *word, *place);
}

Reply deleteIpnc(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    if (!ipncid)
        return ServiceCode::BadRequest;
    return context.change("delete a device", [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        context.effects.concerned.insert(context.caller.id);
        if (device::allows(*device, device::Right::Admin))
            return removeOwned(sql, context, device->device);
        // A friend gives the share back.
        context.effects.concerned.insert(device->device.owner);
        context.effects.concernedByFiles = store::removeMarkers(sql, {*ipncid, 0, context.caller.id});
        store::removeShare(sql, *ipncid, context.caller.id);
        return ServiceCode::Done;
    });
}

} // namespace ipncsdk::service
