#include "video/ui/PictureBeat.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int shortestPeriod = 16; // ms; no screen needs more
constexpr int longestPeriod = 66;  // ms; a slow stream's picture need not wait longer
constexpr int periodAtFirst = 33;  // ms, until a rate is known
constexpr int restAfter = 1000;    // ms without a picture
constexpr int measureEvery = 1000; // ms
/// How much faster than the streams the beat is. Pictures do not come evenly: a busy machine brings them some
/// milliseconds early or late.
constexpr double lead = 1.15;

} // namespace

PictureBeat::PictureBeat(QObject* parent)
    : QObject(parent) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(periodAtFirst);
    connect(&timer_, &QTimer::timeout, this, &PictureBeat::beat);
}

void PictureBeat::add(PictureReceiver& receiver) {
    members_.push_back({&receiver, receiver.receivedPictures()});
}

void PictureBeat::remove(PictureReceiver& receiver) {
    members_.erase(std::remove_if(members_.begin(), members_.end(),
                                  [&](const Member& member) { return member.receiver == &receiver; }),
                   members_.end());
}

int PictureBeat::periodFor(double picturesPerSecond) {
    if (picturesPerSecond <= 0)
        return periodAtFirst;
    const double period = 1000.0 / (picturesPerSecond * lead);
    return std::clamp(static_cast<int>(std::floor(period)), shortestPeriod, longestPeriod);
}

void PictureBeat::wake() {
    if (!isResting())
        return;
    sincePicture_.start();
    sinceMeasured_.start();
    for (Member& member : members_)
        member.received = member.receiver->receivedPictures();
    timer_.start();
    beat();
}

void PictureBeat::beat() {
    bool any = false;
    for (const Member& member : members_)
        any = member.receiver->takePicture() || any;
    if (any) {
        sincePicture_.start();
        emit sigPicturesTaken();
    } else if (sincePicture_.elapsed() >= restAfter) {
        tryToRest();
    }
    if (sinceMeasured_.elapsed() >= measureEvery)
        measureRate();
}

void PictureBeat::tryToRest() {
    bool allRest = true;
    for (const Member& member : members_)
        allRest = member.receiver->rest() && allRest;
    if (allRest)
        timer_.stop();
}

void PictureBeat::measureRate() {
    const double seconds = static_cast<double>(sinceMeasured_.restart()) / 1000.0;
    std::uint32_t most = 0;
    for (Member& member : members_) {
        const std::uint32_t now = member.receiver->receivedPictures();
        most = std::max(most, now - member.received);
        member.received = now;
    }
    // A stream counted over one second is off by one picture either way.
    const int wanted = periodFor(std::max(0.0, most / seconds));
    if (most > 1 && std::abs(wanted - timer_.interval()) > 2)
        timer_.setInterval(wanted);
}
