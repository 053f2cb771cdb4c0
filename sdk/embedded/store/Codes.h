#pragma once

#include <optional>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// The code last sent to a number.
struct Code {
    std::string phone;
    std::string purpose; ///< which submission it is for
    std::string countryCode;
    std::string hash;
    long long sentAt = 0; ///< times here are milliseconds since the beginning of 1970, UTC
    long long tries = 0;  ///< wrong ones
};

// All of these work in the caller's transaction and throw what the connection throws.

std::optional<Code> codeOf(soci::session& sql, const std::string& phone);
/// Puts the code in the place of the one before.
void setCode(soci::session& sql, const Code& code);
void removeCode(soci::session& sql, const std::string& phone);
/// Forgets codes, sent or checked, that are older, whosoever's they are.
void forgetCodesBefore(soci::session& sql, long long time);
void countWrongTry(soci::session& sql, const std::string& phone);

/// Codes sent to a number, and when the last one was; 0 when none was.
struct Sends {
    long long count = 0;
    long long last = 0;
};
Sends sendsTo(soci::session& sql, const std::string& phone);
void noteSend(soci::session& sql, const std::string& phone, long long at);
void forgetSend(soci::session& sql, const std::string& phone, long long at);
/// Forgets what was sent, to whomever, outside the time from `from` to `until`.
void forgetSendsOutside(soci::session& sql, long long from, long long until);

/// A code that was entered rightly.
struct CheckedCode {
    std::string countryCode;
    long long checkedAt = 0;
};
void setCheckedCode(soci::session& sql, const std::string& phone, const std::string& purpose,
                    const std::string& computer, const CheckedCode& checked);
std::optional<CheckedCode> checkedCode(soci::session& sql, const std::string& phone, const std::string& purpose,
                                       const std::string& computer);
/// On all computers.
void removeCheckedCodes(soci::session& sql, const std::string& phone, const std::string& purpose);

} // namespace ipncsdk::store
