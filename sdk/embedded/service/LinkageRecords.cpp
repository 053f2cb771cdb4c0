#include "service/LinkageRecords.h"

#include "linkage/PlanParser.h"

namespace ipncsdk::service {

linkage::DevicePorts portsOf(const std::string& interfaces, const std::string& extend) {
    return linkage::portsOf(Json::parse(interfaces, nullptr, false), Json::parse(extend, nullptr, false));
}

std::set<int> portsUsedByPlans(soci::session& sql, const std::string& ipncid) {
    std::set<int> used;
    for (const store::LinkPlan& row : store::plansOf(sql, ipncid)) {
        std::string fault;
        const auto plan = linkage::parsePlan(Json::parse(row.document, nullptr, false), fault);
        if (!plan)
            continue;
        for (const int pid : linkage::portsNamedBy(*plan))
            used.insert(pid);
    }
    return used;
}

Json linkagesOf(const std::vector<store::LinkPlan>& plans) {
    Json list = Json::array();
    for (const store::LinkPlan& row : plans) {
        Json plan = Json::parse(row.document, nullptr, false);
        if (plan.is_object())
            list.push_back(std::move(plan));
    }
    return list;
}

} // namespace ipncsdk::service
