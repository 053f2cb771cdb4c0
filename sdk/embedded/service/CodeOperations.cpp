#include "service/Operations.h"
#include "service/Params.h"
#include "store/Accounts.h"

#include <algorithm>
#include <array>

namespace ipncsdk::service {

namespace {

using Purpose = VerificationCodes::Purpose;

/// Dialling codes of the regions in which people may register.
constexpr std::array countryCodes = {"86", "852", "853", "886", "1"};

Reply sendCodeToAccount(const OperationContext& context, const Json& params, Purpose purpose) {
    const auto phone = phoneAt(params, "phonenumber");
    if (!phone)
        return ServiceCode::BadRequest;
    TextMessage message;
    const ServiceCode code = context.change("make a code", [&](soci::session& sql) {
        const auto account = store::accountByPhone(sql, *phone);
        if (!account)
            return ServiceCode::UnknownNumber;
        return context.codes.issue(sql, *phone, purpose, account->countryCode, message);
    });
    if (code == ServiceCode::Done)
        context.effects.message = message;
    return code;
}

} // namespace

Reply sendRegisterCode(const OperationContext& context, const Json& params) {
    const auto phone = phoneAt(params, "phonenumber");
    const auto country = textAt(params, "countrycode");
    if (!phone || !country || std::find(countryCodes.begin(), countryCodes.end(), *country) == countryCodes.end())
        return ServiceCode::BadRequest;
    TextMessage message;
    const ServiceCode code = context.change("make a code", [&](soci::session& sql) {
        if (store::accountByPhone(sql, *phone))
            return ServiceCode::NumberTaken;
        return context.codes.issue(sql, *phone, Purpose::Register, *country, message);
    });
    if (code == ServiceCode::Done)
        context.effects.message = message;
    return code;
}

Reply sendPasswordCode(const OperationContext& context, const Json& params) {
    return sendCodeToAccount(context, params, Purpose::Password);
}

Reply sendRebindCode(const OperationContext& context, const Json& params) {
    return sendCodeToAccount(context, params, Purpose::Rebind);
}

Reply checkMessageCode(const OperationContext& context, const Json& params) {
    const auto phone = phoneAt(params, "phonenumber");
    const auto digits = textAt(params, "checkcode");
    if (!phone || !digits)
        return ServiceCode::BadRequest;
    ServiceCode checked = ServiceCode::Done;
    const ServiceCode code = context.change("check a code", [&](soci::session& sql) {
        checked = context.codes.check(sql, *phone, *digits, context.computer);
        // A wrong try is a change, too.
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? checked : code;
}

} // namespace ipncsdk::service
