#pragma once

#include "api/AlarmBook.h"
#include "api/AlarmDesk.h"
#include "api/AlarmFeed.h"
#include "api/AlarmPictures.h"
#include "api/VideoHub.h"
#include "base/Clock.h"
#include "device/NetworkCameras.h"
#include "device/ServiceConfig.h"
#include "service/NoticeBroker.h"
#include "service/Outbox.h"
#include "service/Session.h"
#include "store/Database.h"
#include "store/DatabaseFile.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace ipncsdk::api {

/// Linkage, alarms and notifications of one SDK: what evaluates, what tells the client, what notifies people.
class AlarmService final {
public:
    struct Parts {
        store::Database& database;
        const device::NetworkCameras& cameras;
        const Clock& clock;
        const service::Session& session;
        service::Outbox& outbox;
        VideoHub& hub;
        std::optional<device::NoticesConfig> notices;
        std::unique_ptr<store::ChangeProbe> changes; ///< of the store; null without a store
        std::filesystem::path datFolder;             ///< of the files of sensor data
        std::filesystem::path root;
        bool followsVideo = true; ///< recordings begin before their alarms
        std::function<void(std::function<void()>)> onServiceWorker;
        std::function<std::string(const std::string&)> deliver; ///< sends a message to the client; its reply
        std::function<void(const std::string&)> notice;         ///< a sentence for the user
        std::function<std::optional<media::Subscription>(const std::string&)>
            lightStream; ///< as `AlarmFeed` wants it
    };

    explicit AlarmService(Parts parts);
    AlarmService(const AlarmService&) = delete;
    AlarmService& operator=(const AlarmService&) = delete;

    /// Takes what is read of sensors. Evaluates nothing before it was attached to outputs.
    AlarmDesk& desk() { return desk_; }
    /// As those of `AlarmFeed`; on the service worker.
    void look() { feed_.look(); }
    void listsChanged();
    /// Ends everything, once the service worker has ended and the hub was stopped.
    void stop();

private:
    AlarmBook::Parts bookParts();

    Parts parts_;
    const std::unique_ptr<service::NoticeBroker> broker_; ///< null where none is configured
    AlarmBook book_;
    AlarmPictures pictures_;
    AlarmFeed feed_;
    AlarmDesk desk_;
};

} // namespace ipncsdk::api
