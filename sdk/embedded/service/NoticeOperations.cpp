#include "base/LocalTime.h"
#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "service/Operations.h"
#include "service/ReportRule.h"
#include "store/Accounts.h"
#include "store/Notices.h"

#include <algorithm>

namespace ipncsdk::service {

namespace {

constexpr std::size_t mostRules = 200; ///< of an account
constexpr int smsPageSize = 20;

Json names(std::initializer_list<std::pair<const char*, const char*>> rows) {
    Json list = Json::array();
    for (const auto& [code, name] : rows)
        list.push_back({{"code", code}, {"name", name}});
    return list;
}

Reply refusal(ServiceCode code, const std::string& text) {
    Reply reply(code);
    reply.content["text"] = text;
    return reply;
}

/// Why the account may not have a rule on these devices; `fault` names the first one.
ServiceCode refusedDevice(soci::session& sql, const OperationContext& context, const ReportRule& rule,
                          std::string& fault) {
    for (const std::string& ipncid : rule.ipncids) {
        const auto device = device::visibleDevice(sql, context.caller.id, ipncid, context.cameras);
        if (device && device::allows(*device, device::Right::Param))
            continue;
        fault = device ? "没有设备“" + device->nickname + "”的参数权限!" : "关注的设备已不存在!";
        return device ? ServiceCode::NoRight : ServiceCode::UnknownDevice;
    }
    return ServiceCode::Done;
}

} // namespace

Reply getSysNames(const OperationContext& /*context*/, const Json& /*params*/) {
    return Reply(Json{
        {"names", {{"linkplanlogic", names({{"and", "与"}, {"or", "或"}})}}},
        {"ReportType",
         {{"names", names({{thresholdReport, "阈值报警"}, {offlineReport, "设备离线"}, {otherReport, "其他报警"}})}}},
        {"ReportMode", {{"names", names({{smsMode, "短信"}, {appMode, "APP通知"}})}}}});
}

Reply getReportRules(const OperationContext& context, const Json& /*params*/) {
    Json rules = Json::array();
    Json friends = Json::array();
    const ServiceCode code = context.database.read("read notification rules", [&](soci::session& sql) {
        for (const store::ReportRule& row : store::rulesOf(sql, context.caller.id)) {
            Json rule = Json::parse(row.document, nullptr, false);
            if (rule.is_object())
                rules.push_back(std::move(rule));
        }
        for (const store::Friend& person : store::friendsOf(sql, context.caller.id))
            friends.push_back(
                {{"name", person.remark.empty() ? person.nickname : person.remark}, {"friendphone", person.phone}});
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return code;
    return Reply(Json{{"reportrules", std::move(rules)}, {"friendlist", std::move(friends)}});
}

Reply submitReportRules(const OperationContext& context, const Json& params) {
    const Json* given = memberAt(params, "reportrules");
    if (given == nullptr || !given->is_object())
        return ServiceCode::BadRequest;
    Json document = *given;
    std::string fault;
    const auto rule = parseReportRule(document, fault);
    if (!rule)
        return refusal(ServiceCode::BadRequest, fault);
    long long id = integerAt(document, "id").value_or(0);
    const ServiceCode code = context.change("keep a notification rule", [&](soci::session& sql) {
        const ServiceCode refused = refusedDevice(sql, context, *rule, fault);
        if (refused != ServiceCode::Done)
            return refused;
        if (id != 0 && !store::ruleOf(sql, context.caller.id, id)) {
            fault = "通知策略不存在!";
            return ServiceCode::UnknownInput;
        }
        if (id == 0 && store::rulesOf(sql, context.caller.id).size() >= mostRules)
            return ServiceCode::Limit;
        if (id == 0)
            id = store::newRuleId(sql);
        document["id"] = id;
        store::putRule(sql, {id, context.caller.id, toText(document)});
        return ServiceCode::Done;
    });
    if (code == ServiceCode::Done)
        return Reply(Json{{"id", id}});
    return fault.empty() ? Reply(code) : refusal(code, fault);
}

Reply deleteReportRules(const OperationContext& context, const Json& params) {
    const auto id = integerAt(params, "reportrulesid");
    if (!id)
        return ServiceCode::BadRequest;
    const ServiceCode code = context.change("delete a notification rule", [&](soci::session& sql) {
        if (!store::ruleOf(sql, context.caller.id, *id))
            return ServiceCode::UnknownInput;
        store::removeRule(sql, *id);
        return ServiceCode::Done;
    });
    return code == ServiceCode::UnknownInput ? refusal(code, "通知策略不存在!") : Reply(code);
}

Reply getSmsRecords(const OperationContext& context, const Json& params) {
    const auto command = textAt(params, "cmd");
    const bool hasId = memberAt(params, "recid") != nullptr;
    const auto id = hasId ? integerAt(params, "recid") : 0;
    if (!command || (*command != "next" && *command != "front") || !id || *id < 0)
        return ServiceCode::BadRequest;
    Json records = Json::array();
    const ServiceCode code = context.database.read("read text messages", [&](soci::session& sql) {
        for (const store::SmsRecord& row :
             store::smsPage(sql, context.caller.id, *id, *command == "next", smsPageSize))
            records.push_back({{"id", row.id},
                               {"phone", row.phone},
                               {"name", row.name},
                               {"time", localTime(row.madeAt, "%Y-%m-%d %H:%M:%S")},
                               {"text", row.text},
                               {"kind", row.kind},
                               {"state", row.state}});
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(Json{{"records", std::move(records)}}) : Reply(code);
}

} // namespace ipncsdk::service
