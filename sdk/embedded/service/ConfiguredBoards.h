#pragma once

#include "device/ServiceConfig.h"
#include "store/StoreKey.h"

#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::service {

/// Enters the boards of the configuration file. A board that the device has under the same interface and name is
/// replaced, and its ports keep their numbers by their names; one that is as the file wants it is left alone. Adds
/// what is wrong to `mistakes`. In the caller's transaction; throws what the connection throws.
void enterConfiguredBoards(soci::session& sql, const std::vector<device::ConfiguredBoard>& boards,
                           const store::StoreKey& key, std::vector<device::ConfigMistake>& mistakes);

} // namespace ipncsdk::service
