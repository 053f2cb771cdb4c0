#include "linkage/AlarmInbox.h"

#include "base/JsonText.h"
#include "base/WholeFile.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>

#include <algorithm>
#include <utility>

namespace corvanta::linkage {
namespace {

constexpr int TellMs = 200;       // the view follows five times a second
constexpr int SaveMs = 2000;      // at most so much is lost when the program is killed
constexpr int LongestText = 1000; // characters
constexpr int MostImages = 16;    // names kept of an entry
constexpr int MostCounted = 1 << 30;

const QString AlarmsKey = QStringLiteral("alarms");

/// What belongs together: alarms of a plan of a device; where no plan has raised them, those that say the same.
QString keyOf(const AlarmMessage& alarm) {
    const QString plan = alarm.trigger
                             ? QStringLiteral("plan ") + alarm.trigger->value(QStringLiteral("linkplanid")).toString()
                             : QStringLiteral("text ") + alarm.content.left(LongestText);
    return alarm.ipncId + QLatin1Char('\n') + plan;
}

} // namespace

QVariantMap OpenAlarm::toMap() const {
    return {{QStringLiteral("key"), key},         {QStringLiteral("level"), static_cast<int>(level)},
            {QStringLiteral("ipncid"), ipncId},   {QStringLiteral("device"), device},
            {QStringLiteral("plan"), plan},       {QStringLiteral("content"), content},
            {QStringLiteral("first"), firstTime}, {QStringLiteral("last"), lastTime},
            {QStringLiteral("count"), count},     {QStringLiteral("hasimages"), hasImages},
            {QStringLiteral("images"), images},   {QStringLiteral("trigger"), trigger}};
}

OpenAlarm OpenAlarm::fromMap(const QVariantMap& map) {
    const auto at = [&map](const char* key) {
        return map.value(QLatin1String(key));
    };
    OpenAlarm alarm;
    alarm.key = at("key").toString();
    const int level = at("level").toInt();
    alarm.level = level == 0 ? AlarmLevel::Other : alarmLevelOf(level);
    alarm.ipncId = at("ipncid").toString();
    alarm.device = at("device").toString();
    alarm.plan = at("plan").toString();
    alarm.content = at("content").toString();
    alarm.firstTime = at("first").toString();
    alarm.lastTime = at("last").toString();
    alarm.count = std::clamp(at("count").toInt(), 1, MostCounted);
    alarm.hasImages = at("hasimages").toBool();
    alarm.images = at("images").toStringList();
    alarm.trigger = at("trigger").toMap();
    return alarm;
}

AlarmInbox::AlarmInbox(const QString& file, QObject* parent)
    : QObject(parent)
    , file_(file)
    , telling_(TellMs, Throttle::Edge::Leading, [this] { emit sigChanged(); })
    , saving_(SaveMs, Throttle::Edge::Trailing, [this] { save(); }) {
    load();
}

AlarmInbox::~AlarmInbox() {
    saving_.flush();
}

void AlarmInbox::load() {
    QFile file(file_);
    if (!file.exists())
        return;
    bool ok = file.open(QIODevice::ReadOnly);
    const QVariantMap document = ok ? json::parseObject(file.readAll(), ok) : QVariantMap();
    file.close();
    if (!ok) {
        const QString kept = file_ + QStringLiteral(".damaged-") +
                             QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss"));
        qDebug() << "alarms that cannot be read" << (QFile::rename(file_, kept) ? "kept as" : "left as") << kept;
        return;
    }
    const QVariantList alarms = document.value(AlarmsKey).toList();
    for (auto it = alarms.rbegin(); it != alarms.rend(); ++it) { // the newest stands first
        OpenAlarm alarm = OpenAlarm::fromMap(it->toMap());
        if (!alarm.key.isEmpty() && !entries_.contains(alarm.key))
            put(std::move(alarm));
    }
}

void AlarmInbox::save() {
    QVariantList all;
    for (auto it = byTime_.rbegin(); it != byTime_.rend(); ++it)
        all += entries_.constFind(it->second)->alarm.toMap();
    const QByteArray text = QByteArray::fromStdString(json::toText({{AlarmsKey, all}}));
    if (const QString problem = writeWholeFile(file_, text); !problem.isEmpty())
        qDebug() << "alarms could not be written:" << problem;
}

void AlarmInbox::put(OpenAlarm alarm) {
    const QString key = alarm.key;
    count_ += alarm.count;
    byTime_.emplace(++serial_, key);
    entries_.insert(key, {serial_, std::move(alarm)});
    if (entries_.size() > Most) {
        qDebug() << "too many alarms wait, the oldest is forgotten";
        remove(QString(byTime_.begin()->second));
    }
}

void AlarmInbox::remove(const QString& key) {
    const auto it = entries_.find(key);
    if (it == entries_.end())
        return;
    count_ -= it->alarm.count;
    byTime_.erase(it->serial);
    entries_.erase(it);
}

void AlarmInbox::add(const AlarmMessage& alarm, const QString& device) {
    const QString key = keyOf(alarm);
    const auto known = entries_.constFind(key);
    OpenAlarm entry = known == entries_.constEnd() ? OpenAlarm() : known->alarm;
    const bool isNew = entry.key.isEmpty();
    remove(key);
    entry.key = key;
    entry.level = alarm.level;
    entry.ipncId = alarm.ipncId;
    entry.device = device;
    entry.content = alarm.content.left(LongestText);
    entry.lastTime = alarm.dateTime;
    entry.firstTime = isNew ? alarm.dateTime : entry.firstTime;
    entry.count = isNew ? 1 : std::min(entry.count + 1, MostCounted);
    entry.trigger = alarm.trigger.value_or(QVariantMap());
    entry.plan = entry.trigger.value(QStringLiteral("name")).toString();
    entry.hasImages = alarm.hasImages;
    entry.images += alarm.images;
    while (entry.images.size() > MostImages)
        entry.images.removeFirst();
    put(std::move(entry));
    changed();
}

QVector<OpenAlarm> AlarmInbox::alarms() const {
    QVector<OpenAlarm> result;
    result.reserve(entries_.size());
    for (auto it = byTime_.rbegin(); it != byTime_.rend(); ++it)
        result += entries_.constFind(it->second)->alarm;
    return result;
}

const OpenAlarm* AlarmInbox::find(const QString& key) const {
    const auto it = entries_.constFind(key);
    return it == entries_.constEnd() ? nullptr : &it->alarm;
}

void AlarmInbox::acknowledge(const QStringList& keys) {
    for (const QString& key : keys)
        remove(key);
    changed();
}

void AlarmInbox::acknowledgeAll() {
    entries_.clear();
    byTime_.clear();
    count_ = 0;
    changed();
}

void AlarmInbox::changed() {
    telling_.ask();
    saving_.ask();
}

} // namespace corvanta::linkage
