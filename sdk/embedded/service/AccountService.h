#pragma once

#include "base/Clock.h"
#include "base/Reply.h"
#include "device/NetworkCameras.h"
#include "service/PasswordHasher.h"
#include "service/Session.h"
#include "service/SignInGuard.h"
#include "service/TextMessage.h"
#include "service/VerificationCodes.h"
#include "store/ContentFiles.h"
#include "store/Database.h"
#include "store/StoreKey.h"

#include <atomic>
#include <functional>
#include <optional>
#include <set>
#include <string>

namespace ipncsdk::service {

struct OperationContext;

/// Answers the account requests. One thread, but for the session, which anyone may read.
class AccountService final {
public:
    /// `computer` marks what belongs to the machine on which this process runs.
    AccountService(store::Database& database, const device::NetworkCameras& cameras, const store::StoreKey& key,
                   const store::ContentFiles& files, const Clock& clock, PasswordHasher::Cost cost,
                   std::string computer);
    AccountService(const AccountService&) = delete;
    AccountService& operator=(const AccountService&) = delete;

    struct Outcome {
        Reply reply;
        bool listsChanged = false;          ///< the client must read the device lists again
        bool filesChanged = false;          ///< it must read its maps and files again
        std::optional<TextMessage> message; ///< to be sent before the reply; then it is to be `settle`d
        std::optional<std::string> logout;  ///< the session is over, with the reason as "logout" tells it
    };

    /// Does the operation ("clienttype") with its parameters.
    Outcome perform(const std::string& operation, const Json& params);
    /// Does something for the account that is signed in; `NotSignedIn` when nobody is.
    Outcome perform(const std::function<Reply(const OperationContext&)>& work);

    /// Signs in, as the operation "logon" and the command "login" do.
    Reply signIn(const Json& params);
    /// Signs out; `NotSignedIn` when nobody is.
    ServiceCode signOut();

    /// What others, in this process or another, have done to the session since it was last looked at.
    struct Look {
        bool listsChanged = false;
        bool filesChanged = false;
        std::optional<std::string> logout; ///< the session was ended now, with the reason as "logout" tells it
    };
    Look look();

    /// Enters a code's message into the records of the number's account, without the code; forgets one that could not
    /// be handed over. Any thread.
    void settle(const TextMessage& message, bool sent);

    [[nodiscard]] const Session& session() const { return session_; }
    /// True when the session still holds by the store. In the caller's transaction; any thread.
    [[nodiscard]] bool holds(soci::session& sql, const SignedIn& session) const;
    [[nodiscard]] const PasswordHasher& hasher() const { return hasher_; }
    /// True once somebody has signed in to this store, in this run or before.
    [[nodiscard]] bool everSignedIn() const { return everSignedIn_; }
    /// Reads what the store remembers of earlier runs.
    void load();

private:
    void rememberSignIn();
    Outcome perform(const SignedIn& caller, const std::function<Reply(const OperationContext&)>& work);
    /// The account's revisions as the client is going to read them.
    void noteRevisions(bool lists, bool files);
    /// Removes contents that nothing refers to any more.
    void release(const std::set<std::string>& contents);

    store::Database& database_;
    const device::NetworkCameras& cameras_;
    const store::StoreKey& key_;
    const store::ContentFiles& files_;
    const std::string computer_;
    SignInGuard guard_;
    SignInGuard words_;
    PasswordHasher hasher_;
    VerificationCodes codes_;
    Session session_;
    long long seenRevision_ = 0; ///< what the client has been told to read, of the session's account
    long long seenFileRevision_ = 0;
    std::atomic<bool> everSignedIn_{false};
};

} // namespace ipncsdk::service
