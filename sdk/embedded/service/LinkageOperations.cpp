#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "linkage/PlanParser.h"
#include "service/LinkageRecords.h"
#include "service/Operations.h"

namespace ipncsdk::service {

namespace {

constexpr std::size_t mostPlans = 200;         ///< of a device
constexpr std::size_t longestDocument = 65536; ///< bytes

Reply refusal(ServiceCode code, const std::string& text) {
    Reply reply(code);
    reply.content["text"] = text;
    return reply;
}

/// The id of a plan that is to be replaced; 0: it is a new one.
long long givenId(const Json& plan) {
    return integerAt(plan, "linkplanid").value_or(0);
}

/// Everyone who sees the device reads its plans again.
void concernAll(soci::session& sql, const OperationContext& context, const store::Device& device) {
    context.effects.concerned.insert(device.owner);
    for (const store::AccountId account : store::friendsWith(sql, device.ipncid))
        context.effects.concerned.insert(account);
}

} // namespace

Reply submitLinkPlan(const OperationContext& context, const Json& params) {
    const Json* given = memberAt(params, "linkplan");
    const auto ipncid = given != nullptr ? textAt(*given, "ipncid") : std::nullopt;
    if (!ipncid)
        return ServiceCode::BadRequest;
    Json document = *given;
    std::string fault;
    const auto plan = linkage::parsePlan(document, fault);
    if (!plan)
        return refusal(ServiceCode::BadRequest, fault);
    if (toText(document).size() > longestDocument)
        return refusal(ServiceCode::BadRequest, "联动策略过长!");
    long long id = givenId(document);
    const ServiceCode code = context.change("keep a linkage plan", [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*device, device::Right::Admin))
            return ServiceCode::NoRight;
        fault = linkage::missingPortFault(*plan, portsOf(device->device.interfaces, device->device.extend));
        if (!fault.empty())
            return ServiceCode::UnknownInput;
        if (id != 0) {
            const auto known = store::planById(sql, id);
            if (!known || known->ipncid != *ipncid) {
                fault = "联动策略不存在!";
                return ServiceCode::UnknownInput;
            }
            store::setPlanDocument(sql, id, toText(document));
        } else {
            if (store::plansOf(sql, *ipncid).size() >= mostPlans)
                return ServiceCode::Limit;
            id = store::newPlanId(sql);
            document["linkplanid"] = id;
            store::insertPlan(sql, {id, *ipncid, toText(document)});
        }
        concernAll(sql, context, device->device);
        return ServiceCode::Done;
    });
    if (code == ServiceCode::Done)
        return Reply(Json{{"linkplanid", id}});
    return fault.empty() ? Reply(code) : refusal(code, fault);
}

Reply deleteLinkPlan(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    const long long id = givenId(params);
    if (!ipncid || id <= 0)
        return ServiceCode::BadRequest;
    bool missing = false;
    const ServiceCode code = context.change("delete a linkage plan", [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*device, device::Right::Admin))
            return ServiceCode::NoRight;
        const auto plan = store::planById(sql, id);
        missing = !plan || plan->ipncid != *ipncid;
        if (missing)
            return ServiceCode::UnknownInput;
        store::removePlan(sql, id);
        concernAll(sql, context, device->device);
        return ServiceCode::Done;
    });
    return missing ? refusal(code, "联动策略不存在!") : Reply(code);
}

Reply getLinkPlan(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    if (!ipncid)
        return ServiceCode::BadRequest;
    Json plans;
    const ServiceCode code = context.database.read("read linkage plans", [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*device, device::Right::Param))
            return ServiceCode::NoRight;
        plans = linkagesOf(store::plansOf(sql, *ipncid));
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(Json{{"linkplans", std::move(plans)}}) : Reply(code);
}

} // namespace ipncsdk::service
