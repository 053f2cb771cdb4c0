#include "device/FoundCameras.h"

#include "device/ServiceConfig.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace ipncsdk::device {

bool FoundCameras::replace(std::vector<onvif::FoundCamera> cameras) {
    const std::lock_guard lock(mutex_);
    if (std::is_permutation(cameras.begin(), cameras.end(), cameras_.begin(), cameras_.end()))
        return false;
    cameras_ = std::move(cameras);
    return true;
}

bool FoundCameras::add(const std::vector<onvif::FoundCamera>& cameras) {
    const std::lock_guard lock(mutex_);
    bool changed = false;
    for (const onvif::FoundCamera& camera : cameras) {
        const auto known = std::find_if(cameras_.begin(), cameras_.end(),
                                        [&](const onvif::FoundCamera& each) { return each.uuid == camera.uuid; });
        if (known == cameras_.end())
            cameras_.push_back(camera);
        else if (*known == camera)
            continue;
        else
            *known = camera;
        changed = true;
    }
    return changed;
}

void FoundCameras::setAddedHosts(std::set<std::string> hosts) {
    const std::lock_guard lock(mutex_);
    addedHosts_ = std::move(hosts);
}

Json FoundCameras::localDevices(const NetworkCameras& added) const {
    std::set<std::string> hosts;
    for (const auto& [id, camera] : added.all()) {
        if (const auto address = parseRtspAddress(camera.mainUrl))
            hosts.insert(address->host);
    }
    Json devices = Json::object();
    const std::lock_guard lock(mutex_);
    for (const onvif::FoundCamera& camera : cameras_) {
        const std::string id = "onvif-" + camera.uuid;
        devices[id] = {{"ipncid", id},
                       {"name", camera.name.empty() ? camera.model : camera.name},
                       {"type", "video"},
                       {"ip", camera.host},
                       {"url", camera.url},
                       {"mac", camera.mac},
                       {"added", hosts.count(camera.host) + addedHosts_.count(camera.host) > 0},
                       {"onvif", true},
                       {"model", camera.model}};
    }
    return devices;
}

} // namespace ipncsdk::device
