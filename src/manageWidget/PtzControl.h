#pragma once

#include <QVariantMap>

#include <functional>
#include <utility>

namespace corvanta::manage {

/// A way in which a camera is moved while something is held: -1, 0 or 1 each.
struct PtzMotion {
    int pan = 0;   ///< 1: right
    int tilt = 0;  ///< 1: up
    int zoom = 0;  ///< 1: nearer
    int focus = 0; ///< 1: far
    int iris = 0;  ///< 1: open
    int speed = 5; ///< 1 to 10

    bool turns() const { return pan != 0 || tilt != 0 || zoom != 0; }
    bool isStill() const { return !turns() && focus == 0 && iris == 0; }
};

/// Says what a camera is told while keys and buttons are held: the movement at once, again every 2 s, the stop when
/// they are released. One message is on its way at a time; of what was wanted meanwhile the newest counts. A reply
/// that does not come holds nothing up for longer than 3 s, so that a stop reaches the camera.
///
/// The clock is handed in, ms from any beginning. One thread.
class PtzControl final {
public:
    static constexpr qint64 RenewAfter = 2000;  ///< ms; the camera stops by itself after 10 s
    static constexpr qint64 ReplyWithin = 3000; ///< ms

    /// Sends these commands to the camera; a reply comes by `answered`.
    using Send = std::function<void(const QVariantMap& commands)>;

    explicit PtzControl(Send send)
        : send_(std::move(send)) {}

    void hold(const PtzMotion& motion, qint64 now);
    void release(qint64 now) { hold({}, now); }
    /// The reply to the message on its way. A camera that refuses is not asked again until something else is held.
    void answered(bool ok, qint64 now);
    /// To be called several times a second while it `isBusy`.
    void tick(qint64 now);
    /// Stops the camera without waiting for a reply, if it moves; the last message.
    void finish();

    bool isBusy() const { return waiting_ || !wanted_.isStill() || !told_.isStill(); }

private:
    void next(qint64 now);
    void send(const QVariantMap& commands, qint64 now);

    Send send_;
    PtzMotion wanted_;
    PtzMotion told_; ///< by the last message that was sent
    bool waiting_ = false;
    qint64 sentAt_ = 0;
};

} // namespace corvanta::manage
