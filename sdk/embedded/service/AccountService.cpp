#include "service/AccountService.h"

#include "base/Text.h"
#include "service/Operations.h"
#include "store/Schema.h"

namespace ipncsdk::service {

namespace {

/// Set once somebody has signed in; from then on the first account's password is no longer told.
constexpr auto signedInFact = "signedinonce";
constexpr std::size_t longestPassword = 128;

} // namespace

AccountService::AccountService(store::Database& database, const device::NetworkCameras& cameras, const Clock& clock,
                               PasswordHasher::Cost cost)
    : database_(database)
    , cameras_(cameras)
    , guard_(clock)
    , hasher_(cost) {}

void AccountService::load() {
    database_.read("read what it remembers", [this](soci::session& sql) {
        everSignedIn_ = !store::fact(sql, signedInFact).empty();
        return ServiceCode::Done;
    });
}

AccountService::Outcome AccountService::perform(const std::string& operation, const Json& params) {
    if (operation == "logon") {
        Reply reply = signIn(params);
        const bool done = reply.code == ServiceCode::Done;
        return {std::move(reply), done};
    }
    const Operation* row = findOperation(operation);
    if (row == nullptr)
        return {ServiceCode::NotSupported, false};
    const auto caller = session_.current();
    if (row->needsSignIn && !caller)
        return {ServiceCode::NotSignedIn, false};
    const OperationContext context{database_, cameras_, caller.value_or(SignedIn{})};
    Reply reply = row->run(context, params);
    const bool changed = row->changesLists && reply.code == ServiceCode::Done;
    return {std::move(reply), changed};
}

Reply AccountService::signIn(const Json& params) {
    const auto phone = textAt(params, "phonenumber");
    const auto password = textAt(params, "phonepassword");
    if (!phone || !password || !isPhoneNumber(*phone) || password->size() > longestPassword)
        return ServiceCode::BadRequest;
    if (!guard_.mayTry(*phone))
        return ServiceCode::TryLater;
    std::optional<store::Account> account;
    const ServiceCode code = database_.read("read an account", [&](soci::session& sql) {
        account = store::accountByPhone(sql, *phone);
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return code;
    // An unknown number takes as long and gives the same answer as a wrong password.
    if (!hasher_.verify(account ? account->passwordHash : std::string(), *password)) {
        guard_.failed(*phone);
        return ServiceCode::PasswordWrong;
    }
    guard_.succeeded(*phone);
    session_.set(SignedIn{account->id, account->phone});
    rememberSignIn();
    return Reply(Json{{"phonenumber", account->phone}, {"nickname", account->nickname}});
}

ServiceCode AccountService::signOut() {
    if (!session_.current())
        return ServiceCode::NotSignedIn;
    session_.set(std::nullopt);
    return ServiceCode::Done;
}

void AccountService::rememberSignIn() {
    if (everSignedIn_.exchange(true))
        return;
    // A store that can't be written costs the note, not the sign-in.
    database_.change("note the first sign-in", [](soci::session& sql) {
        store::setFact(sql, signedInFact, "1");
        return ServiceCode::Done;
    });
}

} // namespace ipncsdk::service
