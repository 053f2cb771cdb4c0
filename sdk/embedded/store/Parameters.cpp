#include "store/Parameters.h"

#include <soci/soci.h>

namespace ipncsdk::store {

std::map<std::string, std::string> parametersOf(soci::session& sql, const std::string& ipncid) {
    std::string name;
    std::string value;
    soci::statement statement =
        (sql.prepare << "select name, value from parameters where ipncid = :device order by name", soci::into(name),
         soci::into(value), soci::use(ipncid, "device"));
    statement.execute();
    std::map<std::string, std::string> values;
    while (statement.fetch())
        values[name] = value;
    return values;
}

void setParameter(soci::session& sql, const std::string& ipncid, const std::string& name,
                  const std::string& jsonValue) {
    sql << "delete from parameters where ipncid = :device and name = :name", soci::use(ipncid, "device"),
        soci::use(name, "name");
    sql << "insert into parameters (ipncid, name, value) values (:device, :name, :value)",
        soci::use(ipncid, "device"), soci::use(name, "name"), soci::use(jsonValue, "value");
}

void clearParameters(soci::session& sql, const std::string& ipncid) {
    sql << "delete from parameters where ipncid = :device", soci::use(ipncid, "device");
}

} // namespace ipncsdk::store
