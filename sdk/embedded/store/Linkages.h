#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::store {

/// A linkage plan as the store keeps it.
struct LinkPlan {
    long long id = 0;
    std::string ipncid;
    std::string document; ///< JSON text, as clients sent it, with its id
    friend bool operator==(const LinkPlan&, const LinkPlan&) = default;
};

// All of these work in the caller's transaction and throw what the connection throws.

/// The device's plans in the order of their ids.
std::vector<LinkPlan> plansOf(soci::session& sql, const std::string& ipncid);
/// All plans, by device, in the order of their ids.
std::map<std::string, std::vector<LinkPlan>> allPlans(soci::session& sql);
std::optional<LinkPlan> planById(soci::session& sql, long long id);
/// An id that no plan has had.
long long newPlanId(soci::session& sql);
void insertPlan(soci::session& sql, const LinkPlan& plan);
void setPlanDocument(soci::session& sql, long long id, const std::string& document);
void removePlan(soci::session& sql, long long id);

/// An alarm that was raised. Times are milliseconds since the beginning of 1970, UTC.
struct AlarmRow {
    long long id = 0; ///< grows with every alarm
    std::string ipncid;
    long long madeAt = 0;
    std::string savelog; ///< name of its file of sensor data; empty when it has none
    std::string message; ///< JSON text, as clients are told
};

/// Enters an alarm under an id of its own.
void insertAlarm(soci::session& sql, const AlarmRow& alarm);
/// The id of the alarm entered last; 0 when there was none yet.
long long lastAlarmId(soci::session& sql);
/// Alarms with greater ids, in order, at most `most`.
std::vector<AlarmRow> alarmsAfter(soci::session& sql, long long id, int most);
/// True when an alarm of this device has this file of sensor data.
bool hasSavelog(soci::session& sql, const std::string& ipncid, const std::string& savelog);
void forgetAlarmsBefore(soci::session& sql, long long madeAt);

/// A device in the eyes of linkage.
struct LinkedDeviceRow {
    std::string ipncid;
    std::string name;
    std::string origin;
    bool online = true;
    std::string interfaces; ///< JSON text, as in `Device`
    std::string extend;
    friend bool operator==(const LinkedDeviceRow&, const LinkedDeviceRow&) = default;
};
/// Every device that an account owns.
std::vector<LinkedDeviceRow> linkedDevices(soci::session& sql);

} // namespace ipncsdk::store
