#pragma once

#include "store/Accounts.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// A file that an account has uploaded under a name of its own.
struct UserFile {
    AccountId account = 0;
    std::string kind;    ///< "icons"
    std::string name;    ///< as uploaded
    std::string content; ///< its name in `ContentFiles`
    long long size = 0;  ///< bytes
};

// All of these work in the caller's transaction and throw what the connection throws.

/// By their names.
std::vector<UserFile> filesOf(soci::session& sql, AccountId account, const std::string& kind);
std::optional<UserFile> userFile(soci::session& sql, AccountId account, const std::string& kind,
                                 const std::string& name);
void insertUserFile(soci::session& sql, const UserFile& file);
void removeUserFile(soci::session& sql, const UserFile& file);

/// Every name in `ContentFiles` that a map or a file of an account refers to.
std::set<std::string> usedContents(soci::session& sql);
bool isContentUsed(soci::session& sql, const std::string& content);

} // namespace ipncsdk::store
