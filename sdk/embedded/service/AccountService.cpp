#include "service/AccountService.h"

#include "base/Text.h"
#include "service/Operations.h"
#include "store/Notices.h"
#include "store/Schema.h"
#include "store/Sessions.h"
#include "store/UserFiles.h"

#include <utility>

namespace ipncsdk::service {

namespace {

/// Set once somebody has signed in; from then on the first account's password is no longer told.
constexpr auto signedInFact = "signedinonce";
constexpr std::size_t longestPassword = 128;

} // namespace

AccountService::AccountService(store::Database& database, const device::NetworkCameras& cameras,
                               const store::StoreKey& key, const store::ContentFiles& files, const Clock& clock,
                               PasswordHasher::Cost cost, std::string computer)
    : database_(database)
    , cameras_(cameras)
    , key_(key)
    , files_(files)
    , computer_(std::move(computer))
    , guard_(clock)
    , words_(clock)
    , hasher_(cost)
    , codes_(clock, key) {}

void AccountService::load() {
    database_.read("read what it remembers", [this](soci::session& sql) {
        everSignedIn_ = !store::fact(sql, signedInFact).empty();
        return ServiceCode::Done;
    });
}

AccountService::Outcome AccountService::perform(const std::string& operation, const Json& params) {
    Outcome outcome;
    if (operation == "logon") {
        outcome.reply = signIn(params);
        outcome.listsChanged = outcome.reply.code == ServiceCode::Done;
        return outcome;
    }
    const Operation* row = findOperation(operation);
    const auto caller = session_.current();
    if (row == nullptr || (row->needsSignIn && !caller)) {
        outcome.reply = row == nullptr ? ServiceCode::NotSupported : ServiceCode::NotSignedIn;
        return outcome;
    }
    return perform(caller.value_or(SignedIn{}),
                   [&](const OperationContext& context) { return row->run(context, params); });
}

AccountService::Outcome AccountService::perform(const std::function<Reply(const OperationContext&)>& work) {
    if (const auto caller = session_.current())
        return perform(*caller, work);
    Outcome outcome;
    outcome.reply = ServiceCode::NotSignedIn;
    return outcome;
}

AccountService::Outcome AccountService::perform(const SignedIn& caller,
                                                const std::function<Reply(const OperationContext&)>& work) {
    Outcome outcome;
    Effects effects;
    outcome.reply =
        work({database_, cameras_, key_, files_, codes_, hasher_, words_, session_, computer_, effects, caller});
    release(effects.released);
    if (outcome.reply.code != ServiceCode::Done)
        return outcome;
    outcome.message = std::move(effects.message);
    if (effects.signedOut) {
        outcome.logout = "unbind";
        return outcome;
    }
    outcome.listsChanged = caller.id != 0 && effects.concerned.count(caller.id) > 0;
    outcome.filesChanged = caller.id != 0 && effects.concernedByFiles.count(caller.id) > 0;
    noteRevisions(outcome.listsChanged, outcome.filesChanged);
    return outcome;
}

void AccountService::release(const std::set<std::string>& contents) {
    if (contents.empty())
        return;
    // Inside a changing transaction nobody else refers to one of them anew.
    database_.change("remove files that nobody uses", [&](soci::session& sql) {
        for (const std::string& content : contents) {
            if (!store::isContentUsed(sql, content))
                files_.remove(content);
        }
        return ServiceCode::Done;
    });
}

AccountService::Look AccountService::look() {
    Look look;
    const auto caller = session_.current();
    if (!caller)
        return look;
    store::SessionState state;
    const ServiceCode code = database_.read("look at the session", [&](soci::session& sql) {
        state = store::sessionState(sql, caller->id, computer_);
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return look;
    look.logout = endOf(*caller, state);
    if (look.logout) {
        session_.set(std::nullopt);
        return look;
    }
    look.listsChanged = std::exchange(seenRevision_, state.revision) != state.revision;
    look.filesChanged = std::exchange(seenFileRevision_, state.fileRevision) != state.fileRevision;
    return look;
}

void AccountService::noteRevisions(bool lists, bool files) {
    if (!lists && !files)
        return;
    database_.read("note what was changed", [&](soci::session& sql) {
        const auto caller = session_.current();
        if (!caller)
            return ServiceCode::Done;
        const auto state = store::sessionState(sql, caller->id, computer_);
        seenRevision_ = lists ? state.revision : seenRevision_;
        seenFileRevision_ = files ? state.fileRevision : seenFileRevision_;
        return ServiceCode::Done;
    });
}

void AccountService::settle(const TextMessage& message, bool sent) {
    database_.change("note what became of a message", [&](soci::session& sql) {
        if (!sent)
            VerificationCodes::withdraw(sql, message);
        if (const auto account = store::accountByPhone(sql, message.phone))
            store::insertSmsRecord(sql,
                                   {0, account->id, message.phone, account->nickname, message.madeAt,
                                    VerificationCodes::withoutCode(message.text), "code", sent ? "ok" : "error", ""});
        return ServiceCode::Done;
    });
}

bool AccountService::holds(soci::session& sql, const SignedIn& session) const {
    return !endOf(session, store::sessionState(sql, session.id, computer_));
}

Reply AccountService::signIn(const Json& params) {
    const auto phone = textAt(params, "phonenumber");
    const auto password = textAt(params, "phonepassword");
    if (!phone || !password || !isPhoneNumber(*phone) || password->size() > longestPassword)
        return ServiceCode::BadRequest;
    if (!guard_.mayTry(*phone))
        return ServiceCode::TryLater;
    std::optional<store::Account> account;
    store::SessionState state;
    const ServiceCode code = database_.read("read an account", [&](soci::session& sql) {
        account = store::accountByPhone(sql, *phone);
        if (account)
            state = store::sessionState(sql, account->id, computer_);
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
    if (!state.bound)
        return ServiceCode::Unbound;
    session_.set(SignedIn{account->id, account->phone, state.passwordEpoch, state.bindingEpoch});
    seenRevision_ = state.revision;
    seenFileRevision_ = state.fileRevision;
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
