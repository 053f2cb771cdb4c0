#pragma once

#include "store/ContentFiles.h"

#include <functional>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::world {

/// The account that the first start makes, which owns the world. The password stands here and in
/// docs/service-protocol.md because nobody could sign in for the first time without it; the store keeps its hash.
constexpr auto firstPhone = "13800138000";
constexpr auto firstPassword = "corvanta-8000";

/// Fills an empty store: an account with groups and cameras, friends, shares in both directions, maps, cameras that
/// wait to be added. In the caller's transaction; throws what the connection throws. `hashPassword` makes the text
/// that the store keeps, `contents` takes the maps' pictures.
void fillFirstWorld(soci::session& sql, const std::function<std::string(const std::string&)>& hashPassword,
                    const store::ContentFiles& contents);

/// Adds the cameras that no account owns at first, but for those whose ids are taken. In the caller's transaction;
/// throws what the connection throws.
void fillWaiting(soci::session& sql);

} // namespace ipncsdk::world
