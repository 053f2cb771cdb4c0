#include "store/Accounts.h"

#include <soci/soci.h>

namespace ipncsdk::store {

std::optional<Account> accountByPhone(soci::session& sql, const std::string& phone) {
    Account account;
    sql << "select id, phone, nickname, passwordhash from accounts where phone = :phone", soci::into(account.id),
        soci::into(account.phone), soci::into(account.nickname), soci::into(account.passwordHash),
        soci::use(phone, "phone");
    return sql.got_data() ? std::make_optional(account) : std::nullopt;
}

std::optional<Account> accountById(soci::session& sql, AccountId id) {
    Account account;
    sql << "select id, phone, nickname, passwordhash from accounts where id = :id", soci::into(account.id),
        soci::into(account.phone), soci::into(account.nickname), soci::into(account.passwordHash),
        soci::use(id, "id");
    return sql.got_data() ? std::make_optional(account) : std::nullopt;
}

AccountId firstAccount(soci::session& sql) {
    AccountId id = 0;
    sql << "select coalesce(min(id), 0) from accounts", soci::into(id);
    return id;
}

void insertAccount(soci::session& sql, const Account& account) {
    sql << "insert into accounts (id, phone, nickname, passwordhash) values (:id, :phone, :nickname, :hash)",
        soci::use(account.id, "id"), soci::use(account.phone, "phone"), soci::use(account.nickname, "nickname"),
        soci::use(account.passwordHash, "hash");
}

void setNickname(soci::session& sql, AccountId id, const std::string& nickname) {
    sql << "update accounts set nickname = :nickname where id = :id", soci::use(nickname, "nickname"),
        soci::use(id, "id");
}

std::vector<Friend> friendsOf(soci::session& sql, AccountId id) {
    Friend row;
    soci::statement statement = (sql.prepare << "select a.id, a.phone, a.nickname, f.remark"
                                                " from friends f join accounts a on a.id = f.friendid"
                                                " where f.accountid = :id order by a.phone",
                                 soci::into(row.id), soci::into(row.phone), soci::into(row.nickname),
                                 soci::into(row.remark), soci::use(id, "id"));
    statement.execute();
    std::vector<Friend> friends;
    while (statement.fetch())
        friends.push_back(row);
    return friends;
}

void insertFriendship(soci::session& sql, AccountId one, const std::string& remarkOfOne, AccountId other,
                      const std::string& remarkOfOther) {
    const auto insert = [&sql](AccountId account, AccountId friendId, const std::string& remark) {
        sql << "insert into friends (accountid, friendid, remark) values (:account, :friend, :remark)",
            soci::use(account, "account"), soci::use(friendId, "friend"), soci::use(remark, "remark");
    };
    insert(one, other, remarkOfOne);
    insert(other, one, remarkOfOther);
}

} // namespace ipncsdk::store
