#pragma once

#include "store/Accounts.h"

#include <optional>
#include <string>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// A notification rule as the store keeps it.
struct ReportRule {
    long long id = 0;
    AccountId account = 0;
    std::string document; ///< JSON text, as clients sent it, with its id
};

/// A text message that left, or did not. Times are milliseconds since the beginning of 1970, UTC.
struct SmsRecord {
    long long id = 0; ///< grows with every message
    AccountId account = 0;
    std::string phone;
    std::string name; ///< of whom the number is, as the account knows him
    long long madeAt = 0;
    std::string text;
    std::string kind;   ///< "alarm" or "code"
    std::string state;  ///< "ok", "error" or "nobalance"
    std::string source; ///< what the message was about; empty when nobody asks
};

/// What an account has of text messages.
struct SmsBalance {
    long long left = 0;
    std::string phone;  ///< to be reminded; empty: nobody is
    long long warn = 0; ///< when this many are left; 0: never
};

// All of these work in the caller's transaction and throw what the connection throws.

/// The account's rules in the order of their ids.
std::vector<ReportRule> rulesOf(soci::session& sql, AccountId account);
std::vector<ReportRule> allRules(soci::session& sql);
/// Nothing when there is none, or it is another account's.
std::optional<ReportRule> ruleOf(soci::session& sql, AccountId account, long long id);
/// An id that no rule has had.
long long newRuleId(soci::session& sql);
/// Adds a rule, or replaces the one of its id.
void putRule(soci::session& sql, const ReportRule& rule);
void removeRule(soci::session& sql, long long id);

/// Enters a record under an id of its own, which comes back.
long long insertSmsRecord(soci::session& sql, const SmsRecord& record);
void setSmsState(soci::session& sql, long long id, const std::string& state);
/// When a message about this source was last made for this number, whatever became of it; nothing when none was.
std::optional<long long> lastSms(soci::session& sql, const std::string& phone, const std::string& source);
/// A page of the account's records, newest first: `older`: those older than `id` (0: the newest), else those just
/// newer.
std::vector<SmsRecord> smsPage(soci::session& sql, AccountId account, long long id, bool older, int size);

SmsBalance smsBalance(soci::session& sql, AccountId account);
void addToBalance(soci::session& sql, AccountId account, long long messages);
void setSmsReminder(soci::session& sql, AccountId account, const std::string& phone, long long warn);

} // namespace ipncsdk::store
