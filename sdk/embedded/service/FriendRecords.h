#pragma once

#include "base/JsonText.h"
#include "store/Accounts.h"

#include <vector>

namespace ipncsdk::service {

/// A friend as clients read it.
Json friendRecord(const store::Friend& person);
Json friendList(const std::vector<store::Friend>& friends);

} // namespace ipncsdk::service
