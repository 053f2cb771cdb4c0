#include "store/Linkages.h"

#include "store/Schema.h"

#include <soci/soci.h>

namespace ipncsdk::store {

namespace {

constexpr auto lastPlanFact = "lastlinkplan";
constexpr auto lastAlarmFact = "lastalarm";

} // namespace

std::vector<LinkPlan> plansOf(soci::session& sql, const std::string& ipncid) {
    LinkPlan row;
    soci::statement statement =
        (sql.prepare << "select id, ipncid, document from linkplans where ipncid = :device order by id",
         soci::into(row.id), soci::into(row.ipncid), soci::into(row.document), soci::use(ipncid, "device"));
    statement.execute();
    std::vector<LinkPlan> plans;
    while (statement.fetch())
        plans.push_back(row);
    return plans;
}

std::map<std::string, std::vector<LinkPlan>> allPlans(soci::session& sql) {
    LinkPlan row;
    soci::statement statement = (sql.prepare << "select id, ipncid, document from linkplans order by id",
                                 soci::into(row.id), soci::into(row.ipncid), soci::into(row.document));
    statement.execute();
    std::map<std::string, std::vector<LinkPlan>> plans;
    while (statement.fetch())
        plans[row.ipncid].push_back(row);
    return plans;
}

std::optional<LinkPlan> planById(soci::session& sql, long long id) {
    LinkPlan plan;
    sql << "select id, ipncid, document from linkplans where id = :id", soci::into(plan.id), soci::into(plan.ipncid),
        soci::into(plan.document), soci::use(id, "id");
    return sql.got_data() ? std::make_optional(plan) : std::nullopt;
}

long long newPlanId(soci::session& sql) {
    return nextNumber(sql, lastPlanFact);
}

void insertPlan(soci::session& sql, const LinkPlan& plan) {
    sql << "insert into linkplans (id, ipncid, document) values (:id, :device, :document)", soci::use(plan.id, "id"),
        soci::use(plan.ipncid, "device"), soci::use(plan.document, "document");
}

void setPlanDocument(soci::session& sql, long long id, const std::string& document) {
    sql << "update linkplans set document = :document where id = :id", soci::use(document, "document"),
        soci::use(id, "id");
}

void removePlan(soci::session& sql, long long id) {
    sql << "delete from linkplans where id = :id", soci::use(id, "id");
}

void insertAlarm(soci::session& sql, const AlarmRow& alarm) {
    const long long id = nextNumber(sql, lastAlarmFact);
    sql << "insert into alarms (id, ipncid, madeat, savelog, message)"
           " values (:id, :device, :time, :savelog, :message)",
        soci::use(id, "id"), soci::use(alarm.ipncid, "device"), soci::use(alarm.madeAt, "time"),
        soci::use(alarm.savelog, "savelog"), soci::use(alarm.message, "message");
}

long long lastAlarmId(soci::session& sql) {
    const std::string last = fact(sql, lastAlarmFact);
    return last.empty() ? 0 : std::stoll(last);
}

std::vector<AlarmRow> alarmsAfter(soci::session& sql, long long id, int most) {
    AlarmRow row;
    soci::statement statement =
        (sql.prepare
             << "select id, ipncid, madeat, savelog, message from alarms where id > :id order by id limit :most",
         soci::into(row.id), soci::into(row.ipncid), soci::into(row.madeAt), soci::into(row.savelog),
         soci::into(row.message), soci::use(id, "id"), soci::use(most, "most"));
    statement.execute();
    std::vector<AlarmRow> alarms;
    while (statement.fetch())
        alarms.push_back(row);
    return alarms;
}

bool hasSavelog(soci::session& sql, const std::string& ipncid, const std::string& savelog) {
    long long count = 0;
    sql << "select count(*) from alarms where savelog = :savelog and ipncid = :device", soci::into(count),
        soci::use(savelog, "savelog"), soci::use(ipncid, "device");
    return count > 0;
}

void forgetAlarmsBefore(soci::session& sql, long long madeAt) {
    sql << "delete from alarms where madeat < :time", soci::use(madeAt, "time");
}

std::vector<LinkedDeviceRow> linkedDevices(soci::session& sql) {
    LinkedDeviceRow row;
    long long online = 0;
    soci::statement statement =
        (sql.prepare << "select ipncid, name, origin, online, interfaces, extend from devices order by ipncid",
         soci::into(row.ipncid), soci::into(row.name), soci::into(row.origin), soci::into(online),
         soci::into(row.interfaces), soci::into(row.extend));
    statement.execute();
    std::vector<LinkedDeviceRow> devices;
    while (statement.fetch()) {
        row.online = online != 0;
        devices.push_back(row);
    }
    return devices;
}

} // namespace ipncsdk::store
