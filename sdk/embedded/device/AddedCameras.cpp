#include "device/AddedCameras.h"

#include "base/JsonText.h"
#include "base/Log.h"
#include "store/AddableDevices.h"

namespace ipncsdk::device {

bool keepAddedCamera(soci::session& sql, const NetworkCamera& camera, const store::StoreKey& key) {
    const auto sealed = key.seal(toText({{"main", camera.mainUrl},
                                         {"light", camera.lightUrl},
                                         {"onvif", camera.onvifUrl},
                                         {"user", camera.user},
                                         {"password", camera.password}}));
    if (sealed)
        store::insertSealedCamera(sql, camera.ipncid, *sealed);
    return sealed.has_value();
}

std::optional<NetworkCamera> addedCamera(soci::session& sql, const std::string& ipncid, const store::StoreKey& key) {
    const auto text = key.open(store::sealedCamera(sql, ipncid));
    const Json opened = text ? Json::parse(*text, nullptr, false) : Json();
    NetworkCamera camera;
    camera.ipncid = ipncid;
    camera.mainUrl = textAt(opened, "main").value_or("");
    camera.lightUrl = textAt(opened, "light").value_or("");
    camera.onvifUrl = textAt(opened, "onvif").value_or("");
    camera.user = textAt(opened, "user").value_or("");
    camera.password = textAt(opened, "password").value_or("");
    if (!parseRtspAddress(camera.mainUrl) || !parseRtspAddress(camera.lightUrl)) {
        logLine("the address of " + ipncid + " can't be opened with this store's key");
        return std::nullopt;
    }
    return camera;
}

std::set<std::string> addedHosts(soci::session& sql, const store::StoreKey& key) {
    std::set<std::string> hosts;
    for (const std::string& ipncid : store::addedCameraIds(sql)) {
        const auto camera = addedCamera(sql, ipncid, key);
        const auto address = camera ? parseRtspAddress(camera->mainUrl) : std::nullopt;
        if (address)
            hosts.insert(address->host);
    }
    return hosts;
}

} // namespace ipncsdk::device
