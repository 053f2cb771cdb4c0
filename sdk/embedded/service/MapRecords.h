#pragma once

#include "base/JsonText.h"
#include "store/Maps.h"

#include <string>

namespace ipncsdk::service {

// These work in the caller's transaction and throw what the connection throws.

/// {"maps": [...], "sharemaps": [...]}: the maps that the account sees, with their markers.
Json mapsDocument(soci::session& sql, store::AccountId account);
/// [{"filename", "size", "hash"}...]: icons that the account has uploaded.
Json iconsDocument(soci::session& sql, store::AccountId account);
/// True when a marker of a map that `owner` shares with `viewer` has this icon of the owner's.
bool isIconShown(soci::session& sql, store::AccountId owner, store::AccountId viewer, const std::string& icon);

} // namespace ipncsdk::service
