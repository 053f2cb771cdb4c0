#include "store/Maps.h"

#include "store/Schema.h"

#include <soci/soci.h>

namespace ipncsdk::store {

namespace {

constexpr auto lastMapFact = "lastmap";
constexpr auto lastMarkerFact = "lastmapmarker";
constexpr auto mapColumns = "m.id, m.accountid, m.local, m.content, m.size, m.document";
constexpr auto filtered =
    " k.ipncid = :device and (:pid = 0 or k.pid = :pid) and (:owner = 0 or p.accountid = :owner)";

/// One row of `mapColumns`, as it is fetched.
struct MapRow {
    Map map;
    long long local = 0;

    [[nodiscard]] Map value() const {
        Map result = map;
        result.local = local != 0;
        return result;
    }
};

} // namespace

std::vector<Map> mapsOf(soci::session& sql, AccountId account) {
    MapRow row;
    soci::statement statement =
        (sql.prepare << std::string("select ") + mapColumns +
                            " from maps m where m.accountid = :account order by m.id",
         soci::into(row.map.id), soci::into(row.map.owner), soci::into(row.local), soci::into(row.map.content),
         soci::into(row.map.size), soci::into(row.map.document), soci::use(account, "account"));
    statement.execute();
    std::vector<Map> maps;
    while (statement.fetch())
        maps.push_back(row.value());
    return maps;
}

std::vector<SharedMap> mapsSharedWith(soci::session& sql, AccountId account) {
    MapRow row;
    std::string phone;
    soci::statement statement =
        (sql.prepare
             << std::string("select ") + mapColumns +
                    ", a.phone from maps m join mapshares s on s.mapid = m.id"
                    " join accounts a on a.id = m.accountid where s.friendid = :account order by a.phone, m.id",
         soci::into(row.map.id), soci::into(row.map.owner), soci::into(row.local), soci::into(row.map.content),
         soci::into(row.map.size), soci::into(row.map.document), soci::into(phone), soci::use(account, "account"));
    statement.execute();
    std::vector<SharedMap> maps;
    while (statement.fetch())
        maps.push_back({row.value(), phone});
    return maps;
}

std::optional<Map> mapById(soci::session& sql, long long id) {
    MapRow row;
    sql << std::string("select ") + mapColumns + " from maps m where m.id = :id", soci::into(row.map.id),
        soci::into(row.map.owner), soci::into(row.local), soci::into(row.map.content), soci::into(row.map.size),
        soci::into(row.map.document), soci::use(id, "id");
    return sql.got_data() ? std::make_optional(row.value()) : std::nullopt;
}

long long insertMap(soci::session& sql, const Map& map) {
    const long long id = nextNumber(sql, lastMapFact);
    const long long local = map.local ? 1 : 0;
    sql << "insert into maps (id, accountid, local, content, size, document)"
           " values (:id, :account, :local, :content, :size, :document)",
        soci::use(id, "id"), soci::use(map.owner, "account"), soci::use(local, "local"),
        soci::use(map.content, "content"), soci::use(map.size, "size"), soci::use(map.document, "document");
    return id;
}

bool seesContent(soci::session& sql, AccountId account, const std::string& content) {
    long long count = 0;
    sql << "select count(*) from maps where content = :content and (accountid = :account"
           " or id in (select mapid from mapshares where friendid = :account))",
        soci::into(count), soci::use(content, "content"), soci::use(account, "account");
    return count > 0;
}

void setMapDocument(soci::session& sql, long long id, const std::string& document) {
    sql << "update maps set document = :document where id = :id", soci::use(document, "document"),
        soci::use(id, "id");
}

void removeMap(soci::session& sql, long long id) {
    for (const char* statement : {"delete from mapshares where mapid = :id", "delete from maps where id = :id"})
        sql << statement, soci::use(id, "id");
}

std::vector<Friend> friendsOfMap(soci::session& sql, long long map) {
    Friend row;
    soci::statement statement =
        (sql.prepare << "select a.id, a.phone, a.nickname from mapshares s join accounts a on a.id = s.friendid"
                        " where s.mapid = :map order by a.phone",
         soci::into(row.id), soci::into(row.phone), soci::into(row.nickname), soci::use(map, "map"));
    statement.execute();
    std::vector<Friend> friends;
    while (statement.fetch())
        friends.push_back(row);
    return friends;
}

void setFriendsOfMap(soci::session& sql, long long map, const std::set<AccountId>& friends) {
    sql << "delete from mapshares where mapid = :map", soci::use(map, "map");
    for (const AccountId account : friends)
        sql << "insert into mapshares (mapid, friendid) values (:map, :friend)", soci::use(map, "map"),
            soci::use(account, "friend");
}

bool removeMapSharesOf(soci::session& sql, AccountId owner, AccountId friendId) {
    long long count = 0;
    sql << "select count(*) from mapshares where friendid = :friend and mapid in"
           " (select id from maps where accountid = :owner)",
        soci::into(count), soci::use(friendId, "friend"), soci::use(owner, "owner");
    sql << "delete from mapshares where friendid = :friend and mapid in"
           " (select id from maps where accountid = :owner)",
        soci::use(friendId, "friend"), soci::use(owner, "owner");
    return count > 0;
}

std::vector<MapMarker> markersOf(soci::session& sql, long long map) {
    MapMarker row;
    soci::statement statement =
        (sql.prepare << "select id, mapid, ipncid, pid, document from mapmarkers where mapid = :map order by id",
         soci::into(row.id), soci::into(row.map), soci::into(row.ipncid), soci::into(row.pid),
         soci::into(row.document), soci::use(map, "map"));
    statement.execute();
    std::vector<MapMarker> markers;
    while (statement.fetch())
        markers.push_back(row);
    return markers;
}

std::optional<MapMarker> markerById(soci::session& sql, long long id) {
    MapMarker marker;
    sql << "select id, mapid, ipncid, pid, document from mapmarkers where id = :id", soci::into(marker.id),
        soci::into(marker.map), soci::into(marker.ipncid), soci::into(marker.pid), soci::into(marker.document),
        soci::use(id, "id");
    return sql.got_data() ? std::make_optional(marker) : std::nullopt;
}

long long insertMarker(soci::session& sql, const MapMarker& marker) {
    const long long id = nextNumber(sql, lastMarkerFact);
    sql << "insert into mapmarkers (id, mapid, ipncid, pid, document) values (:id, :map, :device, :pid, :document)",
        soci::use(id, "id"), soci::use(marker.map, "map"), soci::use(marker.ipncid, "device"),
        soci::use(marker.pid, "pid"), soci::use(marker.document, "document");
    return id;
}

void updateMarker(soci::session& sql, const MapMarker& marker) {
    sql << "update mapmarkers set ipncid = :device, pid = :pid, document = :document where id = :id",
        soci::use(marker.ipncid, "device"), soci::use(marker.pid, "pid"), soci::use(marker.document, "document"),
        soci::use(marker.id, "id");
}

void removeMarker(soci::session& sql, long long id) {
    sql << "delete from mapmarkers where id = :id", soci::use(id, "id");
}

MarkerCount countMarkers(soci::session& sql, long long map) {
    MarkerCount count;
    sql << "select count(*), coalesce(sum(length(document)), 0) from mapmarkers where mapid = :map",
        soci::into(count.markers), soci::into(count.bytes), soci::use(map, "map");
    return count;
}

std::set<AccountId> viewersOfMap(soci::session& sql, long long map) {
    AccountId row = 0;
    soci::statement statement = (sql.prepare << "select accountid from maps where id = :map"
                                                " union select friendid from mapshares where mapid = :map",
                                 soci::into(row), soci::use(map, "map"));
    statement.execute();
    std::set<AccountId> viewers;
    while (statement.fetch())
        viewers.insert(row);
    return viewers;
}

std::set<AccountId> viewersOfMarkers(soci::session& sql, const MarkerFilter& filter) {
    AccountId row = 0;
    soci::statement statement =
        (sql.prepare << std::string("select p.accountid from mapmarkers k join maps p on p.id = k.mapid where") +
                            filtered +
                            " union select s.friendid from mapmarkers k join maps p on p.id = k.mapid"
                            " join mapshares s on s.mapid = k.mapid where" +
                            filtered,
         soci::into(row), soci::use(filter.ipncid, "device"), soci::use(filter.pid, "pid"),
         soci::use(filter.owner, "owner"));
    statement.execute();
    std::set<AccountId> viewers;
    while (statement.fetch())
        viewers.insert(row);
    return viewers;
}

std::set<AccountId> removeMarkers(soci::session& sql, const MarkerFilter& filter) {
    std::set<AccountId> viewers = viewersOfMarkers(sql, filter);
    sql << std::string("delete from mapmarkers where id in"
                       " (select k.id from mapmarkers k join maps p on p.id = k.mapid where") +
               filtered + ")",
        soci::use(filter.ipncid, "device"), soci::use(filter.pid, "pid"), soci::use(filter.owner, "owner");
    return viewers;
}

} // namespace ipncsdk::store
