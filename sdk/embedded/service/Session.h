#pragma once

#include "store/Accounts.h"
#include "store/Sessions.h"

#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace ipncsdk::service {

struct SignedIn {
    store::AccountId id = 0;
    std::string phone;
    long long passwordEpoch = 0; ///< of the store when the session began, see `store::SessionState`
    long long bindingEpoch = 0;
};

/// True when both are of one account; what it is signed in with does not matter.
inline bool isSameAccount(const std::optional<SignedIn>& one, const std::optional<SignedIn>& other) {
    return one.has_value() == other.has_value() && (!one || one->id == other->id);
}

/// Why a session is over, in the words of "logout"; nothing while it holds. Empty when the account is gone.
inline std::optional<std::string> endOf(const SignedIn& session, const store::SessionState& state) {
    if (!state.exists)
        return std::string();
    if (state.passwordEpoch != session.passwordEpoch)
        return "password";
    if (!state.bound || state.bindingEpoch != session.bindingEpoch)
        return "unbind";
    return std::nullopt;
}

/// Who is signed in. Lasts as long as the process: nothing of it is stored. Thread-safe.
class Session final {
public:
    [[nodiscard]] std::optional<SignedIn> current() const {
        const std::lock_guard lock(mutex_);
        return current_;
    }
    void set(std::optional<SignedIn> account) {
        const std::lock_guard lock(mutex_);
        current_ = std::move(account);
    }

private:
    mutable std::mutex mutex_;
    std::optional<SignedIn> current_;
};

} // namespace ipncsdk::service
