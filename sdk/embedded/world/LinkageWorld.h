#pragma once

#include "store/Accounts.h"

namespace ipncsdk::world {

/// Adds linkage plans on devices of the world's owner, and a rule by which the owner is notified of their alarms. In
/// the caller's transaction; throws what the connection throws.
void fillLinkages(soci::session& sql, store::AccountId owner);

} // namespace ipncsdk::world
