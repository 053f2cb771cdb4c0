#include "api/DeviceStream.h"

#include "device/AddedCameras.h"

namespace ipncsdk::api {

media::Source sourceOf(const store::Device& device, const device::NetworkCamera* camera, bool mainStream,
                       const std::filesystem::path& root) {
    if (camera != nullptr) {
        const std::string& url = mainStream ? camera->mainUrl : camera->lightUrl;
        if (const auto file = device::parseFileAddress(url))
            return media::FileSource{root / *file};
        return media::RtspSource{url, camera->user, camera->password};
    }
    return media::LoopSource{device.name, static_cast<int>(device.scene), static_cast<unsigned>(device.phase)};
}

std::optional<media::Subscription> lightStreamOf(store::Database& database, const device::NetworkCameras& cameras,
                                                 const store::StoreKey& key, const std::filesystem::path& root,
                                                 const std::string& ipncid) {
    std::optional<store::Device> device;
    std::optional<device::NetworkCamera> camera;
    const ServiceCode code = database.read("look up a device's stream", [&](soci::session& sql) {
        device = store::deviceById(sql, ipncid);
        if (device && device->origin == device::addedOrigin)
            camera = device::addedCamera(sql, ipncid, key);
        else if (const auto* const known = cameras.find(ipncid); known != nullptr)
            camera = *known;
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done || !device || device->type != "video" || !device->online ||
        (device->origin != "loop" && !camera))
        return std::nullopt;
    media::Subscription subscription;
    subscription.camera = ipncid;
    // One address for both is one stream, whatever it is called.
    const bool both = camera && camera->mainUrl == camera->lightUrl;
    subscription.quality = both ? media::Quality::Main : media::Quality::Light;
    subscription.source = sourceOf(*device, camera ? &*camera : nullptr, false, root);
    return subscription;
}

} // namespace ipncsdk::api
