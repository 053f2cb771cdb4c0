#pragma once

#include "base/CallbackGate.h"

#include <QObject>
#include <QVariantMap>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace ipncsdk {
class ZELIPNCSDK;
}
class TaskQueue;

/// The client's side of the SDK boundary for requests and documents.
///
/// Lives in the GUI thread; its members are called there. No callback of the SDK gets past it after `shutdown`.
class SdkGateway final : public QObject {
    Q_OBJECT
public:
    using SdkThreadCallback = std::function<void(const std::string&)>;
    using GuiCallback = std::function<void(const QVariantMap&)>;

    /// `sdk` and `queue` (which lives in the GUI thread) outlive the gateway.
    SdkGateway(ipncsdk::ZELIPNCSDK& sdk, TaskQueue& queue, QObject* parent = nullptr);
    ~SdkGateway() override;

    /// Sends a request and returns its id (0 or less: not sent). `onResponse` runs on threads of the SDK for each
    /// response, also for those that come before this call returns, as long as `gate` is open.
    int RequestMessage(const std::string& json, SdkThreadCallback onResponse, std::shared_ptr<CallbackGate> gate);

    /// Sends a request; `onReply` runs in the GUI thread for each response, while `receiver` lives.
    int request(const std::string& json, QObject* receiver, GuiCallback onReply);

    /// Runs `task` in the GUI thread, if `gate` is open then still. Any thread, inside a passage of the gate; the
    /// gate is one that the GUI thread closes.
    void inGui(std::shared_ptr<CallbackGate> gate, std::function<void()> task);

    /// Runs `task` in the GUI thread after everything that the SDK has delivered so far, while `receiver` lives. GUI
    /// thread.
    void laterInGui(QObject* receiver, std::function<void()> task);
    /// Runs what the SDK has delivered so far, at once. GUI thread; not from inside a delivery.
    void deliverPending();

    /// Ends a request by its id; 0 and less are ignored.
    void StopRequest(int requestId);

    /// Hands a command or document to the SDK; `onResult` (may be empty) runs in the GUI thread while `receiver`
    /// lives.
    void setConfig(const std::string& json, QObject* receiver = nullptr, GuiCallback onResult = {});

    /// Hands a command to the SDK that comes many times a second: it is not logged, and its result is nobody's.
    void handOver(const std::string& json);

    /// A document of the SDK, empty where there is none.
    QVariantMap document(const QString& type);
    /// The phone number of the signed-in account.
    QString phoneId();

    /// `onReply`, for one request that is sent now: where no reply comes within the gateway's patience, `onSilence`
    /// runs once, while `receiver` lives. A reply that comes later is still handed on.
    GuiCallback orSilence(QObject* receiver, GuiCallback onReply, std::function<void()> onSilence) const;

    /// How long a reply is waited for before the user is told that none came.
    std::chrono::milliseconds patience() const { return patience_; }
    void setPatience(std::chrono::milliseconds patience) { patience_ = patience; }

    /// Lets no response through any more; returns when none is inside.
    void shutdown();

private:
    SdkThreadCallback toGui(QObject* receiver, GuiCallback onReply);

    ipncsdk::ZELIPNCSDK& sdk_;
    TaskQueue& queue_;
    std::chrono::milliseconds patience_{15000};
    std::shared_ptr<CallbackGate> gate_ = std::make_shared<CallbackGate>();
};
