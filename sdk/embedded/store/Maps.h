#pragma once

#include "store/Accounts.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// An electronic map as the store keeps it.
struct Map {
    long long id = 0;
    AccountId owner = 0;
    bool local = false;   ///< a picture of the account's; else the map of the world
    std::string content;  ///< the name of the picture in `ContentFiles`; empty when not local
    long long size = 0;   ///< of the picture, bytes
    std::string document; ///< JSON text: name, range, and what else clients sent
};

/// A map of a friend's.
struct SharedMap {
    Map map;
    std::string ownerPhone;
};

/// A device, or one of its boards, on a map.
struct MapMarker {
    long long id = 0;
    long long map = 0;
    std::string ipncid;
    int pid = 0;          ///< the board's; 0: the device itself
    std::string document; ///< JSON text: where it is, how it looks, and what else clients sent
};

// All of these work in the caller's transaction and throw what the connection throws.

/// In the order in which they were made.
std::vector<Map> mapsOf(soci::session& sql, AccountId account);
/// What friends share with the account, by their phone numbers.
std::vector<SharedMap> mapsSharedWith(soci::session& sql, AccountId account);
std::optional<Map> mapById(soci::session& sql, long long id);
/// Enters a map under an id of its own, which no map has had, and returns the id.
long long insertMap(soci::session& sql, const Map& map);
/// True when the content is the picture of a map that the account sees.
bool seesContent(soci::session& sql, AccountId account, const std::string& content);
void setMapDocument(soci::session& sql, long long id, const std::string& document);
/// Removes a map that has no markers, with its shares.
void removeMap(soci::session& sql, long long id);

/// Whom the map is shared with, by phone number.
std::vector<Friend> friendsOfMap(soci::session& sql, long long map);
void setFriendsOfMap(soci::session& sql, long long map, const std::set<AccountId>& friends);
/// Takes all maps of the owner from the friend; false when there was none.
bool removeMapSharesOf(soci::session& sql, AccountId owner, AccountId friendId);

/// In the order in which they were placed.
std::vector<MapMarker> markersOf(soci::session& sql, long long map);
std::optional<MapMarker> markerById(soci::session& sql, long long id);
/// Enters a marker under an id of its own, which no marker has had, and returns the id.
long long insertMarker(soci::session& sql, const MapMarker& marker);
/// Replaces the marker with this id.
void updateMarker(soci::session& sql, const MapMarker& marker);
void removeMarker(soci::session& sql, long long id);
/// How many markers a map has, and the bytes of their documents.
struct MarkerCount {
    long long markers = 0;
    long long bytes = 0;
};
MarkerCount countMarkers(soci::session& sql, long long map);

/// Who sees the map: its owner, and whom it is shared with.
std::set<AccountId> viewersOfMap(soci::session& sql, long long map);
/// Markers that have something in common.
struct MarkerFilter {
    std::string ipncid;
    int pid = 0;         ///< of one board; 0: all of the device
    AccountId owner = 0; ///< of the map; 0: whoever it is
};
/// Who sees such a marker.
std::set<AccountId> viewersOfMarkers(soci::session& sql, const MarkerFilter& filter);
/// Removes such markers and returns who saw one.
std::set<AccountId> removeMarkers(soci::session& sql, const MarkerFilter& filter);

} // namespace ipncsdk::store
