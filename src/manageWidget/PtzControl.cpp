#include "manageWidget/PtzControl.h"

namespace corvanta::manage {
namespace {

bool turnsAlike(const PtzMotion& one, const PtzMotion& other) {
    return one.pan == other.pan && one.tilt == other.tilt && one.zoom == other.zoom &&
           (one.speed == other.speed || !one.turns());
}

bool isSame(const PtzMotion& one, const PtzMotion& other) {
    return turnsAlike(one, other) && one.focus == other.focus && one.iris == other.iris;
}

QVariantMap turn(const PtzMotion& motion) {
    return {{QStringLiteral("pan"), motion.pan},
            {QStringLiteral("tilt"), motion.tilt},
            {QStringLiteral("zoom"), motion.zoom},
            {QStringLiteral("speed"), motion.speed}};
}

/// What brings a camera from one motion to another.
QVariantMap change(const PtzMotion& from, const PtzMotion& to) {
    QVariantMap commands;
    if (to.turns() && !turnsAlike(from, to))
        commands.insert(QStringLiteral("ptzmove"), turn(to));
    else if (from.turns() && !to.turns())
        commands.insert(QStringLiteral("ptzstop"), 1);
    if (from.focus != to.focus)
        commands.insert(QStringLiteral("ptzfocus"), to.focus);
    if (from.iris != to.iris)
        commands.insert(QStringLiteral("ptziris"), to.iris);
    return commands;
}

} // namespace

void PtzControl::hold(const PtzMotion& motion, qint64 now) {
    wanted_ = motion;
    next(now);
}

void PtzControl::answered(bool ok, qint64 now) {
    waiting_ = false;
    if (!ok) {
        wanted_ = {};
        told_ = {};
    }
    next(now);
}

void PtzControl::tick(qint64 now) {
    if (waiting_ && now - sentAt_ >= ReplyWithin)
        waiting_ = false;
    next(now);
}

void PtzControl::next(qint64 now) {
    if (waiting_)
        return;
    if (!isSame(told_, wanted_))
        send(change(told_, wanted_), now);
    else if (!wanted_.isStill() && now - sentAt_ >= RenewAfter)
        send(change({}, wanted_), now);
}

void PtzControl::send(const QVariantMap& commands, qint64 now) {
    told_ = wanted_;
    waiting_ = true;
    sentAt_ = now;
    send_(commands);
}

void PtzControl::finish() {
    wanted_ = {};
    const PtzMotion moving = std::exchange(told_, {});
    waiting_ = false;
    if (!moving.isStill())
        send_(change(moving, {}));
}

} // namespace corvanta::manage
