#include "store/Codes.h"

#include <soci/soci.h>

namespace ipncsdk::store {

std::optional<Code> codeOf(soci::session& sql, const std::string& phone) {
    Code code;
    sql << "select phone, purpose, countrycode, hash, sentat, tries from codes where phone = :phone",
        soci::into(code.phone), soci::into(code.purpose), soci::into(code.countryCode), soci::into(code.hash),
        soci::into(code.sentAt), soci::into(code.tries), soci::use(phone, "phone");
    return sql.got_data() ? std::make_optional(code) : std::nullopt;
}

void setCode(soci::session& sql, const Code& code) {
    removeCode(sql, code.phone);
    sql << "insert into codes (phone, purpose, countrycode, hash, sentat, tries)"
           " values (:phone, :purpose, :country, :hash, :sentat, :tries)",
        soci::use(code.phone, "phone"), soci::use(code.purpose, "purpose"), soci::use(code.countryCode, "country"),
        soci::use(code.hash, "hash"), soci::use(code.sentAt, "sentat"), soci::use(code.tries, "tries");
}

void removeCode(soci::session& sql, const std::string& phone) {
    sql << "delete from codes where phone = :phone", soci::use(phone, "phone");
}

void forgetCodesBefore(soci::session& sql, long long time) {
    sql << "delete from codes where sentat < :time", soci::use(time, "time");
    sql << "delete from checkedcodes where checkedat < :time", soci::use(time, "time");
}

void countWrongTry(soci::session& sql, const std::string& phone) {
    sql << "update codes set tries = tries + 1 where phone = :phone", soci::use(phone, "phone");
}

Sends sendsTo(soci::session& sql, const std::string& phone) {
    Sends sends;
    sql << "select count(*), coalesce(max(sentat), 0) from codesends where phone = :phone", soci::into(sends.count),
        soci::into(sends.last), soci::use(phone, "phone");
    return sends;
}

void noteSend(soci::session& sql, const std::string& phone, long long at) {
    sql << "insert into codesends (phone, sentat) values (:phone, :at)", soci::use(phone, "phone"),
        soci::use(at, "at");
}

void forgetSend(soci::session& sql, const std::string& phone, long long at) {
    sql << "delete from codesends where phone = :phone and sentat = :at", soci::use(phone, "phone"),
        soci::use(at, "at");
}

void forgetSendsOutside(soci::session& sql, long long from, long long until) {
    sql << "delete from codesends where sentat < :from or sentat > :until", soci::use(from, "from"),
        soci::use(until, "until");
}

void setCheckedCode(soci::session& sql, const std::string& phone, const std::string& purpose,
                    const std::string& computer, const CheckedCode& checked) {
    sql << "delete from checkedcodes where phone = :phone and purpose = :purpose and computer = :computer",
        soci::use(phone, "phone"), soci::use(purpose, "purpose"), soci::use(computer, "computer");
    sql << "insert into checkedcodes (phone, purpose, computer, countrycode, checkedat)"
           " values (:phone, :purpose, :computer, :country, :checkedat)",
        soci::use(phone, "phone"), soci::use(purpose, "purpose"), soci::use(computer, "computer"),
        soci::use(checked.countryCode, "country"), soci::use(checked.checkedAt, "checkedat");
}

std::optional<CheckedCode> checkedCode(soci::session& sql, const std::string& phone, const std::string& purpose,
                                       const std::string& computer) {
    CheckedCode checked;
    sql << "select countrycode, checkedat from checkedcodes"
           " where phone = :phone and purpose = :purpose and computer = :computer",
        soci::into(checked.countryCode), soci::into(checked.checkedAt), soci::use(phone, "phone"),
        soci::use(purpose, "purpose"), soci::use(computer, "computer");
    return sql.got_data() ? std::make_optional(checked) : std::nullopt;
}

void removeCheckedCodes(soci::session& sql, const std::string& phone, const std::string& purpose) {
    sql << "delete from checkedcodes where phone = :phone and purpose = :purpose", soci::use(phone, "phone"),
        soci::use(purpose, "purpose");
}

} // namespace ipncsdk::store
