#include "api/AlarmBook.h"

#include "api/SensorLog.h"
#include "store/Notices.h"

#include <chrono>
#include <utility>

namespace ipncsdk::api {

AlarmBook::AlarmBook(Parts parts)
    : parts_(std::move(parts))
    , notices_(parts_.cameras) {}

bool AlarmBook::enter(const std::vector<NewAlarm>& alarms) {
    std::vector<service::AlarmNews> news;
    for (const NewAlarm& alarm : alarms) {
        if (alarm.reported)
            news.push_back(alarm.news);
    }
    service::Outgoing outgoing;
    const ServiceCode code = parts_.database.change("enter alarms", [&](soci::session& sql) {
        for (const NewAlarm& alarm : alarms)
            store::insertAlarm(sql, alarm.row);
        if (!news.empty())
            notices_.make(sql, news, outgoing);
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return false;
    parts_.entered();
    for (const service::AlarmMessage& message : outgoing.messages)
        messages_.post([this, message] { send(message); });
    if (parts_.broker != nullptr) {
        for (const service::AppNotice& notice : outgoing.notices)
            parts_.broker->publish(notice.phone, toText(notice.content));
    }
    return true;
}

void AlarmBook::send(const service::AlarmMessage& message) {
    const service::Outbox::Sent sent = parts_.outbox.send(message.message);
    parts_.database.change("note what became of a message", [&](soci::session& sql) {
        if (sent.done)
            store::setSmsState(sql, message.record, "ok");
        else
            store::addToBalance(sql, message.account, message.cost);
        return ServiceCode::Done;
    });
}

void AlarmBook::removeOld() {
    using std::chrono::duration_cast;
    using std::chrono::milliseconds;
    const auto now = duration_cast<milliseconds>(parts_.clock.now().time_since_epoch());
    parts_.database.change("forget old alarms", [&](soci::session& sql) {
        store::forgetAlarmsBefore(sql, (now - duration_cast<milliseconds>(SensorLog::kept)).count());
        return ServiceCode::Done;
    });
}

void AlarmBook::stop() {
    messages_.finish(true);
}

} // namespace ipncsdk::api
