#pragma once

#include <set>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::service {

/// The inputs and outputs that linkage plans of the device name. In the caller's transaction; throws what the
/// connection throws.
std::set<int> portsInPlans(soci::session& sql, const std::string& ipncid);

} // namespace ipncsdk::service
