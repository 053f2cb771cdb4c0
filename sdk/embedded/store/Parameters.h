#pragma once

#include <map>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::store {

// Device parameters that differ from their defaults. In the caller's transaction; throw what the connection throws.

/// JSON text of each value, by parameter name.
std::map<std::string, std::string> parametersOf(soci::session& sql, const std::string& ipncid);
void setParameter(soci::session& sql, const std::string& ipncid, const std::string& name,
                  const std::string& jsonValue);
void clearParameters(soci::session& sql, const std::string& ipncid);

} // namespace ipncsdk::store
