#include "store/Boards.h"

#include "store/Schema.h"

#include <soci/soci.h>

#include <algorithm>
#include <cstdlib>

namespace ipncsdk::store {

namespace {

constexpr auto lastPidFact = "lastpid";

} // namespace

std::vector<DeviceBoards> allBoards(soci::session& sql) {
    DeviceBoards row;
    long long online = 0;
    soci::statement statement =
        (sql.prepare << "select ipncid, ownerid, origin, online, interfaces, extend from devices"
                        " where interfaces like '%\"pid\"%' or extend like '%\"pid\"%' order by ipncid",
         soci::into(row.ipncid), soci::into(row.owner), soci::into(row.origin), soci::into(online),
         soci::into(row.interfaces), soci::into(row.extend));
    statement.execute();
    std::vector<DeviceBoards> devices;
    while (statement.fetch()) {
        row.online = online != 0;
        devices.push_back(row);
    }
    return devices;
}

void setDeviceBoards(soci::session& sql, const std::string& ipncid, const std::string& interfaces,
                     const std::string& extend) {
    sql << "update devices set interfaces = :interfaces, extend = :extend where ipncid = :device",
        soci::use(interfaces, "interfaces"), soci::use(extend, "extend"), soci::use(ipncid, "device");
}

int takePid(soci::session& sql, int atLeast) {
    const long last = std::strtol(fact(sql, lastPidFact).c_str(), nullptr, 10);
    const int pid = std::max(static_cast<int>(last), atLeast) + 1;
    setFact(sql, lastPidFact, std::to_string(pid));
    return pid;
}

} // namespace ipncsdk::store
