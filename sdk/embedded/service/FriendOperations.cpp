#include "service/FriendRecords.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/Accounts.h"
#include "store/Devices.h"
#include "store/Maps.h"

namespace ipncsdk::service {

namespace {

constexpr std::size_t mostFriends = 1000;

} // namespace

Reply getFriends(const OperationContext& context, const Json& /*params*/) {
    Json list;
    const ServiceCode code = context.database.read("read friends", [&](soci::session& sql) {
        list = friendList(store::friendsOf(sql, context.caller.id));
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(Json{{"friendlist", std::move(list)}}) : Reply(code);
}

Reply addFriend(const OperationContext& context, const Json& params) {
    const auto phone = textAt(params, "friendphone");
    const auto remark = nameAt(params, "remarkname");
    if (!phone || !remark)
        return ServiceCode::BadRequest;
    Json record;
    const ServiceCode code = context.change("add a friend", [&](soci::session& sql) {
        const auto self = store::accountById(sql, context.caller.id);
        const auto other = store::accountByPhone(sql, *phone);
        if (!self || !other)
            return ServiceCode::UnknownNumber;
        if (other->id == self->id)
            return ServiceCode::FriendSelf;
        if (store::friendOf(sql, self->id, *phone))
            return ServiceCode::FriendExists;
        if (store::friendsOf(sql, self->id).size() >= mostFriends)
            return ServiceCode::BadRequest;
        store::insertFriendship(sql, self->id, *remark, other->id, self->nickname);
        context.effects.concerned = {self->id, other->id};
        record = friendRecord({other->id, other->phone, other->nickname, *remark});
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(std::move(record)) : Reply(code);
}

Reply setFriendParam(const OperationContext& context, const Json& params) {
    const auto phone = textAt(params, "friendphone");
    const auto remark = nameAt(params, "remarkname");
    if (!phone || !remark)
        return ServiceCode::BadRequest;
    return context.change("set a friend's remark", [&](soci::session& sql) {
        const auto other = store::friendOf(sql, context.caller.id, *phone);
        if (!other)
            return ServiceCode::NotFriend;
        store::setRemark(sql, context.caller.id, other->id, *remark);
        context.effects.concerned.insert(context.caller.id);
        return ServiceCode::Done;
    });
}

Reply deleteFriend(const OperationContext& context, const Json& params) {
    const auto phone = textAt(params, "friendphone");
    if (!phone)
        return ServiceCode::BadRequest;
    return context.change("end a friendship", [&](soci::session& sql) {
        const auto other = store::friendOf(sql, context.caller.id, *phone);
        if (!other)
            return ServiceCode::NotFriend;
        store::removeSharesOf(sql, context.caller.id, other->id);
        store::removeSharesOf(sql, other->id, context.caller.id);
        const bool gave = store::removeMapSharesOf(sql, context.caller.id, other->id);
        const bool got = store::removeMapSharesOf(sql, other->id, context.caller.id);
        if (gave || got)
            context.effects.concernedByFiles = {context.caller.id, other->id};
        store::removeFriendship(sql, context.caller.id, other->id);
        context.effects.concerned = {context.caller.id, other->id};
        return ServiceCode::Done;
    });
}

} // namespace ipncsdk::service
