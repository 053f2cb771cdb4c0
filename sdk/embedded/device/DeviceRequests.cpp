#include "device/DeviceRequests.h"

#include "device/AddedCameras.h"
#include "device/DeviceWrites.h"
#include "device/Firmware.h"
#include "device/LoopPtz.h"
#include "device/NetworkSettings.h"
#include "device/ParameterTable.h"
#include "device/PtzRequests.h"
#include "device/Rights.h"
#include "store/AddableDevices.h"
#include "store/Parameters.h"
#include "store/Sessions.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace ipncsdk::device {

namespace {

constexpr auto loopOrigin = "loop";
constexpr auto netName = "netstate";
constexpr auto upgradeName = "upgradestate";
/// Bytes that one way of measuring may take in a device's record.
constexpr std::size_t largestMeasuring = 64U << 10U;

Json infoOf(const store::Device& device) {
    Json info = Json::parse(device.info, nullptr, false);
    return info.is_object() ? info : Json::object();
}

/// Keeps the device's "info" and has everybody's clients read it who sees the device.
void storeInfo(soci::session& sql, const store::Device& device) {
    store::setDeviceInfo(sql, device.ipncid, device.info);
    store::touch(sql, device.owner);
    for (const store::AccountId account : store::friendsWith(sql, device.ipncid))
        store::touch(sql, account);
}

/// What an account must be allowed for a request; `writes` is null for one that only reads.
std::vector<Right> rightsFor(const Json* names, const DeviceWrites* writes) {
    std::vector<Right> rights;
    if (writes != nullptr && writes->administers())
        rights.push_back(Right::Admin);
    if (writes != nullptr && !writes->moves.empty())
        rights.push_back(Right::Ptz);
    if (names == nullptr)
        return rights;
    const auto isPtz = [](const Json& name) {
        return isPtzName(name.get<std::string>());
    };
    if (std::any_of(names->begin(), names->end(), isPtz))
        rights.push_back(Right::Ptz);
    if (names->empty() || !std::all_of(names->begin(), names->end(), isPtz))
        rights.push_back(Right::Param);
    return rights;
}

Json upgradeText(const UpgradeState& state) {
    struct Row {
        const char* name;
        const char* text;
    };
    static constexpr std::array rows = {Row{"none", ""},          Row{"download", "正在下载升级包"},
                                        Row{"write", "正在写入"}, Row{"restart", "设备正在重启"},
                                        Row{"ok", "升级完成"},    Row{"error", "文件不是该设备的升级包"}};
    const Row& row = rows[static_cast<std::size_t>(state.phase)];
    return {{"state", row.name}, {"percent", state.percent}, {"text", row.text}};
}

Json readValue(const std::string& name, const std::map<std::string, std::string>& stored, const Json& info) {
    const Parameter* parameter = findParameter(name);
    if (parameter == nullptr || parameter->kind == Parameter::Kind::Command)
        return nullptr;
    Json value = storedOrDefault(*parameter, stored, info);
    if (parameter->kind == Parameter::Kind::Secret && value.is_string() && !value.get<std::string>().empty())
        return secretMask;
    return value;
}

/// Takes what the camera does by itself out of the writes and the names; nothing when it does nothing of them.
std::optional<CameraTask> taskFor(const NetworkCamera& camera, const Json* names, DeviceWrites& writes) {
    CameraTask task;
    task.camera = camera;
    task.moves = std::move(writes.moves);
    writes.moves.clear();
    const auto isImage = [](const DeviceWrites::Value& write) {
        return isImageName(write.parameter->name);
    };
    for (const DeviceWrites::Value& write : writes.values) {
        if (isImage(write))
            task.image[write.parameter->name] = static_cast<int>(integerOf(write.value).value_or(0));
    }
    writes.values.erase(std::remove_if(writes.values.begin(), writes.values.end(), isImage), writes.values.end());
    for (const Json& entry : names != nullptr ? *names : Json::array()) {
        const auto name = entry.get<std::string>();
        if (isPtzName(name) || isImageName(name))
            task.names.push_back(name);
    }
    return task.moves.empty() && task.image.empty() && task.names.empty() ? std::nullopt : std::optional(task);
}

bool isNameList(const Json& names) {
    return names.is_array() && names.size() <= mostNames &&
           std::all_of(names.begin(), names.end(), [](const Json& name) { return name.is_string(); });
}

} // namespace

