#include "manageWidget/FlowRequest.h"

#include "base/SdkGateway.h"
#include "base/ServerErrors.h"

namespace {

QString stateOf(const QVariantMap& reply) {
    const QString own = reply.value(QStringLiteral("state")).toString();
    return own.isEmpty() ? reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("state")).toString()
                         : own;
}

} // namespace

FlowRequest::FlowRequest(SdkGateway& gateway, int patienceMs, QObject* parent)
    : QObject(parent)
    , gateway_(gateway) {
    silence_.setSingleShot(true);
    silence_.setInterval(patienceMs > 0 ? patienceMs : static_cast<int>(gateway.patience().count()));
    connect(&silence_, &QTimer::timeout, this, [this] {
        gateway_.StopRequest(requestId_);
        fail(corvanta::serverErrors::noReplyText());
    });
}

FlowRequest::~FlowRequest() {
    cancel();
}

bool FlowRequest::start(const std::string& json) {
    if (running_)
        return false;
    running_ = true;
    const int number = ++number_;
    silence_.start();
    requestId_ = gateway_.request(json, this, [this, number](const QVariantMap& reply) { onReply(number, reply); });
    if (requestId_ <= 0)
        fail(tr("请求发送失败!"));
    return true;
}

void FlowRequest::cancel() {
    if (!running_)
        return;
    running_ = false;
    ++number_;
    silence_.stop();
    gateway_.StopRequest(requestId_);
}

void FlowRequest::onReply(int number, const QVariantMap& reply) {
    if (number != number_ || !running_)
        return;
    const QString state = stateOf(reply);
    if (state == QLatin1String("progress")) {
        silence_.start();
        emit sigProgress(reply.value(QStringLiteral("done")).toLongLong(),
                         reply.value(QStringLiteral("total")).toLongLong());
        return;
    }
    if (state != QLatin1String("ok")) {
        fail(corvanta::serverErrors::textOfReply(reply));
        return;
    }
    running_ = false;
    ++number_;
    silence_.stop();
    emit sigDone(reply);
}

void FlowRequest::fail(const QString& text) {
    running_ = false;
    ++number_;
    silence_.stop();
    emit sigFailed(text);
}
