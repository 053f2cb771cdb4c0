#include "linkage/AlarmSound.h"

#include "base/Settings.h"
#include "linkage/AlarmTypes.h"

#include <QMediaPlayer>
#include <QUrl>

namespace {
constexpr int BeatMs = 200;
} // namespace

AlarmSound::AlarmSound(const Settings& settings, QObject* parent)
    : QObject(parent)
    , settings_(settings)
    , beat_(BeatMs, Throttle::Edge::Leading, [this] { begin(); }) {}

AlarmSound::~AlarmSound() = default;

void AlarmSound::play(const QString& type) {
    const corvanta::AlarmType* const known = corvanta::reportedAlarmType(type);
    if (known == nullptr || !settings_.get(known->switchKey).toBool())
        return;
    const QString file = settings_.get(known->soundKey).toString();
    if (file.isEmpty())
        return;
    next_ = file;
    beat_.ask();
}

void AlarmSound::begin() {
    if (player_ == nullptr)
        player_ = std::make_unique<QMediaPlayer>();
    player_->setMedia(QUrl::fromLocalFile(next_));
    player_->setVolume(Volume);
    player_->play(); // a file that is not there plays nothing
    emit sigBegun(next_);
}
