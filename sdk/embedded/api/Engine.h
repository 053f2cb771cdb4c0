#pragma once

#include "api/AlarmService.h"
#include "api/CallbackKeeper.h"
#include "api/CameraControl.h"
#include "api/CameraFinder.h"
#include "api/ClientChannel.h"
#include "api/DeviceFiles.h"
#include "api/DeviceWatch.h"
#include "api/Request.h"
#include "api/SensorRequests.h"
#include "api/SensorService.h"
#include "api/StoreWatch.h"
#include "api/UserFiles.h"
#include "api/VideoHub.h"
#include "api/VideoService.h"
#include "api/Worker.h"
#include "base/Clock.h"
#include "base/JsonText.h"
#include "device/DeviceRequests.h"
#include "device/FoundCameras.h"
#include "device/LoopDevice.h"
#include "device/NetworkCameras.h"
#include "device/ServiceConfig.h"
#include "ipncsdk/ZELIPNCSDK.h"
#include "onvif/Discovery.h"
#include "sensor/LatestValues.h"
#include "service/AccountService.h"
#include "service/Documents.h"
#include "service/Outbox.h"
#include "service/PasswordHasher.h"
#include "service/TextMessage.h"
#include "store/ContentFiles.h"
#include "store/Database.h"
#include "store/StoreKey.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace ipncsdk::api {

struct RuntimeOptions {
    std::filesystem::path root; ///< where relative paths start; empty: the directory current at start-up
    std::shared_ptr<const Clock> clock = std::make_shared<Clock>();
    HubFactory makeHub;
    service::PasswordHasher::Cost passwordCost = service::PasswordHasher::interactive();
    std::chrono::milliseconds storeTimeout{5000}; ///< how long another program may hold the store
    onvif::DiscoveryOptions discovery;            ///< how "freshlocal" searches
    bool sensors = true;                          ///< boards are read, here or by another process on the store
    bool followsVideo = true; ///< cameras with linkage plans are followed, for recordings that begin before an alarm
};

/// Everything that lives between start-up and clean-up. All members are callable from any thread, also from inside
/// callbacks, but for `stop`. After `stop` they do nothing.
class Engine final {
public:
    /// Starts. Throws when threads or the hub can't be made; a store that can't be used is reported and survived.
    Engine(const RuntimeOptions& options, std::filesystem::path root, std::atomic<int>& lastRequestId);
    /// `stop` must have been called.
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    void setClientCallback(ZELIPNCSDK::ClientCallback callback);
    void request(const std::string& text, int& requestId, ZELIPNCSDK::ResponseCallback callback);
    void stopRequest(int requestId);
    void command(const std::string& text, ZELIPNCSDK::ResponseCallback callback);
    emReturnValue document(const std::string& query, std::string& out) const;

    /// Ends every request and joins every thread. Not callable from inside a callback.
    void stop();
    [[nodiscard]] bool isInsideCallback() const { return keeper_.isInside(); }

private:
    using RequestPointer = std::shared_ptr<Request>;
    using Handler = void (Engine::*)(const RequestPointer& request, const Json& message);

    /// A kind of message and what answers it, on the service worker.
    struct Route {
        const char* name;
        Handler handle;
    };
    static const std::vector<Route>& families();
    static const std::vector<Route>& commands();
    static Handler find(const std::vector<Route>& routes, const std::string& name);

    media::HubOptions hubOptions();
    /// Where the sensor data of alarms lie, for all processes on the store.
    [[nodiscard]] std::filesystem::path datFolder() const;
    void openStore(const RuntimeOptions& options, device::ServiceConfig config);
    std::unique_ptr<AlarmService> makeAlarms(const RuntimeOptions& options,
                                             std::optional<device::NoticesConfig> config);
    void startSensors(const RuntimeOptions& options);
    void notice(const std::string& text);
    void deliverNotices();
    /// Acts on what others have done to the session or to the lists of its account. On the service worker; at the
    /// beginning of every request, so that none is done for a session that is over.
    void lookAround();
    /// Ends the streams and tells the client that nobody is signed in any more.
    void loggedOut(const std::string& reason);
    /// Ends what may not be watched any more and has the client read its lists again.
    void listsChanged();
    /// Has the client read its maps and files again.
    void filesChanged();
    /// Acts on what a request has brought about besides its answer.
    void actOn(const service::AccountService::Outcome& outcome);
    /// Enters an upload that was received. Any thread.
    void keepUpload(const RequestPointer& request, service::Upload upload);
    /// Enters what devices have done by themselves. On the service worker.
    void settleDevices();
    /// Sends the message from a thread of its own and answers the request then.
    void sendMessage(const RequestPointer& request, const service::TextMessage& message, const std::string& response,
                     const std::string& refusal);
    /// Sends an unsolicited message from the service worker, behind what it does now.
    void tell(const Json& message);
    int nextRequestId();
    /// Runs a handler on the service worker.
    void enqueue(const RequestPointer& request, Handler handler, Json message);
    void respond(const RequestPointer& request, const std::string& response);

