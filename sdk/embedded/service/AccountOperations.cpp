#include "base/Text.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/Accounts.h"
#include "store/Groups.h"
#include "store/Sessions.h"

namespace ipncsdk::service {

namespace {

using Purpose = VerificationCodes::Purpose;

constexpr std::size_t shortestPassword = 8;
constexpr std::size_t longestPassword = 16;

/// A new password: 8 to 16 characters, whatever they are, without control characters.
std::optional<std::string> newPasswordAt(const Json& params, const char* key) {
    auto password = textAt(params, key);
    if (!password || !isPlainText(*password, longestPassword) || *characterCount(*password) < shortestPassword)
        return std::nullopt;
    return password;
}

/// Computers are the only kind of client that this service binds.
bool namesComputer(const Json& params) {
    return memberAt(params, "phonetype") == nullptr || textAt(params, "phonetype") == "pc";
}

/// `Done` when the code for the submission was checked. Hashing a password costs too much to be done for everybody.
ServiceCode needOpen(const OperationContext& context, const std::string& phone, Purpose purpose) {
    return context.database.read("look for a checked code", [&](soci::session& sql) {
        return context.codes.isOpen(sql, phone, purpose, context.computer) ? ServiceCode::Done
                                                                           : ServiceCode::CodeTimeout;
    });
}

} // namespace

Reply registerPhone(const OperationContext& context, const Json& params) {
    const auto phone = phoneAt(params, "phonenumber");
    const auto password = newPasswordAt(params, "phonepassword");
    if (!phone || !password)
        return ServiceCode::BadRequest;
    if (const ServiceCode code = needOpen(context, *phone, Purpose::Register); code != ServiceCode::Done)
        return code;
    const std::string hash = context.hasher.hash(*password);
    return context.change("register a number", [&](soci::session& sql) {
        const auto country = context.codes.redeem(sql, *phone, Purpose::Register, context.computer);
        if (!country)
            return ServiceCode::CodeTimeout;
        if (store::accountByPhone(sql, *phone))
            return ServiceCode::NumberTaken;
        const store::AccountId id = store::addAccount(sql, {0, *phone, *phone, hash, *country});
        store::firstGroup(sql, id);
        return ServiceCode::Done;
    });
}

Reply changePassword(const OperationContext& context, const Json& params) {
    const auto phone = phoneAt(params, "phonenumber");
    const auto password = newPasswordAt(params, "phonepassword");
    if (!phone || !password)
        return ServiceCode::BadRequest;
    if (const ServiceCode code = needOpen(context, *phone, Purpose::Password); code != ServiceCode::Done)
        return code;
    const std::string hash = context.hasher.hash(*password);
    SignedIn caller = context.caller;
    const ServiceCode code = context.change("change a password", [&](soci::session& sql) {
        const auto account = store::accountByPhone(sql, *phone);
        if (!account || !context.codes.redeem(sql, *phone, Purpose::Password, context.computer))
            return ServiceCode::CodeTimeout;
        store::setPassword(sql, account->id, hash);
        if (account->id == caller.id)
            caller.passwordEpoch = store::sessionState(sql, caller.id, context.computer).passwordEpoch;
        return ServiceCode::Done;
    });
    // The session from which it was done goes on.
    if (code == ServiceCode::Done && caller.id != 0)
        context.session.set(caller);
    return code;
}

Reply rebindPhone(const OperationContext& context, const Json& params) {
    const auto phone = phoneAt(params, "phonenumber");
    if (!phone || !namesComputer(params))
        return ServiceCode::BadRequest;
    return context.change("bind a computer", [&](soci::session& sql) {
        const auto account = store::accountByPhone(sql, *phone);
        if (!account || !context.codes.redeem(sql, *phone, Purpose::Rebind, context.computer))
            return ServiceCode::CodeTimeout;
        store::bind(sql, account->id, context.computer);
        return ServiceCode::Done;
    });
}

Reply unbindPhone(const OperationContext& context, const Json& params) {
    if (!namesComputer(params))
        return ServiceCode::BadRequest;
    const ServiceCode code = context.change("unbind a computer", [&](soci::session& sql) {
        store::unbind(sql, context.caller.id, context.computer);
        return ServiceCode::Done;
    });
    if (code == ServiceCode::Done) {
        context.session.set(std::nullopt);
        context.effects.signedOut = true;
    }
    return code;
}

} // namespace ipncsdk::service
