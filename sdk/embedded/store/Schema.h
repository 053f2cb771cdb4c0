#pragma once

#include <optional>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// The version that `createSchema` makes and the program understands.
constexpr int schemaVersion = 1;

/// Makes the tables, empty, in the caller's transaction.
void createSchema(soci::session& sql);

/// Says what is wrong with the tables of an existing store, or nothing when they are those of `schemaVersion`.
std::optional<std::string> schemaFault(soci::session& sql);

/// Facts about the store itself, one text a name; empty when never set.
std::string fact(soci::session& sql, const std::string& name);
void setFact(soci::session& sql, const std::string& name, const std::string& value);

} // namespace ipncsdk::store
