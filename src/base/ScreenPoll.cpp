#include "base/ScreenPoll.h"

#include "base/DeviceModel.h"
#include "base/Settings.h"

#include <QDebug>

#include <algorithm>

namespace keys = corvanta::keys;

namespace {

const QString NameKey = QStringLiteral("name");
const QString DevicesKey = QStringLiteral("ipnclist");

constexpr int ShortestInterval = 1;   // s
constexpr int LongestInterval = 3600; // s
constexpr int RepairedInterval = 5;   // s

} // namespace

PollEntry PollEntry::fromMap(const QVariantMap& map) {
    return {map.value(NameKey).toString(), map.value(DevicesKey).toStringList(), map};
}

QVariantMap PollEntry::toMap() const {
    QVariantMap map = record;
    map.insert(NameKey, name);
    map.insert(DevicesKey, ipncIds);
    return map;
}

ScreenPoll::ScreenPoll(Settings& settings, QObject* parent)
    : QObject(parent)
    , settings_(settings) {}

ScreenPoll::Mode ScreenPoll::mode() const {
    const int value = settings_.get(keys::Poll).toInt();
    if (value == 0)
        return Mode::Off;
    return value == 1 ? Mode::Videos : Mode::Previews;
}

void ScreenPoll::setPollValue(Mode mode) {
    qDebug() << "setPollValue " << static_cast<int>(mode);
    settings_.set(keys::Poll, static_cast<int>(mode));
    settings_.save();
    emit modeChanged();
}

QList<PollEntry> ScreenPoll::entries() const {
    QList<PollEntry> result;
    for (const QVariant& entry : settings_.get(keys::PollEntries).toList())
        result += PollEntry::fromMap(entry.toMap());
    return result;
}

void ScreenPoll::setEntries(const QList<PollEntry>& entries) {
    QVariantList list;
    for (const PollEntry& entry : entries)
        list += QVariant(entry.toMap());
    settings_.set(keys::PollEntries, list);
    settings_.save();
}

QStringList ScreenPoll::getNextPollDevices(const DeviceModel& devices) {
    qDebug() << "before index" << lastIndex_;
    const Mode now = mode();
    if (now == Mode::Off)
        return {};
    const QList<PollEntry> ring = entries();
    const int count = ring.size();
    const int start = lastIndex_ >= 0 && lastIndex_ < count - 1 ? lastIndex_ + 1 : 0;
    for (int step = 0; step < count; ++step) {
        const int index = (start + step) % count;
        QStringList taken = ring[index].ipncIds;
        if (now == Mode::Videos) {
            const auto isAway = [&devices](const QString& ipncId) {
                const DeviceRecord* const device = devices.device(ipncId);
                return device == nullptr || !device->isOnline();
            };
            taken.erase(std::remove_if(taken.begin(), taken.end(), isAway), taken.end());
        }
        if (taken.isEmpty())
            continue;
        lastIndex_ = index;
        qDebug() << "after index" << lastIndex_;
        return taken;
    }
    return {};
}

int ScreenPoll::interval() {
    const int seconds = settings_.get(keys::PollInterval).toInt();
    if (seconds >= ShortestInterval && seconds <= LongestInterval)
        return seconds;
    settings_.set(keys::PollInterval, RepairedInterval);
    settings_.save();
    return RepairedInterval;
}