bool isOnline(const store::Device& device, const NetworkCameras& cameras) {
    return device.online && cameras.isReachable(device.ipncid);
}

std::optional<store::PlacedDevice> visibleDevice(soci::session& sql, store::AccountId account,
                                                 const std::string& ipncid, const NetworkCameras& cameras) {
    auto device = store::deviceOf(sql, account, ipncid);
    if (device && device->device.origin == "config" && cameras.find(ipncid) == nullptr)
        return std::nullopt;
    return device;
}

bool isImageName(const std::string& name) {
    static constexpr std::array names = {"brightness", "contrast", "saturation", "sharpness"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

DeviceRequests::DeviceRequests(store::Database& database, NetworkCameras& cameras, const store::StoreKey& key,
                               LoopDevices& loops)
    : database_(database)
    , cameras_(cameras)
    , key_(key)
    , loops_(loops) {}

std::unique_ptr<PtzDriver> DeviceRequests::driverOf(const store::Device& device) {
    if (device.origin != loopOrigin)
        return nullptr;
    return std::make_unique<LoopPtz>(device.ipncid, loops_.of(device.ipncid), database_);
}

std::optional<NetworkCamera> DeviceRequests::onvifCamera(soci::session& sql, const store::Device& device) {
    std::optional<NetworkCamera> camera;
    if (const NetworkCamera* const named = cameras_.find(device.ipncid))
        camera = *named;
    else if (device.origin == addedOrigin)
        camera = addedCamera(sql, device.ipncid, key_);
    return camera && !camera->onvifUrl.empty() ? camera : std::nullopt;
}

bool DeviceRequests::upgradeFits(const store::Device& device, const Json& upgrade) {
    if (memberAt(upgrade, "uploaded") != nullptr)
        return integerAt(upgrade, "uploaded") == 1 && loops_.of(device.ipncid)->received().has_value();
    const auto version = textAt(upgrade, "softwareversion");
    const auto newest = newestVersionFor(infoOf(device));
    return version && newest && textAt(*newest, "softwareversion") == version;
}

/// Does what is no parameter, behind the transaction that wrote the parameters.
ServiceCode DeviceRequests::begin(const store::Device& device, const DeviceWrites& writes) {
    if (const auto driver = driverOf(device)) {
        for (const PtzCommand& move : writes.moves) {
            if (const ServiceCode code = move(*driver); code != ServiceCode::Done)
                return code;
        }
    }
    if (device.origin != loopOrigin)
        return ServiceCode::Done;
    const auto loop = loops_.of(device.ipncid);
    if (writes.upgrade) {
        const auto version = textAt(*writes.upgrade, "softwareversion");
        if (!loop->upgrade(version ? *version : loop->received().value_or(""), !version))
            return ServiceCode::TryLater;
    }
    if (writes.restarts())
        loop->restart();
    return ServiceCode::Done;
}

DeviceAnswer DeviceRequests::parameters(store::AccountId account, const Json& message) {
    const auto ipncid = textAt(message, "ipncid");
    const Json* names = memberAt(message, "getcmds");
    const Json* values = memberAt(message, "setcmds");
    if (!ipncid || (names == nullptr && values == nullptr) || (names != nullptr && !isNameList(*names)))
        return {ServiceCode::BadRequest, {}};
    DeviceWrites writes;
    if (values != nullptr) {
        if (const ServiceCode code = readWrites(*values, writes); code != ServiceCode::Done)
            return {code, {}};
    }
    Json content = Json::object();
    store::Device found;
    std::optional<CameraTask> task;
    const auto work = [&](soci::session& sql) {
        const auto device = visibleDevice(sql, account, *ipncid, cameras_);
        if (!device)
            return ServiceCode::UnknownDevice;
        found = device->device;
        for (const Right right : rightsFor(names, values != nullptr ? &writes : nullptr)) {
            if (!allows(*device, right))
                return ServiceCode::NoRight;
        }
        // The service itself knows how the upgrade goes on, also while the device is away.
        if (!isOnline(found, cameras_) && (values != nullptr || *names != Json::array({upgradeName})))
            return ServiceCode::DeviceOffline;
        const auto camera = onvifCamera(sql, found);
        if (const ServiceCode code = refusal(found, camera ? &*camera : nullptr, writes); code != ServiceCode::Done)
            return code;
        if (camera)
            task = taskFor(*camera, names, writes);
        if (values != nullptr)
            applyWrites(sql, *ipncid, writes, loops_.clock().now());
        if (names != nullptr) {
            const auto stored = store::parametersOf(sql, *ipncid);
            const Json info = infoOf(found);
            Json& read = content["getcmds"] = Json::object();
            for (const Json& name : *names)
                read[name.get<std::string>()] = readValue(name.get<std::string>(), stored, info);
        }
        return ServiceCode::Done;
    };
    ServiceCode code = values != nullptr ? database_.change("write device parameters", work)
                                         : database_.read("read device parameters", work);
    if (code == ServiceCode::Done && values != nullptr)
        code = begin(found, writes);
    if (code == ServiceCode::Done && names != nullptr)
        code = readBesides(found, *names, content["getcmds"]);
    if (code != ServiceCode::Done)
        return {code, {}};
    if (task)
        task->content = content;
    return {Reply(std::move(content)), std::move(task)};
}

ServiceCode DeviceRequests::refusal(const store::Device& device, const NetworkCamera* camera,
                                    const DeviceWrites& writes) {
    const bool loop = device.origin == loopOrigin;
    if ((writes.upgrade && !loop) || (!writes.moves.empty() && !loop && camera == nullptr))
        return ServiceCode::NotSupported;
    return writes.upgrade && !upgradeFits(device, *writes.upgrade) ? ServiceCode::BadRequest : ServiceCode::Done;
}

/// Reads what is no parameter of the table.
ServiceCode DeviceRequests::readBesides(const store::Device& device, const Json& names, Json& read) {
    const auto driver = driverOf(device);
    if (driver == nullptr)
        return ServiceCode::Done;
    for (const Json& entry : names) {
        const auto name = entry.get<std::string>();
        if (name == netName)
            read[name] = networkStateOf(device);
        else if (name == upgradeName)
            read[name] = upgradeText(loops_.of(device.ipncid)->upgradeState());
        else if (isPtzName(name)) {
            if (const ServiceCode code = readPtz(*driver, name, read[name]); code != ServiceCode::Done)
                return code;
        }
    }
    return ServiceCode::Done;
}

ServiceCode DeviceRequests::setAddresses(store::AccountId account, const Json& message) {
    return changeInfo(account, message, withAddresses);
}

ServiceCode DeviceRequests::setWireless(store::AccountId account, const Json& message) {
    return changeInfo(account, message, withWireless);
}

ServiceCode DeviceRequests::changeInfo(store::AccountId account, const Json& message, ChangedInfo changed) {
    const auto ipncid = textAt(message, "ipncid");
    if (!ipncid)
        return ServiceCode::BadRequest;
    return database_.change("configure a device", [&](soci::session& sql) {
        const auto placed = visibleDevice(sql, account, *ipncid, cameras_);
        auto device = placed ? std::make_optional(placed->device) : store::waitingDevice(sql, *ipncid);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (placed && !allows(*placed, Right::Admin))
            return ServiceCode::NoRight;
        if (device->origin != loopOrigin)
            return ServiceCode::NotSupported;
        if (placed && !isOnline(*device, cameras_))
            return ServiceCode::DeviceOffline;
        const auto info = changed(*device, message);
        if (!info)
            return ServiceCode::BadRequest;
        device->info = toText(*info);
        if (!placed) {
            store::removeWaiting(sql, *ipncid);
            store::insertWaiting(sql, *device);
            return ServiceCode::Done;
        }
        storeInfo(sql, *device);
        return ServiceCode::Done;
    });
}

ServiceCode DeviceRequests::setMeasuring(store::AccountId account, const Json& message) {
    const auto ipncid = textAt(message, "ipncid");
    const std::string name = textAt(message, "type").value_or("");
    const Json* const value = memberAt(message, name.c_str());
    const Json* const inner = value != nullptr ? memberAt(*value, "info") : nullptr;
    if (!ipncid || inner == nullptr || !inner->is_object() || toText(*value).size() > largestMeasuring)
        return ServiceCode::BadRequest;
    return database_.change("keep how a camera measures", [&](soci::session& sql) {
        auto placed = visibleDevice(sql, account, *ipncid, cameras_);
        if (!placed)
            return ServiceCode::UnknownDevice;
        if (!allows(*placed, Right::Admin))
            return ServiceCode::NoRight;
        Json info = infoOf(placed->device);
        info[name] = *value;
        placed->device.info = toText(info);
        storeInfo(sql, placed->device);
        return ServiceCode::Done;
    });
}

Reply DeviceRequests::newestVersion(store::AccountId account, const Json& message) {
    const auto ipncid = textAt(message, "ipncid");
    if (!ipncid)
        return ServiceCode::BadRequest;
    std::optional<Json> newest;
    const ServiceCode code = database_.read("look up a device's firmware", [&](soci::session& sql) {
        const auto device = visibleDevice(sql, account, *ipncid, cameras_);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!allows(*device, Right::Param))
            return ServiceCode::NoRight;
        if (device->device.origin == loopOrigin)
            newest = newestVersionFor(infoOf(device->device));
        return newest ? ServiceCode::Done : ServiceCode::NotSupported;
    });
    return code == ServiceCode::Done ? Reply(std::move(*newest)) : Reply(code);
}

bool DeviceRequests::settleLoops() {
    bool any = false;
    for (const auto& [ipncid, loop] : loops_.all()) {
        const LoopDevice::Change change = loop->takeChange();
        if (change.reachable) {
            cameras_.setReachable(ipncid, *change.reachable);
            any = true;
        }
        if (!change.version)
            continue;
        any = true;
        const auto write = [&, id = ipncid](soci::session& sql) {
            // One that was deleted meanwhile needs no version.
            if (auto device = store::deviceById(sql, id)) {
                Json info = infoOf(*device);
                info["softwareversion"] = *change.version;
                device->info = toText(info);
                storeInfo(sql, *device);
            }
            return ServiceCode::Done;
        };
        database_.change("enter a new version", write);
    }
    return any;
}

Reply DeviceRequests::serverData(store::AccountId account, const Json& message) {
    const Json* request = memberAt(message, "serverreq");
    const auto type = request != nullptr ? textAt(*request, "type") : std::nullopt;
    if (!type)
        return ServiceCode::BadRequest;
    if (*type == "ipncstate")
        return stateOf(account, message);
    return ServiceCode::NotSupported;
}

Reply DeviceRequests::stateOf(store::AccountId account, const Json& message) {
    // The id stands in the inner object of this request, beside "type", or in the envelope.
    const Json& request = message["serverreq"];
    const Json* inner = memberAt(request, "ipncstate");
    auto ipncid = inner != nullptr ? textAt(*inner, "ipncid") : std::nullopt;
    for (const Json* place : {&request, &message}) {
        if (!ipncid)
            ipncid = textAt(*place, "ipncid");
    }
    if (!ipncid)
        return ServiceCode::BadRequest;
    bool online = false;
    const ServiceCode code = database_.read("read a device's state", [&](soci::session& sql) {
        const auto device = visibleDevice(sql, account, *ipncid, cameras_);
        if (!device)
            return ServiceCode::UnknownDevice;
        online = isOnline(device->device, cameras_);
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return code;
    return Reply(Json{{"ipncid", *ipncid}, {"online", online}});
}

} // namespace ipncsdk::device
