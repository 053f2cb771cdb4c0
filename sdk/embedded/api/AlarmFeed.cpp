#include "api/AlarmFeed.h"

#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "linkage/PlanParser.h"
#include "service/LinkageRecords.h"

#include <map>
#include <utility>
#include <vector>

namespace ipncsdk::api {

namespace {

constexpr int atOnce = 500;

bool hasEnabledPlan(const std::vector<store::LinkPlan>& plans) {
    for (const store::LinkPlan& row : plans) {
        std::string fault;
        const auto plan = linkage::parsePlan(Json::parse(row.document, nullptr, false), fault);
        if (plan && plan->enabled)
            return true;
    }
    return false;
}

} // namespace

AlarmFeed::AlarmFeed(Parts parts)
    : parts_(std::move(parts)) {}

void AlarmFeed::look() {
    const auto caller = parts_.session.current();
    if (!service::isSameAccount(caller, account_)) {
        account_ = caller;
        parts_.database.read("look for the last alarm", [this](soci::session& sql) {
            seen_ = store::lastAlarmId(sql);
            return ServiceCode::Done;
        });
        listsChanged();
        return;
    }
    if (!caller)
        return;
    std::vector<Tellable> alarms;
    bool more = true;
    const auto collect = [&](soci::session& sql) {
        std::map<std::string, std::optional<store::PlacedDevice>> devices;
        const auto rows = store::alarmsAfter(sql, seen_, atOnce);
        more = rows.size() == static_cast<std::size_t>(atOnce);
        for (const store::AlarmRow& row : rows) {
            seen_ = row.id;
            const auto [known, isNew] = devices.try_emplace(row.ipncid);
            if (isNew)
                known->second = device::visibleDevice(sql, caller->id, row.ipncid, parts_.cameras);
            if (known->second && device::allows(*known->second, device::Right::Param)) {
                const store::Device& device = known->second->device;
                alarms.push_back({row, service::portsOf(device.interfaces, device.extend).isMeasured});
            }
        }
        return ServiceCode::Done;
    };
    while (more) {
        more = false;
        alarms.clear();
        parts_.database.read("look for alarms", collect);
        for (const Tellable& alarm : alarms)
            tell(alarm);
    }
}

void AlarmFeed::tell(const Tellable& alarm) {
    Json message = Json::parse(alarm.row.message, nullptr, false);
    const Json* const record = memberAt(message, "alarm");
    if (record == nullptr)
        return;
    const Json* const trigger = memberAt(*record, "trigger");
    const auto level = trigger != nullptr ? integerAt(*trigger, "threshold") : std::nullopt;
    if (!level || watched_.count(alarm.row.ipncid) == 0) {
        parts_.tell(toText(message));
        return;
    }
    const AlarmPictures::Wish wish{alarm.row.ipncid, textAt(*record, "datetime").value_or(""), alarm.row.madeAt,
                                   static_cast<int>(*level), alarm.isMeasured};
    message["alarm"]["images"] = {AlarmPictures::pictureName(wish)};
    parts_.tell(toText(message));
    parts_.pictures.take(wish);
}

void AlarmFeed::listsChanged() {
    std::vector<std::string> planned;
    const auto caller = parts_.session.current();
    if (caller) {
        parts_.database.read("look for plans", [&](soci::session& sql) {
            for (const auto& [ipncid, plans] : store::allPlans(sql)) {
                const auto device = device::visibleDevice(sql, caller->id, ipncid, parts_.cameras);
                if (device && device::allows(*device, device::Right::Param) && hasEnabledPlan(plans))
                    planned.push_back(ipncid);
            }
            return ServiceCode::Done;
        });
    }
    std::vector<media::Subscription> streams;
    watched_.clear();
    for (const std::string& ipncid : planned) {
        if (auto stream = parts_.lightStream(ipncid)) {
            watched_.insert(ipncid);
            streams.push_back(std::move(*stream));
        }
    }
    parts_.pictures.follow(std::move(streams));
}

} // namespace ipncsdk::api
