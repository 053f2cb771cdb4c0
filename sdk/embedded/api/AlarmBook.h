#pragma once

#include "api/Worker.h"
#include "base/Clock.h"
#include "device/NetworkCameras.h"
#include "service/AlarmNotices.h"
#include "service/NoticeBroker.h"
#include "service/Outbox.h"
#include "store/Database.h"
#include "store/Linkages.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ipncsdk::api {

/// An alarm on its way into the store.
struct NewAlarm {
    store::AlarmRow row;
    bool reported = false; ///< people are notified
    service::AlarmNews news;
};

/// Enters alarms into the store, from where every process tells its client, and notifies people by the rules.
/// Thread-safe.
class AlarmBook final {
public:
    struct Parts {
        store::Database& database;
        const device::NetworkCameras& cameras;
        const Clock& clock;
        service::Outbox& outbox;
        service::NoticeBroker* broker; ///< null without one
        /// New alarms stand in the store.
        std::function<void()> entered;
    };

    explicit AlarmBook(Parts parts);
    AlarmBook(const AlarmBook&) = delete;
    AlarmBook& operator=(const AlarmBook&) = delete;

    /// All of them or, when the store refuses, none.
    bool enter(const std::vector<NewAlarm>& alarms);
    /// Forgets what nobody asks for any more.
    void removeOld();
    /// Ends the sending of messages; those that wait are not sent.
    void stop();

private:
    void send(const service::AlarmMessage& message);

    const Parts parts_;
    const service::AlarmNotices notices_;
    Worker messages_{2}; ///< waits for the gateway
};

} // namespace ipncsdk::api
