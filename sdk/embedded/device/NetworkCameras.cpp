#include "device/NetworkCameras.h"

#include "base/JsonText.h"
#include "store/AddableDevices.h"
#include "store/Devices.h"
#include "store/Groups.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ipncsdk::device {

namespace {

constexpr auto configOrigin = "config";

store::Device deviceOfCamera(const NetworkCamera& camera, store::AccountId owner) {
    store::Device device;
    device.ipncid = camera.ipncid;
    device.owner = owner;
    device.origin = configOrigin;
    device.name = camera.name;
    device.type = "video";
    device.configGroup = camera.group;
    const char* const model = parseFileAddress(camera.mainUrl) ? "FILE" : "RTSP";
    device.info = toText(
        {{"model", model}, {"serial", camera.ipncid}, {"QRinfo", Json::object()}, {"Laserinfo", Json::object()}});
    device.extend = R"({"sublist":[]})";
    device.video = R"({"codec":"H264","streams":["main","light"]})";
    return device;
}

/// The group that the camera's entry names, or the first one.
store::GroupId groupOfCamera(soci::session& sql, const NetworkCamera& camera, store::AccountId owner,
                             std::vector<ConfigMistake>& mistakes) {
    if (camera.group.empty())
        return store::firstGroup(sql, owner);
    for (const store::Group& group : store::groupsOf(sql, owner)) {
        if (group.name == camera.group)
            return group.id;
    }
    mistakes.push_back({ConfigMistake::Kind::UnknownGroup, camera.line, "group"});
    return store::firstGroup(sql, owner);
}

} // namespace

void NetworkCameras::enter(soci::session& sql, std::vector<NetworkCamera> cameras,
                           std::vector<ConfigMistake>& mistakes) {
    const store::AccountId owner = store::firstAccount(sql);
    std::map<std::string, NetworkCamera> entered;
    for (NetworkCamera& camera : cameras) {
        const auto known = store::deviceById(sql, camera.ipncid);
        if ((known && known->origin != configOrigin) || store::waitingDevice(sql, camera.ipncid)) {
            mistakes.push_back({ConfigMistake::Kind::IdTaken, camera.line, "ipncid"});
            continue;
        }
        const store::Device device = deviceOfCamera(camera, owner);
        if (!known) {
            store::insertDevice(sql, device, groupOfCamera(sql, camera, owner, mistakes), camera.name);
        } else {
            if (known->configGroup != camera.group)
                store::moveDevice(sql, owner, camera.ipncid, groupOfCamera(sql, camera, owner, mistakes),
                                  std::numeric_limits<std::size_t>::max());
            if (known->name != camera.name || known->configGroup != camera.group)
                store::updateConfigured(sql, device);
            // A name that the user never changed follows the file.
            const auto placed = store::deviceOf(sql, owner, camera.ipncid);
            if (placed && placed->nickname == known->name && known->name != camera.name)
                store::setDeviceNickname(sql, owner, camera.ipncid, camera.name);
        }
        std::string id = camera.ipncid;
        entered.emplace(std::move(id), std::move(camera));
    }
    cameras_ = std::move(entered);
}

const NetworkCamera* NetworkCameras::find(const std::string& ipncid) const {
    const auto found = cameras_.find(ipncid);
    return found == cameras_.end() ? nullptr : &found->second;
}

bool NetworkCameras::isReachable(const std::string& ipncid) const {
    const std::lock_guard lock(mutex_);
    return unreachable_.count(ipncid) == 0;
}

void NetworkCameras::setReachable(const std::string& ipncid, bool reachable) {
    const std::lock_guard lock(mutex_);
    if (reachable)
        unreachable_.erase(ipncid);
    else
        unreachable_.insert(ipncid);
}

} // namespace ipncsdk::device
