#include "device/DeviceRequests.h"
#include "service/BoardRecords.h"
#include "service/MapCheck.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/Maps.h"

#include <set>
#include <string>
#include <utility>

namespace ipncsdk::service {

namespace {

constexpr std::size_t mostFriends = 1000;
constexpr long long mostMarkers = 2000;                  ///< of a map
constexpr long long mostMarkerBytes = 8LL * 1024 * 1024; ///< of a map, all of them
constexpr auto notTheOwner = "非主账号无操作权限!";

Reply refusal(ServiceCode code, const std::string& text) {
    Reply reply(code);
    if (!text.empty())
        reply.content["text"] = text;
    return reply;
}

/// `NotMainAccount` says more than a code.
Reply replyOf(ServiceCode code, const std::string& text = {}) {
    return refusal(code, text.empty() && code == ServiceCode::NotMainAccount ? notTheOwner : text);
}

/// The map that the caller wants to change. Of maps that others do not share the caller learns nothing.
ServiceCode ownMap(soci::session& sql, const OperationContext& context, long long id, store::Map& map) {
    const auto found = store::mapById(sql, id);
    if (!found)
        return ServiceCode::UnknownMap;
    map = *found;
    if (map.owner == context.caller.id)
        return ServiceCode::Done;
    return store::viewersOfMap(sql, id).count(context.caller.id) > 0 ? ServiceCode::NotMainAccount
                                                                     : ServiceCode::UnknownMap;
}

void concernViewers(soci::session& sql, const OperationContext& context, long long map) {
    context.effects.concernedByFiles.merge(store::viewersOfMap(sql, map));
}

/// The id that a "mapinfo" names, which clients have under one name or the other; 0 for a new map.
std::optional<long long> namedMap(const Json& mapInfo) {
    for (const char* key : {"mapid", "pid"}) {
        if (isGiven(mapInfo, key)) {
            constexpr long long nowhere = -1;
            const auto id = idAt(mapInfo, key);
            return id ? std::make_optional(*id > 0 ? *id : nowhere) : std::nullopt;
        }
    }
    return 0;
}

ServiceCode addOnlineMap(soci::session& sql, const OperationContext& context, const Json& mapInfo, long long& id,
                         std::string& fault) {
    // The map of a picture comes with the picture.
    if (isLocalMap(mapInfo) != std::make_optional(false))
        return ServiceCode::BadRequest;
    const CheckedObject checked = checkMap(mapInfo, Json::object(), false);
    fault = checked.fault;
    if (!fault.empty())
        return ServiceCode::BadRequest;
    if (store::mapsOf(sql, context.caller.id).size() >= mostMaps)
        return ServiceCode::Limit;
    id = store::insertMap(sql, {0, context.caller.id, false, {}, 0, toText(checked.document)});
    return ServiceCode::Done;
}

ServiceCode editMap(soci::session& sql, const OperationContext& context, const Json& mapInfo, long long id,
                    std::string& fault) {
    store::Map map;
    if (const ServiceCode code = ownMap(sql, context, id, map); code != ServiceCode::Done)
        return code;
    if (memberAt(mapInfo, "type") != nullptr && isLocalMap(mapInfo) != std::make_optional(map.local))
        return ServiceCode::BadRequest;
    const Json before = Json::parse(map.document, nullptr, false);
    const CheckedObject checked = checkMap(mapInfo, before.is_object() ? before : Json::object(), map.local);
    fault = checked.fault;
    if (!fault.empty())
        return ServiceCode::BadRequest;
    store::setMapDocument(sql, id, toText(checked.document));
    return ServiceCode::Done;
}

/// Enters the marker, or replaces the one with its id.
ServiceCode placeMarker(soci::session& sql, store::MapMarker& marker) {
    if (marker.id != 0) {
        const auto known = store::markerById(sql, marker.id);
        if (!known || known->map != marker.map)
            return ServiceCode::UnknownMarker;
    }
    const store::MarkerCount count = store::countMarkers(sql, marker.map);
    if ((marker.id == 0 && count.markers >= mostMarkers) ||
        count.bytes + static_cast<long long>(marker.document.size()) > mostMarkerBytes)
        return ServiceCode::Limit;
    if (marker.id == 0)
        marker.id = store::insertMarker(sql, marker);
    else
        store::updateMarker(sql, marker);
    return ServiceCode::Done;
}

/// The id of the marker that a "sensorinfo" replaces; 0 for a new one.
std::optional<long long> namedMarker(const Json& sensorInfo) {
    if (!isGiven(sensorInfo, "sensorid"))
        return 0;
    constexpr long long nowhere = -1;
    const auto id = idAt(sensorInfo, "sensorid");
    return id ? std::make_optional(*id > 0 ? *id : nowhere) : std::nullopt;
}

/// Whether the caller may mark this device, or this board of it.
ServiceCode mayMark(soci::session& sql, const OperationContext& context, const std::string& ipncid, int pid) {
    const auto placed = device::visibleDevice(sql, context.caller.id, ipncid, context.cameras);
    if (!placed)
        return ServiceCode::UnknownDevice;
    const bool known =
        pid == 0 || !BoardRecords(placed->device.interfaces, placed->device.extend).board(pid).is_null();
    return known ? ServiceCode::Done : ServiceCode::UnknownInput;
}

} // namespace

Reply submitMap(const OperationContext& context, const Json& params) {
    const Json* const info = memberAt(params, "mapinfo");
    auto id = info != nullptr && info->is_object() ? namedMap(*info) : std::nullopt;
    // Some clients name the map beside what they say of it.
    if (id == 0LL)
        id = namedMap(params);
    if (!id)
        return ServiceCode::BadRequest;
    std::string fault;
    const ServiceCode code = context.change("keep a map", [&](soci::session& sql) {
        const ServiceCode kept =
            *id == 0 ? addOnlineMap(sql, context, *info, *id, fault) : editMap(sql, context, *info, *id, fault);
        concernViewers(sql, context, *id);
        return kept;
    });
    return code == ServiceCode::Done ? Reply(Json{{"mapid", std::to_string(*id)}}) : replyOf(code, fault);
}

Reply deleteMap(const OperationContext& context, const Json& params) {
    const auto id = idAt(params, "mapid");
    if (!id)
        return ServiceCode::BadRequest;
    store::Map map;
    const ServiceCode code = context.change("delete a map", [&](soci::session& sql) {
        if (const ServiceCode found = ownMap(sql, context, *id, map); found != ServiceCode::Done)
            return found;
        if (store::countMarkers(sql, *id).markers > 0)
            return ServiceCode::MapNotEmpty;
        concernViewers(sql, context, *id);
        store::removeMap(sql, *id);
        return ServiceCode::Done;
    });
    if (code == ServiceCode::Done && map.local)
        context.effects.released.insert(map.content);
    return replyOf(code);
}

Reply setMapShare(const OperationContext& context, const Json& params) {
    const auto id = idAt(params, "mapid");
    const Json* const phones = memberAt(params, "friendphones");
    if (!id || phones == nullptr || !phones->is_array() || phones->size() > mostFriends)
        return ServiceCode::BadRequest;
    for (const Json& phone : *phones) {
        if (!phone.is_string())
            return ServiceCode::BadRequest;
    }
    return replyOf(context.change("share a map", [&](soci::session& sql) {
        store::Map map;
        if (const ServiceCode found = ownMap(sql, context, *id, map); found != ServiceCode::Done)
            return found;
        std::set<store::AccountId> friends;
        for (const Json& phone : *phones) {
            const auto other = store::friendOf(sql, context.caller.id, phone.get<std::string>());
            if (!other)
                return ServiceCode::NotFriend;
            friends.insert(other->id);
        }
        concernViewers(sql, context, *id); // who had it
        store::setFriendsOfMap(sql, *id, friends);
        concernViewers(sql, context, *id); // who has it now
        return ServiceCode::Done;
    }));
}

Reply submitMapSensor(const OperationContext& context, const Json& params) {
    const auto map = idAt(params, "mapid");
    const auto ipncid = textAt(params, "ipncid");
    const Json* const info = memberAt(params, "sensorinfo");
    if (!map || !ipncid || info == nullptr || !info->is_object())
        return ServiceCode::BadRequest;
    const auto id = namedMarker(*info);
    const auto pid = markedPid(*info);
    const bool another = memberAt(*info, "ipncid") != nullptr && textAt(*info, "ipncid") != *ipncid;
    if (!id || !pid || another)
        return ServiceCode::BadRequest;
    store::MapMarker marker{*id, *map, *ipncid, *pid, {}};
    std::string fault;
    const ServiceCode code = context.change("place a marker", [&](soci::session& sql) {
        store::Map known;
        if (const ServiceCode found = ownMap(sql, context, *map, known); found != ServiceCode::Done)
            return found;
        if (const ServiceCode may = mayMark(sql, context, *ipncid, *pid); may != ServiceCode::Done)
            return may;
        const CheckedObject checked = checkMarker(*info, known.local);
        fault = checked.fault;
        if (!fault.empty())
            return ServiceCode::BadRequest;
        marker.document = toText(checked.document);
        concernViewers(sql, context, *map);
        return placeMarker(sql, marker);
    });
    return code == ServiceCode::Done ? Reply(Json{{"mapsensorid", std::to_string(marker.id)}}) : replyOf(code, fault);
}

Reply deleteMapSensor(const OperationContext& context, const Json& params) {
    const auto map = idAt(params, "mapid");
    const auto id = idAt(params, "mapsensorid");
    if (!map || !id)
        return ServiceCode::BadRequest;
    return replyOf(context.change("delete a marker", [&](soci::session& sql) {
        store::Map known;
        if (const ServiceCode found = ownMap(sql, context, *map, known); found != ServiceCode::Done)
            return found;
        // The device may be gone or hidden; the marker tells which one it was.
        const auto marker = store::markerById(sql, *id);
        const auto ipncid = textAt(params, "ipncid");
        if (!marker || marker->map != *map || (ipncid && !ipncid->empty() && *ipncid != marker->ipncid))
            return ServiceCode::UnknownMarker;
        concernViewers(sql, context, *map);
        store::removeMarker(sql, *id);
        return ServiceCode::Done;
    }));
}

} // namespace ipncsdk::service
