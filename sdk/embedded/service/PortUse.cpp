#include "service/PortUse.h"

#include "base/JsonText.h"
#include "store/Schema.h"

#include <soci/soci.h>

#include <cstdlib>
#include <limits>

namespace ipncsdk::service {

namespace {

/// The version of the store from which on there are plans.
constexpr long firstVersionWithPlans = 3;

/// Plans name ports in members "input" and "output", at any depth; lists of conditions and actions are called so,
/// too.
void collect(const Json& value, std::set<int>& pids) {
    for (const auto& [key, member] : value.items()) {
        if (member.is_structured()) {
            collect(member, pids);
            continue;
        }
        if (!value.is_object() || (key != "input" && key != "output"))
            continue;
        auto pid = integerOf(member);
        if (member.is_string())
            pid = std::strtol(member.get<std::string>().c_str(), nullptr, 10);
        if (pid && *pid > 0 && *pid <= std::numeric_limits<int>::max())
            pids.insert(static_cast<int>(*pid));
    }
}

} // namespace

std::set<int> portsInPlans(soci::session& sql, const std::string& ipncid) {
    std::set<int> pids;
    if (std::strtol(store::fact(sql, "schemaversion").c_str(), nullptr, 10) < firstVersionWithPlans)
        return pids;
    std::string document;
    soci::statement statement = (sql.prepare << "select document from linkplans where ipncid = :device",
                                 soci::into(document), soci::use(ipncid, "device"));
    statement.execute();
    while (statement.fetch()) {
        const Json plan = Json::parse(document, nullptr, false);
        if (plan.is_object())
            collect(plan, pids);
    }
    return pids;
}

} // namespace ipncsdk::service
