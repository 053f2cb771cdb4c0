#pragma once

#include "base/JsonText.h"

#include <cstddef>
#include <optional>
#include <string>

namespace ipncsdk::service {

constexpr std::size_t mostMaps = 200; ///< of an account
/// Longest name of a user's file, in characters.
constexpr std::size_t longestFileName = 128;

/// An object of a client's as it may be kept: without what the service itself says of it, numbers in the form that
/// documents have. Keys that nobody knows stay.
struct CheckedObject {
    Json document = Json::object();
    std::string fault; ///< what is wrong, Chinese, for the user; empty when it can be kept
};

/// True for a map that is a picture, false for the map of the world; nothing when "type" says neither.
std::optional<bool> isLocalMap(const Json& mapInfo);

/// A "mapinfo": what it does not name stays as in `before`, which is an empty object for a new map.
CheckedObject checkMap(const Json& mapInfo, const Json& before, bool local);

/// A "sensorinfo" on a picture (`local`) or on the map of the world, without device and board.
CheckedObject checkMarker(const Json& sensorInfo, bool local);

/// The pid of the board that a "sensorinfo" is for, 0 for the device itself; nothing when it is of a wrong type.
std::optional<int> markedPid(const Json& sensorInfo);

} // namespace ipncsdk::service