    void accountRequest(const RequestPointer& request, const Json& message);
    void deviceRequest(const RequestPointer& request, const Json& message);
    void serverRequest(const RequestPointer& request, const Json& message);
    void videoRequest(const RequestPointer& request, const Json& message);
    void cameraRequest(const RequestPointer& request, const Json& message);
    void downloadRequest(const RequestPointer& request, const Json& message);
    void uploadRequest(const RequestPointer& request, const Json& message);
    void userUploadRequest(const RequestPointer& request, const Json& message);
    void newestVersionRequest(const RequestPointer& request, const Json& message);
    void previewRequest(const RequestPointer& request, const Json& message);
    void unknownRequest(const RequestPointer& request, const Json& message);

    void loginCommand(const RequestPointer& request, const Json& message);
    void logoutCommand(const RequestPointer& request, const Json& message);
    void freshListCommand(const RequestPointer& request, const Json& message);
    void freshLocalCommand(const RequestPointer& request, const Json& message);
    void setNetCommand(const RequestPointer& request, const Json& message);
    void wirelessCommand(const RequestPointer& request, const Json& message);
    void measuringCommand(const RequestPointer& request, const Json& message);
    void videoChangeCommand(const RequestPointer& request, const Json& message);
    void versionCommand(const RequestPointer& request, const Json& message);
    void tryCommand(const RequestPointer& request, const Json& message);
    void unknownCommand(const RequestPointer& request, const Json& message);

    const std::filesystem::path root_;
    const std::shared_ptr<const Clock> clock_;
    std::atomic<int>& lastRequestId_;
    std::atomic<bool> stopping_{false};

    // From here on in the order in which one needs the other.
    CallbackKeeper keeper_;
    ClientChannel channel_{keeper_};
    RequestTable requests_;
    std::mutex noticeMutex_;
    std::vector<std::string> notices_; ///< guarded by noticeMutex_; wait for a client callback
    std::filesystem::path storeFile_;  ///< set at start-up, then read only
    store::Database database_;
    store::StoreKey key_; ///< set at start-up, then read only
    store::ContentFiles contents_;
    device::NetworkCameras cameras_;
    service::AccountService accounts_;
    device::FoundCameras found_;
    sensor::LatestValues latest_;
    sensor::SampleRetention retention_;
    service::Documents documents_{database_, cameras_, found_, accounts_, latest_};
    device::LoopDevices loops_;
    device::DeviceRequests devices_{database_, cameras_, key_, loops_};
    std::unique_ptr<VideoHub> hub_;
    std::unique_ptr<service::Outbox> outbox_;
    Worker service_{1};
    Worker pictures_{2};
    Worker messages_{2}; ///< waits for the gateway
    Worker network_{2};  ///< searches for cameras, asks those that are not known yet
    Worker cameraTalk_{2};
    Worker files_{1};
    std::unique_ptr<CameraFinder> finder_;
    std::unique_ptr<CameraControl> cameraControl_;
    std::unique_ptr<VideoService> video_;
    std::unique_ptr<DeviceFiles> deviceFiles_;
    std::unique_ptr<UserFiles> userFiles_;
    std::unique_ptr<SensorService> sensors_;
    std::unique_ptr<SensorRequests> sensorRequests_;
    std::unique_ptr<StoreWatch> watch_;
    std::unique_ptr<DeviceWatch> deviceWatch_;
    std::unique_ptr<AlarmService> alarms_;
};

} // namespace ipncsdk::api
