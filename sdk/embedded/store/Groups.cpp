#include "store/Groups.h"

#include <soci/soci.h>

#include <algorithm>

namespace ipncsdk::store {

namespace {

constexpr auto defaultGroupName = "默认分组";

auto findGroup(std::vector<Group>& groups, GroupId id) {
    return std::find_if(groups.begin(), groups.end(), [id](const Group& group) { return group.id == id; });
}

} // namespace

std::vector<Group> groupsOf(soci::session& sql, AccountId account) {
    Group row;
    soci::statement statement =
        (sql.prepare << "select id, name from devicegroups where accountid = :account order by position, id",
         soci::into(row.id), soci::into(row.name), soci::use(account, "account"));
    statement.execute();
    std::vector<Group> groups;
    while (statement.fetch())
        groups.push_back(row);
    return groups;
}

bool hasGroup(soci::session& sql, AccountId account, GroupId group) {
    long long count = 0;
    sql << "select count(*) from devicegroups where id = :id and accountid = :account", soci::into(count),
        soci::use(group, "id"), soci::use(account, "account");
    return count > 0;
}

GroupId insertGroup(soci::session& sql, AccountId account, const std::string& name) {
    GroupId id = 0;
    long long position = 0;
    sql << "select coalesce(max(id), 1000) + 1 from devicegroups", soci::into(id);
    sql << "select coalesce(max(position), -1) + 1 from devicegroups where accountid = :account",
        soci::into(position), soci::use(account, "account");
    sql << "insert into devicegroups (id, accountid, name, position) values (:id, :account, :name, :position)",
        soci::use(id, "id"), soci::use(account, "account"), soci::use(name, "name"), soci::use(position, "position");
    return id;
}

bool renameGroup(soci::session& sql, AccountId account, GroupId group, const std::string& name) {
    auto groups = groupsOf(sql, account);
    if (findGroup(groups, group) == groups.end())
        return false;
    sql << "update devicegroups set name = :name where id = :id", soci::use(name, "name"), soci::use(group, "id");
    return true;
}

std::size_t groupSize(soci::session& sql, AccountId account, GroupId group) {
    long long count = 0;
    sql << "select count(*) from placements where accountid = :account and groupid = :group", soci::into(count),
        soci::use(account, "account"), soci::use(group, "group");
    return static_cast<std::size_t>(count);
}

void removeGroup(soci::session& sql, AccountId account, GroupId group) {
    sql << "delete from devicegroups where id = :id and accountid = :account", soci::use(group, "id"),
        soci::use(account, "account");
}

bool moveGroup(soci::session& sql, AccountId account, GroupId group, std::size_t index) {
    auto groups = groupsOf(sql, account);
    const auto found = findGroup(groups, group);
    if (found == groups.end())
        return false;
    const Group moved = *found;
    groups.erase(found);
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(std::min(index, groups.size())), moved);
    long long position = 0;
    for (const Group& each : groups) {
        sql << "update devicegroups set position = :position where id = :id", soci::use(position, "position"),
            soci::use(each.id, "id");
        ++position;
    }
    return true;
}

GroupId firstGroup(soci::session& sql, AccountId account) {
    const auto groups = groupsOf(sql, account);
    return groups.empty() ? insertGroup(sql, account, defaultGroupName) : groups.front().id;
}

} // namespace ipncsdk::store
