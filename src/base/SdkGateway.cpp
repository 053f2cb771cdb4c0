#include "base/SdkGateway.h"

#include "base/ConfigDocuments.h"
#include "base/JsonText.h"
#include "base/TaskQueue.h"

#include <QDebug>
#include <QPointer>
#include <QTimer>

#include <ipncsdk/ZELIPNCSDK.h>

namespace {

void logRequest(const std::string& json) {
    qDebug().noquote() << QStringLiteral("=====>>>").repeated(10) + QString::fromStdString(json);
}

/// What a reply needs in the GUI thread. Made and used there; the SDK's threads only carry the pointer.
struct Receiver {
    QPointer<QObject> object;
    SdkGateway::GuiCallback onReply;
};

} // namespace

SdkGateway::SdkGateway(ipncsdk::ZELIPNCSDK& sdk, TaskQueue& queue, QObject* parent)
    : QObject(parent)
    , sdk_(sdk)
    , queue_(queue) {}

SdkGateway::~SdkGateway() {
    shutdown();
}

void SdkGateway::shutdown() {
    gate_->close();
}

int SdkGateway::RequestMessage(const std::string& json, SdkThreadCallback onResponse,
                               std::shared_ptr<CallbackGate> gate) {
    logRequest(json);
    int requestId = 0;
    sdk_.RequestMessage(
        json, requestId,
        [own = gate_, gate = std::move(gate), onResponse = std::move(onResponse)](const std::string& response) {
            const CallbackGate::Passage ours(*own);
            const CallbackGate::Passage theirs(*gate);
            if (ours && theirs)
                onResponse(response);
        });
    return requestId;
}

SdkGateway::SdkThreadCallback SdkGateway::toGui(QObject* receiver, GuiCallback onReply) {
    auto target = std::make_shared<Receiver>(Receiver{receiver, std::move(onReply)});
    // The last owner may be a thread of the SDK. What it would destroy there (a guarded pointer and a function that
    // may hold Qt values) is handed to the GUI thread instead.
    std::shared_ptr<Receiver> guarded(target.get(), [target, queue = &queue_, gate = gate_](Receiver*) mutable {
        const CallbackGate::Passage passage(*gate);
        if (passage)
            queue->post([target = std::move(target)] {});
    });
    return [queue = &queue_, guarded = std::move(guarded)](const std::string& response) {
        queue->post([guarded, response] {
            if (guarded->object != nullptr && guarded->onReply)
                guarded->onReply(corvanta::json::parseObject(response));
        });
    };
}

int SdkGateway::request(const std::string& json, QObject* receiver, GuiCallback onReply) {
    return RequestMessage(json, toGui(receiver, std::move(onReply)), gate_);
}

SdkGateway::GuiCallback SdkGateway::orSilence(QObject* receiver, GuiCallback onReply,
                                              std::function<void()> onSilence) const {
    const auto answered = std::make_shared<bool>(false);
    QTimer::singleShot(patience_, receiver, [answered, onSilence = std::move(onSilence)] {
        if (!*answered)
            onSilence();
    });
    return [answered, onReply = std::move(onReply)](const QVariantMap& reply) {
        *answered = true;
        onReply(reply);
    };
}

void SdkGateway::inGui(std::shared_ptr<CallbackGate> gate, std::function<void()> task) {
    queue_.post([gate = std::move(gate), task = std::move(task)] {
        if (gate->isOpen())
            task();
    });
}

void SdkGateway::laterInGui(QObject* receiver, std::function<void()> task) {
    queue_.post([guarded = QPointer<QObject>(receiver), task = std::move(task)] {
        if (guarded != nullptr)
            task();
    });
}

void SdkGateway::deliverPending() {
    queue_.drain();
}

void SdkGateway::StopRequest(int requestId) {
    if (requestId > 0)
        sdk_.StopRequest(requestId);
}

void SdkGateway::setConfig(const std::string& json, QObject* receiver, GuiCallback onResult) {
    logRequest(json);
    if (!onResult) {
        sdk_.SetConfig(json, {});
        return;
    }
    sdk_.SetConfig(json, [gate = gate_, forward = toGui(receiver, std::move(onResult))](const std::string& result) {
        const CallbackGate::Passage passage(*gate);
        if (passage)
            forward(result);
    });
}

void SdkGateway::handOver(const std::string& json) {
    sdk_.SetConfig(json, {});
}

QVariantMap SdkGateway::document(const QString& type) {
    return corvanta::documents::read(sdk_, type);
}

QString SdkGateway::phoneId() {
    return corvanta::documents::phoneId(sdk_);
}
