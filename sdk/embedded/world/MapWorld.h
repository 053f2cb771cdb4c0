#pragma once

#include "store/Accounts.h"
#include "store/ContentFiles.h"

namespace ipncsdk::world {

/// Adds maps with markers of devices that are there already: two plans and the map of the world of `owner`, and a
/// plan of `giver` that the owner sees. A plan whose picture can't be written is left out. In the caller's
/// transaction; throws what the connection throws.
void fillMaps(soci::session& sql, store::AccountId owner, store::AccountId giver,
              const store::ContentFiles& contents);

} // namespace ipncsdk::world
