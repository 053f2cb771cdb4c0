#pragma once

#include "base/Clock.h"
#include "base/Reply.h"
#include "device/NetworkCameras.h"
#include "service/PasswordHasher.h"
#include "service/Session.h"
#include "service/SignInGuard.h"
#include "store/Database.h"

#include <atomic>
#include <string>
#include <string_view>

namespace ipncsdk::service {

/// Answers the account requests. One thread, but for the session, which anyone may read.
class AccountService final {
public:
    AccountService(store::Database& database, const device::NetworkCameras& cameras, const Clock& clock,
                   PasswordHasher::Cost cost);
    AccountService(const AccountService&) = delete;
    AccountService& operator=(const AccountService&) = delete;

    struct Outcome {
        Reply reply;
        bool listsChanged = false; ///< the client must read the device lists again
    };

    /// Does the operation ("clienttype") with its parameters.
    Outcome perform(const std::string& operation, const Json& params);

    /// Signs in, as the operation "logon" and the command "login" do.
    Reply signIn(const Json& params);
    /// Signs out; `NotSignedIn` when nobody is.
    ServiceCode signOut();

    [[nodiscard]] const Session& session() const { return session_; }
    [[nodiscard]] const PasswordHasher& hasher() const { return hasher_; }
    /// True once somebody has signed in to this store, in this run or before.
    [[nodiscard]] bool everSignedIn() const { return everSignedIn_; }
    /// Reads what the store remembers of earlier runs.
    void load();

private:
    void rememberSignIn();

    store::Database& database_;
    const device::NetworkCameras& cameras_;
    SignInGuard guard_;
    PasswordHasher hasher_;
    Session session_;
    std::atomic<bool> everSignedIn_{false};
};

} // namespace ipncsdk::service
