#pragma once

#include "base/CallbackGate.h"

#include <QVariantMap>

#include <functional>
#include <memory>
#include <string>

class RecordingStorage;
class Settings;
class TaskQueue;
class TcpSocketManage;

/// What the client does about the SDK's unsolicited messages; GUI thread.
class ClientEvents {
public:
    ClientEvents() = default;
    ClientEvents(const ClientEvents&) = delete;
    ClientEvents& operator=(const ClientEvents&) = delete;
    virtual ~ClientEvents() = default;

    virtual void listReady() = 0;
    virtual void localListReady(const QVariantMap& devices) = 0;
    /// `reason` is empty when the service gives none.
    virtual void signedOut(const QString& reason) = 0;
    virtual void sensorValues(const QString& time, const QVariantList& values) = 0;
    virtual void alarm(const QVariantMap& message) = 0;
    virtual void sdkCrashed() = 0;
    virtual void notice(const QString& text) = 0;
    virtual void textMessage(const QVariantMap& message) = 0;
    /// The maps or icons of the account have changed.
    virtual void userInfoChanged() = 0;
    /// Takes over a connection that was made for the SDK.
    virtual void connectionMade(TcpSocketManage* connection) = 0;
    /// The SDK is done with it.
    virtual void connectionClosed(TcpSocketManage* connection) = 0;
};

/// The one callback for unsolicited messages. Runs on threads of the SDK: it answers what is asked at once, and
/// hands everything else to `events` in the GUI thread.
class ClientCallback final {
public:
    /// All outlive the callback's last call.
    ClientCallback(const Settings& settings, const RecordingStorage& storage, TaskQueue& queue, ClientEvents& events);

    /// Any thread of the SDK. `reply` stays as it is unless the message asks for something.
    void operator()(const std::string& message, std::string& reply) const;

    /// How the message types are told apart, in the order in which they are compared.
    enum class Kind {
        FreshList,
        FreshLocal,
        FreshListError,
        Logout,
        ReqAlarmPath,
        SensorDataUpdate,
        Trigger,
        SdkCrash,
        GetSocketDelegate,
        ServiceNotice,
        Sms,
        FreshUserInfo,
        Unknown
    };
    static Kind kindOf(const QString& type);

private:
    void answerAlarmPath(const QVariantMap& message, std::string& reply) const;
    void answerSocketDelegate(std::string& reply) const;
    void inGui(Kind kind, const std::string& message) const;
    void handle(Kind kind, const QVariantMap& message) const;

    const Settings& settings_;
    const RecordingStorage& storage_;
    TaskQueue& queue_;
    ClientEvents& events_;
};
