#include "sensor/InputRecords.h"

#include "base/DeviceModel.h"
#include "base/InputFields.h"
#include "sensor/Samples.h"

#include <QDebug>
#include <QSet>

#include <algorithm>

namespace corvanta::sensor {
namespace {

QVariant at(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key));
}

/// What all inputs of a device have in common.
InputRecord ofDevice(const DeviceRecord& device, const GroupRecord* group) {
    InputRecord record;
    record.ipncId = device.ipncId;
    record.device = device.displayName();
    if (group != nullptr) {
        record.groupId = group->id;
        record.group = group->name;
    }
    return record;
}

void addInputs(const InputRecord& common, const QVariantList& sensors, QSet<int>& seen, QVector<InputRecord>& all) {
    for (const QVariant& entry : sensors) {
        const QVariantMap sensor = entry.toMap();
        const QVariantList ports = at(sensor, "input").toList();
        for (const QVariant& one : ports) {
            InputRecord input = common;
            input.port = one.toMap();
            input.pid = at(input.port, "pid").toInt();
            if (input.pid <= 0 || seen.contains(input.pid)) {
                qDebug() << "input left out" << input.ipncId << at(input.port, "pid");
                continue;
            }
            seen.insert(input.pid);
            input.sensorPid = at(sensor, "pid").toInt();
            input.sensor = at(sensor, "name").toString();
            if (input.sensor.isEmpty())
                input.sensor = at(sensor, "ifname").toString();
            input.name = at(input.port, "name").toString();
            input.unit = at(input.port, "unit").toString();
            input.extend = at(input.port, "extend").toString();
            input.isUpload = at(input.port, "isupload").toString();
            input.thresholds = thresholdsOf(input.port);
            all += input;
        }
    }
}

std::optional<qint64> timeOf(const QVariant& value) {
    const auto time = readTime(value);
    return time ? std::optional(static_cast<qint64>(*time)) : std::nullopt;
}

} // namespace

QString InputRecord::path() const {
    return device + QStringLiteral(" / ") + sensor + QStringLiteral(" / ") + name;
}

QVector<InputRecord> inputsOf(const DeviceModel& devices) {
    QHash<QString, const GroupRecord*> groups;
    for (const GroupRecord& group : devices.groups()) {
        for (const QString& ipncId : devices.members(group))
            groups.insert(ipncId, &group);
    }
    QVector<InputRecord> all;
    QSet<int> seen;
    for (const QString& ipncId : devices.ipncIds()) {
        const DeviceRecord& device = *devices.device(ipncId);
        const InputRecord common = ofDevice(device, groups.value(ipncId));
        addInputs(common, device.interfaces, seen, all);
        addInputs(common, device.subDevices(), seen, all);
    }
    return all;
}

std::vector<ThresholdLevel> thresholdsOf(const QVariantMap& port) {
    std::vector<ThresholdLevel> levels;
    const QVariantList list = at(port, "thresholds").toList();
    for (const QVariant& entry : list) {
        const QVariantMap map = entry.toMap();
        const ThresholdLevel level{at(map, "level").toInt(), readNumber(at(map, "high")), readNumber(at(map, "low"))};
        if (level.level >= 1 && level.level <= 3 && (level.high || level.low))
            levels.push_back(level);
    }
    std::stable_sort(levels.begin(), levels.end(),
                     [](const ThresholdLevel& a, const ThresholdLevel& b) { return a.level < b.level; });
    return levels;
}

bool isNormalState(const QVariant& state) {
    return state.toInt() == 1;
}

InputNow nowOf(const InputRecord& input, const InputFields& fields) {
    InputNow now;
    now.earliest = timeOf(fields.value(QStringLiteral("earliesttime"), input.pid));
    now.latest = timeOf(fields.value(QStringLiteral("latesttime"), input.pid));
    const auto recorded = timeOf(at(input.port, "time"));
    const QVariant state = fields.value(QStringLiteral("state"), input.pid);
    const QVariant value = fields.value(QStringLiteral("value"), input.pid);
    // A list that came later than the last value is the newer one.
    const bool isToldNewer = !recorded || (now.latest && *now.latest >= *recorded);
    const QVariant newestState = state.isValid() && isToldNewer ? state : at(input.port, "state");
    if (newestState.isValid())
        now.isNormal = isNormalState(newestState);
    now.value = readNumber(value.isValid() && isToldNewer ? value : at(input.port, "value"));
    if (!isToldNewer)
        now.latest = recorded;
    return now;
}

} // namespace corvanta::sensor
