#pragma once

#include "store/Accounts.h"

#include <string>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// What decides whether a session of an account on a computer still holds. A session remembers the epochs of its
/// sign-in; as soon as one of them has grown it is over.
struct SessionState {
    bool exists = false;         ///< the account is there
    long long revision = 0;      ///< grows with each change that the account's clients must read
    long long fileRevision = 0;  ///< likewise, of maps and the account's files
    long long passwordEpoch = 0; ///< grows with each change of the password
    bool bound = true;           ///< the account may sign in on this computer
    long long bindingEpoch = 0;  ///< grows each time the account is unbound from this computer
};

// All of these work in the caller's transaction and throw what the connection throws.

SessionState sessionState(soci::session& sql, AccountId account, const std::string& computer);
/// Tells all clients of the account, of whatever process, to read its lists again.
void touch(soci::session& sql, AccountId account);
/// Tells them to read the account's maps and files again.
void touchFiles(soci::session& sql, AccountId account);
/// Sets the password and ends all sessions of the account.
void setPassword(soci::session& sql, AccountId account, const std::string& passwordHash);
/// Ends the sessions of the account on the computer and refuses new ones there.
void unbind(soci::session& sql, AccountId account, const std::string& computer);
void bind(soci::session& sql, AccountId account, const std::string& computer);

} // namespace ipncsdk::store
