#pragma once

#include "base/Clock.h"
#include "base/ServiceCode.h"
#include "service/TextMessage.h"
#include "store/Database.h"
#include "store/StoreKey.h"

#include <chrono>
#include <optional>
#include <string>

namespace ipncsdk::service {

/// Codes that prove that somebody holds a phone: made, sent, checked, redeemed.
///
/// The life of a code: `issue` makes it and takes the place of the number's code before; `check` with the right
/// digits opens the one submission that the code is for, from the computer where it was entered; `redeem` is part of
/// that submission. The store keeps all of it, so limits hold over restarts and for every process. Thread-safe.
class VerificationCodes final {
public:
    static constexpr std::chrono::seconds validity{60};
    static constexpr int mostWrongTries = 5;
    static constexpr std::chrono::seconds pause{60};   ///< between two messages to a number
    static constexpr std::chrono::hours day{24};       ///< in which at most
    static constexpr int mostADay = 10;                ///< messages go to a number
    static constexpr std::chrono::minutes openFor{10}; ///< from the check to the submission

    /// What a code is for.
    enum class Purpose { Register, Password, Rebind };

    VerificationCodes(const Clock& clock, const store::StoreKey& key);
    VerificationCodes(const VerificationCodes&) = delete;
    VerificationCodes& operator=(const VerificationCodes&) = delete;

    // These work in the caller's transaction and throw what the connection throws.

    /// Makes a code for the number and the message that brings it. `MessageLimit` when it would be one too many.
    ServiceCode issue(soci::session& sql, const std::string& phone, Purpose purpose, const std::string& countryCode,
                      TextMessage& message) const;
    /// Takes back what `issue` made when the message could not be handed over: it does not count.
    static void withdraw(soci::session& sql, const TextMessage& message);
    /// A code's message as records keep it: the digits are asterisks.
    static std::string withoutCode(const std::string& text);
    /// Compares digits with the code last sent. `CodeWrong` counts as a try, so the transaction must be committed
    /// whatever the result.
    ServiceCode check(soci::session& sql, const std::string& phone, const std::string& digits,
                      const std::string& computer) const;
    /// True when a checked code stands for the submission.
    [[nodiscard]] bool isOpen(soci::session& sql, const std::string& phone, Purpose purpose,
                              const std::string& computer) const;
    /// Uses the checked code up and returns the country code it was sent under; nothing when there is none.
    std::optional<std::string> redeem(soci::session& sql, const std::string& phone, Purpose purpose,
                                      const std::string& computer) const;

private:
    [[nodiscard]] long long now() const;
    [[nodiscard]] std::optional<std::string> hashOf(const std::string& phone, const std::string& purpose,
                                                    const std::string& digits) const;

    const Clock& clock_;
    const store::StoreKey& key_;
};

} // namespace ipncsdk::service
