#include "store/Notices.h"

#include "store/Schema.h"

#include <soci/soci.h>

#include <algorithm>

namespace ipncsdk::store {

namespace {

constexpr auto lastRuleFact = "lastreportrule";
constexpr auto lastSmsFact = "lastsmsrecord";

/// `account` 0: of all accounts.
std::vector<ReportRule> rules(soci::session& sql, AccountId account) {
    ReportRule row;
    soci::statement statement =
        (sql.prepare << "select id, accountid, document from reportrules"
                        " where :account = 0 or accountid = :account order by id",
         soci::into(row.id), soci::into(row.account), soci::into(row.document), soci::use(account, "account"));
    statement.execute();
    std::vector<ReportRule> found;
    while (statement.fetch())
        found.push_back(row);
    return found;
}

} // namespace

std::vector<ReportRule> rulesOf(soci::session& sql, AccountId account) {
    return rules(sql, account);
}

std::vector<ReportRule> allRules(soci::session& sql) {
    return rules(sql, 0);
}

std::optional<ReportRule> ruleOf(soci::session& sql, AccountId account, long long id) {
    ReportRule rule;
    sql << "select id, accountid, document from reportrules where id = :id and accountid = :account",
        soci::into(rule.id), soci::into(rule.account), soci::into(rule.document), soci::use(id, "id"),
        soci::use(account, "account");
    return sql.got_data() ? std::make_optional(rule) : std::nullopt;
}

long long newRuleId(soci::session& sql) {
    return nextNumber(sql, lastRuleFact);
}

void putRule(soci::session& sql, const ReportRule& rule) {
    removeRule(sql, rule.id);
    sql << "insert into reportrules (id, accountid, document) values (:id, :account, :document)",
        soci::use(rule.id, "id"), soci::use(rule.account, "account"), soci::use(rule.document, "document");
}

void removeRule(soci::session& sql, long long id) {
    sql << "delete from reportrules where id = :id", soci::use(id, "id");
}

long long insertSmsRecord(soci::session& sql, const SmsRecord& record) {
    const long long id = nextNumber(sql, lastSmsFact);
    sql << "insert into smsrecords (id, accountid, phone, name, madeat, text, kind, state, source)"
           " values (:id, :account, :phone, :name, :time, :text, :kind, :state, :source)",
        soci::use(id, "id"), soci::use(record.account, "account"), soci::use(record.phone, "phone"),
        soci::use(record.name, "name"), soci::use(record.madeAt, "time"), soci::use(record.text, "text"),
        soci::use(record.kind, "kind"), soci::use(record.state, "state"), soci::use(record.source, "source");
    return id;
}

void setSmsState(soci::session& sql, long long id, const std::string& state) {
    sql << "update smsrecords set state = :state where id = :id", soci::use(state, "state"), soci::use(id, "id");
}

std::optional<long long> lastSms(soci::session& sql, const std::string& phone, const std::string& source) {
    long long last = 0;
    long long count = 0;
    sql << "select count(*), coalesce(max(madeat), 0) from smsrecords"
           " where phone = :phone and source = :source",
        soci::into(count), soci::into(last), soci::use(phone, "phone"), soci::use(source, "source");
    return count > 0 ? std::make_optional(last) : std::nullopt;
}

std::vector<SmsRecord> smsPage(soci::session& sql, AccountId account, long long id, bool older, int size) {
    constexpr auto columns = "select id, phone, name, madeat, text, kind, state from smsrecords";
    const std::string where = older
                                  ? " where accountid = :account and (:id = 0 or id < :id) order by id desc limit :n"
                                  : " where accountid = :account and id > :id order by id limit :n";
    SmsRecord row;
    row.account = account;
    soci::statement statement =
        (sql.prepare << columns + where, soci::into(row.id), soci::into(row.phone), soci::into(row.name),
         soci::into(row.madeAt), soci::into(row.text), soci::into(row.kind), soci::into(row.state),
         soci::use(account, "account"), soci::use(id, "id"), soci::use(size, "n"));
    statement.execute();
    std::vector<SmsRecord> page;
    while (statement.fetch())
        page.push_back(row);
    if (!older)
        std::reverse(page.begin(), page.end());
    return page;
}

SmsBalance smsBalance(soci::session& sql, AccountId account) {
    SmsBalance balance;
    sql << "select smsleft, smsphone, smswarn from accounts where id = :id", soci::into(balance.left),
        soci::into(balance.phone), soci::into(balance.warn), soci::use(account, "id");
    return balance;
}

void addToBalance(soci::session& sql, AccountId account, long long messages) {
    sql << "update accounts set smsleft = smsleft + :n where id = :id", soci::use(messages, "n"),
        soci::use(account, "id");
}

void setSmsReminder(soci::session& sql, AccountId account, const std::string& phone, long long warn) {
    sql << "update accounts set smsphone = :phone, smswarn = :warn where id = :id", soci::use(phone, "phone"),
        soci::use(warn, "warn"), soci::use(account, "id");
}

} // namespace ipncsdk::store
