#pragma once

#include "app/ClientCallback.h"
#include "base/AppContext.h"
#include "base/AppEvents.h"
#include "base/AppPaths.h"
#include "base/CallbackGate.h"
#include "base/DeviceModel.h"
#include "base/InputFields.h"
#include "base/ScreenPoll.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/TaskQueue.h"

#include <QThread>

#include <memory>
#include <optional>
#include <vector>

class AccountFlags;
class AlarmSound;
class AppUi;
class PasswordVault;
class RecordingStorage;
class RepairThread;
class SqlHelp;

namespace corvanta::linkage {
class AlarmHandler;
class AlarmInbox;
} // namespace corvanta::linkage

namespace corvanta::update {
class VersionCheck;
}

namespace corvanta::vision {
class VideoMeasurer;
} // namespace corvanta::vision

/// The heart of the program: owns the SDK's client side and what is known of the account, and turns the SDK's
/// messages into signals. Its slots call the part that does the work.
///
/// Lives in the GUI thread. The application object outlives it: the one of `instance()` is destroyed at the
/// beginning of the application object's own destruction.
class AppManager final : public AppEvents, private ClientEvents {
    Q_OBJECT
public:
    /// `ui` and `sdk` outlive the manager.
    AppManager(const AppPaths& paths, AppUi& ui, ipncsdk::ZELIPNCSDK& sdk);
    ~AppManager() override;

    /// What the first `instance()` is made with.
    static void prepare(const AppPaths& paths, AppUi& ui);
    /// The process's manager, made at the first call; `prepare` comes before it.
    static AppManager* instance();

    /// Sends a request and returns the id that the SDK gave it. The callback runs on threads of the SDK.
    int RequestMessage(const std::string& json, std::function<void(const std::string&)> onResponse);
    void StopRequest(int requestId);

    /// Asks the SDK for the device list, or for the list of local devices. The mode "刷新" clears the tree first.
    void refreshList(const QString& mode);
    void refreshLocalList(const QString& mode);

    /// Starts or stops the screen polling.
    void setPollValue(ScreenPoll::Mode mode) { poll_.setPollValue(mode); }
    QStringList getNextPollDevices() { return poll_.getNextPollDevices(devices_); }

    QVariant setting(const QString& key) const { return settings_.get(key); }
    const QVariantMap& localDevices() const { return localDevices_; }
    /// Stores a single field of an input's record ("earliesttime", "latesttime", "state", "value").
    void setInputField(const QString& key, int pid, const QVariant& value) { inputFields_.set(key, pid, value); }
    /// The same field; invalid while it is not known.
    QVariant inputField(const QString& key, int pid) const { return inputFields_.value(key, pid); }
    bool isSignedIn() const { return signedIn_; }

    /// Writes the description of the version that lies in `folder` into it, for the update server. Returns what went
    /// wrong. A task of who publishes versions; needs no instance.
    static std::optional<QString> writeVersionFile(const QString& folder);

    /// What windows and dialogs are handed.
    AppContext context();
    /// Where files of devices are kept.
    RecordingStorage& storage() { return *storage_; }

public slots:
    void autoLogin();
    void ontip(const QString& title, const QString& context);
    void onLoginTip(bool isAuto = false);
    void onlogout();
    void onlogin();
    void deviceFresh();
    /// Everything that follows an alarm.
    void TriggerAlarm(const QVariantMap& AlarmMap);
    /// Reports the position (x, y and z as texts) that the video of an alarm showed, to the device that is told of.
    void OngetVideoQRcodepoint(const QStringList& resultList);
    void onUpdateList();
    void onFreshlocal();
    void onWait(bool isWait, QRect WindowsRect, int waitTime);
    void OncloseTcpConnect(TcpSocketManage* connection);
    /// The sound of a type of alarms, by the type's text.
    void playalarmMusic(const QString& type);
    /// The user has agreed to leave: the sign-out is written down, cached values and names are forgotten. Once.
    void onAppClosed();

private:
    void startSdk();
    void startWorker();
    void connectSignals();
    void loadTimeZones();
    void prepareStorage();
    void logSignOut();

    void listReady() override;
    void localListReady(const QVariantMap& devices) override;
    void signedOut(const QString& reason) override;
    void sensorValues(const QString& time, const QVariantList& values) override;
    void alarm(const QVariantMap& message) override;
    void sdkCrashed() override;
    void notice(const QString& text) override;
    void textMessage(const QVariantMap& message) override;
    void userInfoChanged() override;
    void connectionMade(TcpSocketManage* connection) override;
    void connectionClosed(TcpSocketManage* connection) override;

    AppPaths paths_;
    AppUi& ui_;
    ipncsdk::ZELIPNCSDK& sdk_;
    Settings settings_;
    ScreenPoll poll_;
    std::unique_ptr<AccountFlags> accountFlags_;
    std::unique_ptr<PasswordVault> vault_;
    std::unique_ptr<SqlHelp> database_; ///< opened by the constructor
    TaskQueue queue_; ///< from SDK threads to here; outlives the storage, the gateway and the callback
    std::unique_ptr<RecordingStorage> storage_;
    SdkGateway gateway_;
    ClientCallback clientCallback_;
    std::shared_ptr<CallbackGate> clientGate_ = std::make_shared<CallbackGate>(); ///< open until `Cleanup`
    DeviceModel devices_;
    InputFields inputFields_;
    QVariantMap localDevices_; ///< the last non-empty list of devices on the local network
    QVariantList timeZones_;
    QVariantMap userInfo_; ///< the document of maps and icons, as it was last told of
    QThread worker_;       ///< for work in the background
    std::unique_ptr<RepairThread> repair_;
    std::unique_ptr<corvanta::vision::VideoMeasurer> measurer_;
    std::unique_ptr<corvanta::linkage::AlarmInbox> alarms_;
    std::unique_ptr<AlarmSound> alarmSound_;
    std::unique_ptr<corvanta::linkage::AlarmHandler> alarmHandler_;
    std::unique_ptr<corvanta::update::VersionCheck> versionCheck_;
    std::vector<std::unique_ptr<TcpSocketManage>> connections_; ///< those that the SDK uses now
    bool signedIn_ = false;
    bool leaving_ = false;
    QString account_; ///< who is signed in, for the login log; known until the sign-out has been written down
};
