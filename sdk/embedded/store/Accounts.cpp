#include "store/Accounts.h"

#include <soci/soci.h>

namespace ipncsdk::store {

std::optional<Account> accountByPhone(soci::session& sql, const std::string& phone) {
    Account account;
    sql << "select id, phone, nickname, passwordhash, countrycode from accounts where phone = :phone",
        soci::into(account.id), soci::into(account.phone), soci::into(account.nickname),
        soci::into(account.passwordHash), soci::into(account.countryCode), soci::use(phone, "phone");
    return sql.got_data() ? std::make_optional(account) : std::nullopt;
}

std::optional<Account> accountById(soci::session& sql, AccountId id) {
    Account account;
    sql << "select id, phone, nickname, passwordhash, countrycode from accounts where id = :id",
        soci::into(account.id), soci::into(account.phone), soci::into(account.nickname),
        soci::into(account.passwordHash), soci::into(account.countryCode), soci::use(id, "id");
    return sql.got_data() ? std::make_optional(account) : std::nullopt;
}

AccountId firstAccount(soci::session& sql) {
    AccountId id = 0;
    sql << "select coalesce(min(id), 0) from accounts", soci::into(id);
    return id;
}

void insertAccount(soci::session& sql, const Account& account) {
    sql << "insert into accounts (id, phone, nickname, passwordhash, countrycode)"
           " values (:id, :phone, :nickname, :hash, :country)",
        soci::use(account.id, "id"), soci::use(account.phone, "phone"), soci::use(account.nickname, "nickname"),
        soci::use(account.passwordHash, "hash"), soci::use(account.countryCode, "country");
}

AccountId addAccount(soci::session& sql, Account account) {
    sql << "select coalesce(max(id), 0) + 1 from accounts", soci::into(account.id);
    insertAccount(sql, account);
    return account.id;
}

void setNickname(soci::session& sql, AccountId id, const std::string& nickname) {
    sql << "update accounts set nickname = :nickname where id = :id", soci::use(nickname, "nickname"),
        soci::use(id, "id");
}

std::string headPicture(soci::session& sql, AccountId id) {
    std::string content;
    sql << "select content from headpictures where accountid = :id", soci::into(content), soci::use(id, "id");
    return content;
}

bool hasHeadPicture(soci::session& sql, AccountId id) {
    long long count = 0;
    sql << "select count(*) from headpictures where accountid = :id", soci::into(count), soci::use(id, "id");
    return count > 0;
}

void setHeadPicture(soci::session& sql, AccountId id, const std::string& content) {
    sql << "delete from headpictures where accountid = :id", soci::use(id, "id");
    sql << "insert into headpictures (accountid, content) values (:id, :content)", soci::use(id, "id"),
        soci::use(content, "content");
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

std::optional<Friend> friendOf(soci::session& sql, AccountId id, const std::string& phone) {
    Friend row;
    sql << "select a.id, a.phone, a.nickname, f.remark from friends f join accounts a on a.id = f.friendid"
           " where f.accountid = :id and a.phone = :phone",
        soci::into(row.id), soci::into(row.phone), soci::into(row.nickname), soci::into(row.remark),
        soci::use(id, "id"), soci::use(phone, "phone");
    return sql.got_data() ? std::make_optional(row) : std::nullopt;
}

void setRemark(soci::session& sql, AccountId id, AccountId friendId, const std::string& remark) {
    sql << "update friends set remark = :remark where accountid = :account and friendid = :friend",
        soci::use(remark, "remark"), soci::use(id, "account"), soci::use(friendId, "friend");
}

void removeFriendship(soci::session& sql, AccountId one, AccountId other) {
    const auto remove = [&sql](AccountId account, AccountId friendId) {
        sql << "delete from friends where accountid = :account and friendid = :friend", soci::use(account, "account"),
            soci::use(friendId, "friend");
    };
    remove(one, other);
    remove(other, one);
}

} // namespace ipncsdk::store
