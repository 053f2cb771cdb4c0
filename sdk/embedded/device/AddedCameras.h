#pragma once

#include "device/ServiceConfig.h"
#include "store/StoreKey.h"

#include <optional>
#include <set>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::device {

/// Where a device comes from that an account added by its address; see `store::Device::origin`.
constexpr auto addedOrigin = "net";

// Network cameras that accounts add. Addresses may hold passwords, so the store gets all of it sealed. In the
// caller's transaction; both throw what the connection throws.

/// Keeps addresses, user name and password of the camera, whose device is in the store already. False without a key.
bool keepAddedCamera(soci::session& sql, const NetworkCamera& camera, const store::StoreKey& key);
/// What was kept; nothing when the key is not the one that it was sealed with.
std::optional<NetworkCamera> addedCamera(soci::session& sql, const std::string& ipncid, const store::StoreKey& key);

/// The hosts of all of them.
std::set<std::string> addedHosts(soci::session& sql, const store::StoreKey& key);

} // namespace ipncsdk::device
