#pragma once

#include "store/Devices.h"

#include <optional>
#include <string>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::store {

// Devices on their way into an account and out of it. All of these work in the caller's transaction and throw what
// the connection throws.

/// A device that no account owns; nothing when none waits under this id.
std::optional<Device> waitingDevice(soci::session& sql, const std::string& ipncid);
/// All that wait, by id.
std::vector<Device> waitingDevices(soci::session& sql);
/// Adds a device that waits; owner, origin, state and group of it mean nothing.
void insertWaiting(soci::session& sql, const Device& device);
void removeWaiting(soci::session& sql, const std::string& ipncid);

/// What one must know to add the device; empty when it has no word.
std::string deviceWord(soci::session& sql, const std::string& ipncid);
void setDeviceWord(soci::session& sql, const std::string& ipncid, const std::string& word);

/// True when a device has this id, owned or not; small and capital letters of ASCII count as equal.
bool isIdTaken(soci::session& sql, const std::string& ipncid);

/// The sealed addresses of a network camera that an account added; empty when there are none.
std::string sealedCamera(soci::session& sql, const std::string& ipncid);
/// The ids of all network cameras that accounts added.
std::vector<std::string> addedCameraIds(soci::session& sql);
void insertSealedCamera(soci::session& sql, const std::string& ipncid, const std::string& sealed);

} // namespace ipncsdk::store
