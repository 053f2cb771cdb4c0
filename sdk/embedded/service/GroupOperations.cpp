#include "service/Operations.h"
#include "service/Params.h"
#include "store/Groups.h"

namespace ipncsdk::service {

namespace {

constexpr std::size_t mostGroups = 500;

} // namespace

Reply addGroup(const OperationContext& context, const Json& params) {
    const auto name = nameAt(params, "name");
    if (!name)
        return ServiceCode::BadRequest;
    store::GroupId id = 0;
    const ServiceCode code = context.change("add a group", [&](soci::session& sql) {
        if (store::groupsOf(sql, context.caller.id).size() >= mostGroups)
            return ServiceCode::BadRequest;
        id = store::insertGroup(sql, context.caller.id, *name);
        context.effects.concerned.insert(context.caller.id);
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(Json{{"groupid", std::to_string(id)}}) : Reply(code);
}

Reply editGroup(const OperationContext& context, const Json& params) {
    const auto id = groupIdAt(params, "groupid");
    const auto name = nameAt(params, "name");
    if (!id || !name)
        return ServiceCode::BadRequest;
    return context.change("rename a group", [&](soci::session& sql) {
        if (!store::renameGroup(sql, context.caller.id, *id, *name))
            return ServiceCode::UnknownGroup;
        context.effects.concerned.insert(context.caller.id);
        return ServiceCode::Done;
    });
}

Reply deleteGroup(const OperationContext& context, const Json& params) {
    const auto id = groupIdAt(params, "groupid");
    if (!id)
        return ServiceCode::BadRequest;
    return context.change("delete a group", [&](soci::session& sql) {
        if (!store::hasGroup(sql, context.caller.id, *id))
            return ServiceCode::UnknownGroup;
        if (store::groupSize(sql, context.caller.id, *id) > 0)
            return ServiceCode::GroupNotEmpty;
        store::removeGroup(sql, context.caller.id, *id);
        context.effects.concerned.insert(context.caller.id);
        return ServiceCode::Done;
    });
}

Reply moveGroupIndex(const OperationContext& context, const Json& params) {
    const auto id = groupIdAt(params, "groupid");
    const auto index = indexAt(params, "index");
    if (!id || !index)
        return ServiceCode::BadRequest;
    return context.change("move a group", [&](soci::session& sql) {
        if (!store::moveGroup(sql, context.caller.id, *id, *index))
            return ServiceCode::UnknownGroup;
        context.effects.concerned.insert(context.caller.id);
        return ServiceCode::Done;
    });
}

} // namespace ipncsdk::service
