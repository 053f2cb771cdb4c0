#include "store/Sessions.h"

#include <soci/soci.h>

namespace ipncsdk::store {

namespace {

void setBinding(soci::session& sql, AccountId account, const std::string& computer, bool bound, long long epoch) {
    const long long flag = bound ? 1 : 0;
    sql << "delete from bindings where accountid = :account and computer = :computer", soci::use(account, "account"),
        soci::use(computer, "computer");
    sql << "insert into bindings (accountid, computer, bound, epoch) values (:account, :computer, :bound, :epoch)",
        soci::use(account, "account"), soci::use(computer, "computer"), soci::use(flag, "bound"),
        soci::use(epoch, "epoch");
}

} // namespace

SessionState sessionState(soci::session& sql, AccountId account, const std::string& computer) {
    SessionState state;
    long long bound = 1;
    sql << "select a.revision, a.filerevision, a.epoch, coalesce(b.bound, 1), coalesce(b.epoch, 0) from accounts a"
           " left join bindings b on b.accountid = a.id and b.computer = :computer where a.id = :account",
        soci::into(state.revision), soci::into(state.fileRevision), soci::into(state.passwordEpoch),
        soci::into(bound), soci::into(state.bindingEpoch), soci::use(computer, "computer"),
        soci::use(account, "account");
    state.exists = sql.got_data();
    state.bound = bound != 0;
    return state;
}

void touch(soci::session& sql, AccountId account) {
    sql << "update accounts set revision = revision + 1 where id = :account", soci::use(account, "account");
}

void touchFiles(soci::session& sql, AccountId account) {
    sql << "update accounts set filerevision = filerevision + 1 where id = :account", soci::use(account, "account");
}

void setPassword(soci::session& sql, AccountId account, const std::string& passwordHash) {
    sql << "update accounts set passwordhash = :hash, epoch = epoch + 1 where id = :account",
        soci::use(passwordHash, "hash"), soci::use(account, "account");
}

void unbind(soci::session& sql, AccountId account, const std::string& computer) {
    setBinding(sql, account, computer, false, sessionState(sql, account, computer).bindingEpoch + 1);
}

void bind(soci::session& sql, AccountId account, const std::string& computer) {
    setBinding(sql, account, computer, true, sessionState(sql, account, computer).bindingEpoch);
}

} // namespace ipncsdk::store
