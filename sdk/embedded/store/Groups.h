#pragma once

#include "store/Accounts.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::store {

using GroupId = long long;

struct Group {
    GroupId id = 0;
    std::string name;
};

// All of these work in the caller's transaction and throw what the connection throws. Group ids are unique in the
// whole store; a group of another account counts as no group.

/// The account's groups in display order.
std::vector<Group> groupsOf(soci::session& sql, AccountId account);
bool hasGroup(soci::session& sql, AccountId account, GroupId group);
/// Adds a group behind the others.
GroupId insertGroup(soci::session& sql, AccountId account, const std::string& name);
bool renameGroup(soci::session& sql, AccountId account, GroupId group, const std::string& name);
/// Number of devices in a group.
std::size_t groupSize(soci::session& sql, AccountId account, GroupId group);
void removeGroup(soci::session& sql, AccountId account, GroupId group);
/// Puts a group at `index` (from 0) among the account's groups; an index behind the last one means the end.
bool moveGroup(soci::session& sql, AccountId account, GroupId group, std::size_t index);
/// The account's first group; one is made when there is none.
GroupId firstGroup(soci::session& sql, AccountId account);

} // namespace ipncsdk::store
