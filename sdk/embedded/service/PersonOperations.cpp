#include "base/Text.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/Accounts.h"
#include "store/Notices.h"

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
    store::SmsBalance sms;
    const ServiceCode code = context.database.read("read an account", [&](soci::session& sql) {
        sms = store::smsBalance(sql, context.caller.id);
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
                        {"hashead", hasHead},
                        {"smsnum", sms.left},
                        {"smsphone", sms.phone},
                        {"smswarn", sms.warn}}}});
}

Reply setPhoneParam(const OperationContext& context, const Json& params) {
    constexpr std::int64_t mostWarn = 1'000'000;
    const auto nickname = nameAt(params, "nickname");
    const auto smsPhone = textAt(params, "smsphone");
    const auto smsWarn = integerAt(params, "smswarn");
    const auto given = [&params](const char* key) {
        return memberAt(params, key) != nullptr;
    };
    const bool good = given("nickname") == nickname.has_value() && given("smsphone") == smsPhone.has_value() &&
                      given("smswarn") == smsWarn.has_value() && (nickname || smsPhone || smsWarn) &&
                      (!smsPhone || smsPhone->empty() || isPhoneNumber(*smsPhone)) &&
                      (!smsWarn || (*smsWarn >= 0 && *smsWarn <= mostWarn));
    if (!good)
        return ServiceCode::BadRequest;
    return context.change("set personal parameters", [&](soci::session& sql) {
        const store::SmsBalance before = store::smsBalance(sql, context.caller.id);
        store::setSmsReminder(sql, context.caller.id, smsPhone.value_or(before.phone), smsWarn.value_or(before.warn));
        if (!nickname)
            return ServiceCode::Done;
        store::setNickname(sql, context.caller.id, *nickname);
        for (const store::Friend& person : store::friendsOf(sql, context.caller.id))
            context.effects.concerned.insert(person.id);
        return ServiceCode::Done;
    });
}

} // namespace ipncsdk::service
