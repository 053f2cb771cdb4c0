#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::store {

using AccountId = long long;

struct Account {
    AccountId id = 0;
    std::string phone;
    std::string nickname;
    std::string passwordHash; ///< as libsodium writes it; never leaves the service
    std::string countryCode = "86";
};

struct Friend {
    AccountId id = 0;
    std::string phone;
    std::string nickname;
    std::string remark; ///< the account's own note
};

// All of these work in the caller's transaction and throw what the connection throws.

std::optional<Account> accountByPhone(soci::session& sql, const std::string& phone);
std::optional<Account> accountById(soci::session& sql, AccountId id);
/// The account that owns the network cameras of the configuration file; 0 when there is none.
AccountId firstAccount(soci::session& sql);
void insertAccount(soci::session& sql, const Account& account);
/// Adds an account whose id is made here, and returns the id.
AccountId addAccount(soci::session& sql, Account account);
void setNickname(soci::session& sql, AccountId id, const std::string& nickname);

/// The account's picture in base64; empty when it has none.
std::string headPicture(soci::session& sql, AccountId id);
bool hasHeadPicture(soci::session& sql, AccountId id);
void setHeadPicture(soci::session& sql, AccountId id, const std::string& content);

/// Friends in the order of their phone numbers.
std::vector<Friend> friendsOf(soci::session& sql, AccountId id);
/// Makes both directions of a friendship.
void insertFriendship(soci::session& sql, AccountId one, const std::string& remarkOfOne, AccountId other,
                      const std::string& remarkOfOther);

/// The friend with this number; nothing when the account has none.
std::optional<Friend> friendOf(soci::session& sql, AccountId id, const std::string& phone);
void setRemark(soci::session& sql, AccountId id, AccountId friendId, const std::string& remark);
/// Ends both directions.
void removeFriendship(soci::session& sql, AccountId one, AccountId other);

} // namespace ipncsdk::store
