#pragma once

#include "linkage/Plan.h"

#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::linkage {

/// Reads a plan as clients send it. When it is not of the form nothing comes back, and `fault` says why in a sentence
/// for the user. Keys that mean nothing here are passed over.
std::optional<Plan> parsePlan(const Json& document, std::string& fault);

/// The inputs and outputs that a plan names, of whatever list.
std::vector<int> portsNamedBy(const Plan& plan);

/// The sentence for the user when the plan names ports that the device does not have; empty when it does not.
std::string missingPortFault(const Plan& plan, const DevicePorts& ports);

} // namespace ipncsdk::linkage
