#include "service/Documents.h"

#include "device/DeviceRequests.h"
#include "device/NetworkSettings.h"
#include "device/Rights.h"
#include "service/BoardRecords.h"
#include "service/LinkageRecords.h"
#include "service/MapRecords.h"
#include "service/UserFileOperations.h"
#include "store/AddableDevices.h"
#include "store/Devices.h"
#include "store/Groups.h"
#include "world/FirstWorld.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ipncsdk::service {

namespace {

constexpr std::array documentNames = {"ipnclist", "userinfo", "phoneid", "firstaccount", "localdevice"};

/// A JSON text of the store; `otherwise` when it is not what it should be.
Json storedJson(const std::string& text, const Json& otherwise) {
    Json value = Json::parse(text, nullptr, false);
    return value.is_discarded() || value.type() != otherwise.type() ? otherwise : value;
}

Json deviceRecord(const store::PlacedDevice& placed, const device::NetworkCameras& cameras,
                  const sensor::LatestValues& latest, Json linkages) {
    const store::Device& device = placed.device;
    const bool online = device::isOnline(device, cameras);
    BoardRecords boards(device.interfaces, device.extend);
    showToClients(boards, latest, online);
    return {{"ipncid", device.ipncid},
            {"name", device.name},
            {"nickname", placed.nickname},
            {"type", device.type},
            {"online", online},
            {"groupid", std::to_string(placed.group)},
            {"authority", device::authorityOf(placed)},
            {"info", storedJson(device.info, Json::object())},
            {"interfaces", boards.interfaces()},
            {"linkages", std::move(linkages)},
            {"extend", boards.extend()},
            {"video", storedJson(device.video, Json::object())}};
}

} // namespace

Documents::Documents(store::Database& database, const device::NetworkCameras& cameras,
                     const device::FoundCameras& found, const AccountService& accounts,
                     const sensor::LatestValues& latest)
    : database_(database)
    , cameras_(cameras)
    , found_(found)
    , accounts_(accounts)
    , latest_(latest) {}

bool Documents::isKnown(std::string_view name) {
    return std::find(documentNames.begin(), documentNames.end(), name) != documentNames.end();
}

std::optional<Json> Documents::make(std::string_view name) const {
    if (name == "ipnclist")
        return deviceList();
    if (name == "userinfo")
        return userInfo();
    if (name == "phoneid")
        return std::make_optional(phoneId());
    if (name == "firstaccount")
        return std::make_optional(firstAccount());
    if (name == "localdevice")
        return std::make_optional(Json{{"localdevice", localDevices()}});
    return std::nullopt;
}

Json Documents::localDevices() const {
    Json devices = found_.localDevices(cameras_);
    for (const auto& [id, camera] : cameras_.all()) {
        const auto address = device::parseRtspAddress(camera.mainUrl);
        if (!address)
            continue;
        devices[id] = {{"ipncid", id},
                       {"name", camera.name},
                       {"type", "video"},
                       {"ip", address->host},
                       {"url", address->withoutPassword},
                       {"mac", ""},
                       {"added", true},
                       {"onvif", false},
                       {"model", "RTSP"}};
    }
    // Recorded scenes answer on every network.
    database_.read("read the devices that wait", [&devices](soci::session& sql) {
        for (const store::Device& device : store::waitingDevices(sql)) {
            const Json info = storedJson(device.info, Json::object());
            const Json net = device::networkStateOf(device);
            devices[device.ipncid] = {
                {"ipncid", device.ipncid}, {"name", device.name}, {"type", device.type},
                {"ip", net["ip"]},         {"url", ""},           {"mac", net["mac"]},
                {"added", false},          {"onvif", false},      {"model", textAt(info, "model").value_or("")}};
        }
        return ServiceCode::Done;
    });
    return devices;
}

std::optional<Json> Documents::deviceList() const {
    Json devices = Json::array();
    Json groups = Json::array();
    const auto caller = accounts_.session().current();
    const auto collect = [&](soci::session& sql) {
        // Another process may have ended the session a moment ago.
        if (!accounts_.holds(sql, *caller))
            return ServiceCode::Done;
        std::map<store::GroupId, Json> members;
        auto plans = store::allPlans(sql);
        for (const store::PlacedDevice& placed : store::devicesOf(sql, caller->id)) {
            const std::string& id = placed.device.ipncid;
            if (placed.device.origin == "config" && cameras_.find(id) == nullptr)
                continue;
            Json linkages = device::allows(placed, device::Right::Param) ? linkagesOf(plans[id]) : Json::array();
            devices.push_back(deviceRecord(placed, cameras_, latest_, std::move(linkages)));
            members[placed.group].push_back(id);
        }
        for (const store::Group& group : store::groupsOf(sql, caller->id)) {
            Json list = members.count(group.id) > 0 ? members[group.id] : Json::array();
            groups.push_back({{"id", std::to_string(group.id)}, {"name", group.name}, {"ipnclist", std::move(list)}});
        }
        return ServiceCode::Done;
    };
    if (caller && database_.read("read the device list", collect) != ServiceCode::Done)
        return std::nullopt;
    return std::make_optional(Json{{"ipnclist", std::move(devices)}, {"group", std::move(groups)}});
}

std::optional<Json> Documents::userInfo() const {
    Json maps = {{"maps", Json::array()}, {"sharemaps", Json::array()}};
    Json own = Json::array();
    const auto caller = accounts_.session().current();
    const auto collect = [&](soci::session& sql) {
        // Another process may have ended the session a moment ago.
        if (!accounts_.holds(sql, *caller))
            return ServiceCode::Done;
        maps = mapsDocument(sql, caller->id);
        own = iconsDocument(sql, caller->id);
        return ServiceCode::Done;
    };
    if (caller && database_.read("read maps and files", collect) != ServiceCode::Done)
        return std::nullopt;
    const Json shared = caller ? publicIconsDocument() : Json::array();
    return std::make_optional(Json{{"userconfig", std::move(maps)},
                                   {"fileinfo", {{"icons", {{"public", shared}, {"user", std::move(own)}}}}}});
}

Json Documents::phoneId() const {
    const auto caller = accounts_.session().current();
    return {{"phoneid", caller ? caller->phone : std::string()}};
}

Json Documents::firstAccount() const {
    if (accounts_.everSignedIn())
        return Json::object();
    return {{"phonenumber", world::firstPhone}, {"phonepassword", world::firstPassword}};
}

} // namespace ipncsdk::service
