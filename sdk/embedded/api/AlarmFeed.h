#pragma once

#include "api/AlarmPictures.h"
#include "base/Clock.h"
#include "device/NetworkCameras.h"
#include "service/Session.h"
#include "store/Database.h"
#include "store/Linkages.h"

#include <functional>
#include <optional>
#include <set>
#include <string>

namespace ipncsdk::api {

/// Tells the client of the alarms that the store gets, whichever process raised them, and has their pictures taken.
/// On the service worker.
class AlarmFeed final {
public:
    struct Parts {
        store::Database& database;
        const device::NetworkCameras& cameras;
        const service::Session& session;
        AlarmPictures& pictures;
        /// Sends an unsolicited message.
        std::function<void(const std::string&)> tell;
        /// A camera's light stream; nothing when the account may not have its coded frames now.
        std::function<std::optional<media::Subscription>(const std::string& ipncid)> lightStream;
    };

    explicit AlarmFeed(Parts parts);
    AlarmFeed(const AlarmFeed&) = delete;
    AlarmFeed& operator=(const AlarmFeed&) = delete;

    /// Tells what is new. An account is told of alarms from its sign-in on.
    void look();
    /// Devices, rights or plans of the account have changed, or another one is signed in: what is watched for
    /// pictures follows.
    void listsChanged();

private:
    struct Tellable {
        store::AlarmRow row;
        bool isMeasured = false;
    };
    void tell(const Tellable& alarm);

    const Parts parts_;
    std::optional<service::SignedIn> account_; ///< who was signed in at the last look
    long long seen_ = 0;                       ///< the last alarm that was looked at
    std::set<std::string> watched_;            ///< devices of which pictures are taken
};

} // namespace ipncsdk::api
