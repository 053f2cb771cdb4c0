#include "service/MapRecords.h"

#include "sensor/Position.h"
#include "service/BoardRecords.h"
#include "store/Boards.h"
#include "store/ContentFiles.h"
#include "store/UserFiles.h"

#include <algorithm>
#include <map>
#include <utility>

namespace ipncsdk::service {

namespace {

/// Reference points of positioning sensors, by device and board.
using ReferencePoints = std::map<std::pair<std::string, int>, Json>;

ReferencePoints allReferencePoints(soci::session& sql) {
    ReferencePoints points;
    for (const store::DeviceBoards& device : store::allBoards(sql)) {
        // Most devices have none, and parsing costs.
        if (device.interfaces.find(sensor::positionProtocol) == std::string::npos)
            continue;
        for (const Json& board : BoardRecords(device.interfaces, device.extend).all()) {
            if (sensor::isPositionBoard(board))
                points[{device.ipncid, sensor::wholeAt(board, "pid", 0)}] = sensor::locationsOf(board);
        }
    }
    return points;
}

Json objectFrom(const std::string& text) {
    Json object = Json::parse(text, nullptr, false);
    return object.is_object() ? object : Json::object();
}

Json markerRecord(const store::MapMarker& marker, const ReferencePoints& points) {
    Json record = objectFrom(marker.document);
    record["sensorid"] = std::to_string(marker.id);
    record["ipncid"] = marker.ipncid;
    record["pid"] = marker.pid == 0 ? std::string() : std::to_string(marker.pid);
    const auto found = points.find({marker.ipncid, marker.pid});
    if (found != points.end()) {
        record["protocol"] = sensor::positionProtocol;
        record["info"] = {{"locations", found->second}};
    }
    return record;
}

Json mapRecord(soci::session& sql, const store::Map& map, const ReferencePoints& points) {
    Json record = objectFrom(map.document);
    record["pid"] = std::to_string(map.id);
    record["type"] = map.local ? "local" : "online";
    if (map.local) {
        record["filename"] = map.content;
        record["size"] = map.size;
    }
    Json& markers = record["sensors"] = Json::array();
    for (const store::MapMarker& marker : store::markersOf(sql, map.id))
        markers.push_back(markerRecord(marker, points));
    return record;
}

} // namespace

Json mapsDocument(soci::session& sql, store::AccountId account) {
    const std::vector<store::Map> own = store::mapsOf(sql, account);
    const std::vector<store::SharedMap> given = store::mapsSharedWith(sql, account);
    const ReferencePoints points = own.empty() && given.empty() ? ReferencePoints() : allReferencePoints(sql);
    Json maps = Json::array();
    for (const store::Map& map : own) {
        Json record = mapRecord(sql, map, points);
        Json& friends = record["friends"] = Json::array();
        for (const store::Friend& person : store::friendsOfMap(sql, map.id))
            friends.push_back(person.phone);
        maps.push_back(std::move(record));
    }
    Json shared = Json::array();
    for (const store::SharedMap& one : given) {
        Json record = mapRecord(sql, one.map, points);
        record["userid"] = one.ownerPhone;
        shared.push_back(std::move(record));
    }
    return {{"maps", std::move(maps)}, {"sharemaps", std::move(shared)}};
}

Json iconsDocument(soci::session& sql, store::AccountId account) {
    Json icons = Json::array();
    for (const store::UserFile& file : store::filesOf(sql, account, "icons"))
        icons.push_back({{"filename", file.name},
                         {"size", file.size},
                         {"hash", file.content.substr(0, store::ContentFiles::hashDigits)}});
    return icons;
}

bool isIconShown(soci::session& sql, store::AccountId owner, store::AccountId viewer, const std::string& icon) {
    for (const store::SharedMap& shared : store::mapsSharedWith(sql, viewer)) {
        if (shared.map.owner != owner)
            continue;
        const auto markers = store::markersOf(sql, shared.map.id);
        const bool shown = std::any_of(markers.begin(), markers.end(), [&icon](const store::MapMarker& marker) {
            const Json record = objectFrom(marker.document);
            return textAt(record, "icon") == icon && !flagAt(record, "iconpublic").value_or(false);
        });
        if (shown)
            return true;
    }
    return false;
}

} // namespace ipncsdk::service
