#include "manageWidget/PtzLine.h"

#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "manageWidget/ManageLog.h"

#include <array>
#include <utility>

using corvanta::manage::PtzMotion;

namespace {
constexpr int TickEvery = 250; // ms

struct Wording {
    int PtzMotion::*axis;
    const char* less;
    const char* more;
};
constexpr std::array Wordings{Wording{&PtzMotion::pan, "左", "右"}, Wording{&PtzMotion::tilt, "下", "上"},
                              Wording{&PtzMotion::zoom, "缩小", "放大"},
                              Wording{&PtzMotion::focus, "聚焦近", "聚焦远"},
                              Wording{&PtzMotion::iris, "光圈关", "光圈开"}};

/// For the log, whose rows are Chinese in every language.
QString textOf(const PtzMotion& motion) {
    QStringList parts;
    for (const Wording& wording : Wordings) {
        const int way = motion.*wording.axis;
        if (way != 0)
            parts += QString::fromUtf8(way > 0 ? wording.more : wording.less);
    }
    return parts.join(QLatin1Char(' '));
}

/// Whether this is more than the end of a movement.
bool moves(const QVariantMap& commands) {
    return commands.contains(QStringLiteral("ptzmove")) || commands.value(QStringLiteral("ptzfocus")).toInt() != 0 ||
           commands.value(QStringLiteral("ptziris")).toInt() != 0;
}
} // namespace

PtzLine::PtzLine(SdkGateway& gateway, OperationLog& log, QObject* parent)
    : QObject(parent)
    , gateway_(gateway)
    , log_(log)
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
    if (!std::exchange(isHeld_, !motion.isStill()) && isHeld_)
        begun_ = textOf(motion);
    control_.hold(motion, clock_.elapsed());
    if (control_.isBusy())
        tick_.start();
}

void PtzLine::stopNow() {
    isHeld_ = false;
    control_.finish();
    ++message_; // replies that are still to come are nobody's
    tick_.stop();
}

void PtzLine::home() {
    const auto onReply = [this, device = device_](const QVariantMap& reply) {
        if (corvanta::serverErrors::isSuccess(reply))
            write(QStringLiteral("云台回到初始位置"), device);
        else
            emit sigProblem(corvanta::serverErrors::textOfReply(reply));
    };
    const auto onSilence = [this] {
        emit sigProblem(corvanta::serverErrors::noReplyText());
    };
    gateway_.request(request({{QStringLiteral("ptzhome"), 1}}), this, gateway_.orSilence(this, onReply, onSilence));
}

void PtzLine::send(const QVariantMap& commands) {
    const int number = ++message_;
    const QString begun = moves(commands) ? std::exchange(begun_, {}) : QString();
    const auto onReply = [this, number, begun, device = device_](const QVariantMap& reply) {
        const bool ok = corvanta::serverErrors::isSuccess(reply);
        if (ok && !begun.isEmpty())
            write(QStringLiteral("移动摄像机"), device + QLatin1Char(' ') + begun);
        if (number != message_)
            return;
        control_.answered(ok, clock_.elapsed());
        if (!ok)
            emit sigProblem(corvanta::serverErrors::textOfReply(reply));
    };
    const auto onSilence = [this, number] {
        if (number == message_) // while something is held, it is told again and again
            emit sigProblem(corvanta::serverErrors::noReplyText());
    };
    gateway_.request(request(commands), this, gateway_.orSilence(this, onReply, onSilence));
}

std::string PtzLine::request(const QVariantMap& commands) const {
    return corvanta::requests::deviceRequest(
        QStringLiteral("云台控制"), {{QStringLiteral("ipncid"), device_}, {QStringLiteral("cmdlist"), commands}});
}

void PtzLine::write(const QString& what, const QString& detail) {
    corvanta::manage::logChange(log_, gateway_.phoneId(), what, detail);
}
