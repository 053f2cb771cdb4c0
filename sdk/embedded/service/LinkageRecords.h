#pragma once

#include "linkage/DevicePorts.h"
#include "store/Devices.h"
#include "store/Linkages.h"

#include <set>
#include <string>
#include <vector>

namespace ipncsdk::service {

/// The inputs and outputs of a device, from what the store keeps of it.
linkage::DevicePorts portsOf(const std::string& interfaces, const std::string& extend);

/// The pids of a device's inputs and outputs that plans of it use; they cannot be deleted. In the caller's
/// transaction; throws what the connection throws.
std::set<int> portsUsedByPlans(soci::session& sql, const std::string& ipncid);

/// Plans as the device record shows them.
Json linkagesOf(const std::vector<store::LinkPlan>& plans);

} // namespace ipncsdk::service
