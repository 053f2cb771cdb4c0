#include "base/Text.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/Accounts.h"

namespace ipncsdk::service {

Reply checkPhone(const OperationContext& context, const Json& params) {
    const auto phone = textAt(params, "phonenumber");
    if (!phone || !isPhoneNumber(*phone))
        return ServiceCode::BadRequest;
    bool registered = false;
    const ServiceCode code = context.database.read("look for a number", [&](soci::session& sql) {
        registered = store::accountByPhone(sql, *phone).has_value();
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(Json{{"registered", registered}}) : Reply(code);
}

Reply getPersonInfo(const OperationContext& context, const Json& /*params*/) {
    std::optional<store::Account> account;
    bool hasHead = false;
    const ServiceCode code = context.database.read("read an account", [&](soci::session& sql) {
        account = store::accountById(sql, context.caller.id);
        hasHead = store::hasHeadPicture(sql, context.caller.id);
        return account ? ServiceCode::Done : ServiceCode::UnknownNumber;
    });
    if (code != ServiceCode::Done)
        return code;
    return Reply(Json{{"persioninfo",
                       {{"nickname", account->nickname},
                        {"phoneid", account->phone},
                        {"phonenumber", account->phone},
                        {"hashead", hasHead}}}});
}

Reply setPhoneParam(const OperationContext& context, const Json& params) {
    const auto nickname = nameAt(params, "nickname");
    if (!nickname)
        return ServiceCode::BadRequest;
    return context.change("set a nickname", [&](soci::session& sql) {
        store::setNickname(sql, context.caller.id, *nickname);
        for (const store::Friend& person : store::friendsOf(sql, context.caller.id))
            context.effects.concerned.insert(person.id);
        return ServiceCode::Done;
    });
}

} // namespace ipncsdk::service
