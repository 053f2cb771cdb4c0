#pragma once

#include "store/Accounts.h"

#include <string>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// The boards of a device that an account owns; the JSON texts are those of `Device`.
struct DeviceBoards {
    std::string ipncid;
    AccountId owner = 0;
    std::string origin;
    bool online = true;
    std::string interfaces;
    std::string extend;

    friend bool operator==(const DeviceBoards&, const DeviceBoards&) = default;
};

// All of these work in the caller's transaction and throw what the connection throws.

/// Of every device that has any, in the order of their ids.
std::vector<DeviceBoards> allBoards(soci::session& sql);
void setDeviceBoards(soci::session& sql, const std::string& ipncid, const std::string& interfaces,
                     const std::string& extend);

/// A number that no board, input or output has or had. `atLeast` is one that is known to be in use.
int takePid(soci::session& sql, int atLeast);

} // namespace ipncsdk::store
