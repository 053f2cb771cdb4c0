#pragma once

#include "store/Accounts.h"

#include <mutex>
#include <optional>
#include <string>

namespace ipncsdk::service {

struct SignedIn {
    store::AccountId id = 0;
    std::string phone;
    friend bool operator==(const SignedIn&, const SignedIn&) = default;
};

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
