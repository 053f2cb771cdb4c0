#pragma once

#include <string>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// The version that `createSchema` makes and the program understands.
constexpr int schemaVersion = 4;

/// Makes the tables, empty, in the caller's transaction.
void createSchema(soci::session& sql);

/// Makes tables of an earlier version, with what is in them, tables of `schemaVersion`, in the caller's transaction.
void migrateSchema(soci::session& sql);

enum class SchemaState {
    Current, ///< the tables of `schemaVersion`
    Older,   ///< those of an earlier version, which `migrateSchema` takes
    Faulty   ///< tables or columns are missing, or a later program made them
};

/// Looks at the tables of an existing store; `fault` says what is wrong with `Faulty` ones.
SchemaState inspectSchema(soci::session& sql, std::string& fault);

/// Facts about the store itself, one text a name; empty when never set.
std::string fact(soci::session& sql, const std::string& name);
void setFact(soci::session& sql, const std::string& name, const std::string& value);

/// The next number of a count that the store keeps under this name, from 1: never given twice, unlike the greatest
/// number of a table, which falls when its last row is deleted.
long long nextNumber(soci::session& sql, const std::string& name);

} // namespace ipncsdk::store
