#pragma once

#include "device/NetworkCameras.h"
#include "service/ReportRule.h"
#include "service/TextMessage.h"
#include "store/Accounts.h"

#include <string>
#include <vector>

namespace ipncsdk::service {

/// What rules look at in an alarm.
struct AlarmNews {
    std::string type; ///< `thresholdReport`, `offlineReport` or `otherReport`
    int level = 0;    ///< 0: it has none
    std::string ipncid;
    std::string source; ///< what raised it: messages about one source are limited
    std::string text;
    TemplateValues values;
    long long madeAt = 0; ///< milliseconds since the beginning of 1970, UTC
};

/// A text message to be sent; its record stands in the store as one that failed until it has left.
struct AlarmMessage {
    long long record = 0;
    store::AccountId account = 0;
    long long cost = 0; ///< taken from the account's balance, to be given back when it fails
    TextMessage message;
};

struct AppNotice {
    std::string phone;
    Json content;
};

struct Outgoing {
    std::vector<AlarmMessage> messages;
    std::vector<AppNotice> notices;
};

/// Finds by the rules of all accounts who is told of alarms.
///
/// A rule counts for devices that its account owns or may read the parameters of, and reaches the account itself and
/// those of its numbers that are friends now. A text message to one number about one source leaves at most once a
/// minute. Each costs one of the account's for every 70 characters.
class AlarmNotices final {
public:
    static constexpr std::size_t charactersOfMessage = 70;

    explicit AlarmNotices(const device::NetworkCameras& cameras)
        : cameras_(cameras) {}

    /// Adds what has to be sent. In the caller's transaction, to which records and balances belong.
    void make(soci::session& sql, const std::vector<AlarmNews>& news, Outgoing& outgoing) const;

private:
    const device::NetworkCameras& cameras_;
};

} // namespace ipncsdk::service
