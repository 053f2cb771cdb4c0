#include "manageWidget/PtzLine.h"

#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"

using corvanta::manage::PtzMotion;

namespace {
constexpr int TickEvery = 250; // ms
} // namespace

PtzLine::PtzLine(SdkGateway& gateway, QObject* parent)
    : QObject(parent)
    , gateway_(gateway)
    , control_([this](const QVariantMap& commands) { send(commands); }) {
    clock_.start();
    tick_.setInterval(TickEvery);
    connect(&tick_, &QTimer::timeout, this, [this] {
        control_.tick(clock_.elapsed());
        if (!control_.isBusy())
            tick_.stop();
    });
}

PtzLine::~PtzLine() {
    control_.finish();
}

void PtzLine::setDevice(const QString& ipncId) {
    if (ipncId == device_)
        return;
    stopNow();
    device_ = ipncId;
}

void PtzLine::hold(const PtzMotion& motion) {
    if (device_.isEmpty())
        return;
    control_.hold(motion, clock_.elapsed());
    if (control_.isBusy())
        tick_.start();
}

void PtzLine::stopNow() {
    control_.finish();
    ++message_; // replies that are still to come are nobody's
    tick_.stop();
}

void PtzLine::send(const QVariantMap& commands) {
    const int number = ++message_;
    const auto onReply = [this, number](const QVariantMap& reply) {
        if (number != message_)
            return;
        const bool ok = corvanta::serverErrors::isSuccess(reply);
        control_.answered(ok, clock_.elapsed());
        if (!ok)
            emit sigProblem(corvanta::serverErrors::textOfReply(reply));
    };
    const std::string json = corvanta::requests::deviceRequest(
        QStringLiteral("云台控制"), {{QStringLiteral("ipncid"), device_}, {QStringLiteral("cmdlist"), commands}});
    gateway_.request(json, this, onReply);
}
