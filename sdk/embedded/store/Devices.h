#pragma once

#include "store/Accounts.h"
#include "store/Groups.h"

#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::store {

/// A device as the store keeps it. The JSON texts are in the shapes of the device record.
struct Device {
    std::string ipncid;
    AccountId owner = 0;
    std::string origin; ///< "loop": a recorded scene; "config": a network camera of the configuration file; "net":
                        ///< a network camera that the owner added
    std::string name;
    std::string type;
    bool online = true;
    long long scene = 0;     ///< which recorded scene
    long long phase = 0;     ///< start of the loop, in frames
    std::string configGroup; ///< group that the configuration file names, when origin is "config"
    std::string info = "{}";
    std::string interfaces = "[]";
    std::string extend = "{}";
    std::string video = "{}";
};

/// A device as one account sees it.
struct PlacedDevice {
    Device device;
    GroupId group = 0;
    std::string nickname;
    std::string rights; ///< "authority" of a shared device as JSON text; empty for the owner, who may everything
    std::string ownerPhone;
};

struct Share {
    std::string ipncid;
    std::string friendPhone;
    std::string rights; ///< "authority" as JSON text
};

// All of these work in the caller's transaction and throw what the connection throws.

/// What the account owns or was given, in display order: by group, then by place in the group.
std::vector<PlacedDevice> devicesOf(soci::session& sql, AccountId account);
std::optional<PlacedDevice> deviceOf(soci::session& sql, AccountId account, const std::string& ipncid);
/// The device itself, whoever owns it.
std::optional<Device> deviceById(soci::session& sql, const std::string& ipncid);

/// Adds a device and places it for its owner at the end of `group`, under `nickname`.
void insertDevice(soci::session& sql, const Device& device, GroupId group, const std::string& nickname);
/// Writes the fields that the configuration file decides: name and configGroup.
void updateConfigured(soci::session& sql, const Device& device);
/// Gives a friend rights on a device and places it for the friend.
void insertShare(soci::session& sql, const std::string& ipncid, AccountId friendId, const std::string& rights,
                 GroupId groupOfFriend, const std::string& nickname);
void setShareRights(soci::session& sql, const std::string& ipncid, AccountId friendId, const std::string& rights);
/// The friend's rights on the device; nothing when it is not shared with this friend.
std::optional<std::string> shareRights(soci::session& sql, const std::string& ipncid, AccountId friendId);
/// Takes the device from the friend: rights and place.
void removeShare(soci::session& sql, const std::string& ipncid, AccountId friendId);
/// Takes all devices of the owner from the friend.
void removeSharesOf(soci::session& sql, AccountId owner, AccountId friendId);
/// Who has been given the device.
std::vector<AccountId> friendsWith(soci::session& sql, const std::string& ipncid);
/// What the account shares out, by device.
std::vector<Share> sharesBy(soci::session& sql, AccountId owner);

void setDeviceInfo(soci::session& sql, const std::string& ipncid, const std::string& info);
/// Removes a device with everything that hangs on it: places, shares, parameters, plans, markers, address.
void removeDevice(soci::session& sql, const std::string& ipncid);

void setDeviceNickname(soci::session& sql, AccountId account, const std::string& ipncid, const std::string& nickname);
/// Puts a device at `index` (from 0) of a group of the account; an index behind the last one means the end.
void moveDevice(soci::session& sql, AccountId account, const std::string& ipncid, GroupId group, std::size_t index);

} // namespace ipncsdk::store
