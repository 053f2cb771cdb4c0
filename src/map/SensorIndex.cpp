#include "map/SensorIndex.h"

#include "base/DeviceModel.h"
#include "base/InputFields.h"

#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>

namespace corvanta::map {
namespace {

/// One line, and no longer than anybody reads.
QString lineOf(const QString& text) {
    constexpr int longest = 200; // characters
    return text.left(longest).simplified();
}

} // namespace

QString boardPid(const sensor::InputRecord& input) {
    const QVariant told = input.port.value(QStringLiteral("ifpid"));
    const int pid = told.toInt();
    return QString::number(pid > 0 ? pid : input.sensorPid);
}

SensorIndex::SensorIndex(const DeviceModel& devices)
    : inputs_(sensor::inputsOf(devices)) {
    for (int i = 0; i < inputs_.size(); ++i) {
        byPid_.insert(inputs_[i].pid, i);
        byDevice_[inputs_[i].ipncId] += i;
    }
}

const sensor::InputRecord* SensorIndex::input(int pid) const {
    const auto place = byPid_.constFind(pid);
    return place == byPid_.constEnd() ? nullptr : &inputs_[*place];
}

QVector<sensor::InputRecord> SensorIndex::inputsOf(const MapMarker& marker) const {
    QVector<sensor::InputRecord> result;
    const QVector<int> places = byDevice_.value(marker.ipncId);
    for (const int place : places) {
        const sensor::InputRecord& one = inputs_[place];
        if (marker.isCamera() || boardPid(one) == marker.pid)
            result += one;
    }
    return result;
}

QVector<sensor::InputRecord> SensorIndex::shownInputs(const MapMarker& marker) const {
    QVector<sensor::InputRecord> result;
    if (!marker.showDatas)
        return result;
    result = inputsOf(marker);
    if (marker.inputs)
        result.erase(std::remove_if(result.begin(), result.end(),
                                    [&marker](const auto& one) { return !marker.inputs->contains(one.pid); }),
                     result.end());
    return result;
}

QStringList SensorIndex::labelLines(const MapMarker& marker, const InputFields& fields) const {
    QStringList lines{lineOf(marker.name)};
    std::optional<qint64> newest;
    const QVector<sensor::InputRecord> shown = shownInputs(marker);
    for (const sensor::InputRecord& one : shown) {
        const sensor::InputNow now = sensor::nowOf(one, fields);
        QString line = one.name + QStringLiteral(": ");
        line += now.value ? QString::number(*now.value) : QStringLiteral("--");
        if (now.value && !one.unit.isEmpty())
            line += QLatin1Char(' ') + one.unit;
        if (now.isNormal && !*now.isNormal)
            line = QCoreApplication::translate("MapLabel", "%1（异常）").arg(line);
        lines += lineOf(line);
        if (now.latest && (!newest || *now.latest > *newest))
            newest = now.latest;
    }
    if (newest)
        lines += QCoreApplication::translate("MapLabel", "时间:%1")
                     .arg(QDateTime::fromSecsSinceEpoch(*newest).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    return lines;
}

QList<int> SensorIndex::markersOf(const QVariantMap& trigger, const QList<MapMarker>& markers) const {
    const sensor::InputRecord* const cause = input(trigger.value(QStringLiteral("input")).toInt());
    if (cause == nullptr)
        return {};
    const QString board = boardPid(*cause);
    QList<int> sensors;
    QList<int> cameras;
    for (int i = 0; i < markers.size(); ++i) {
        const MapMarker& marker = markers[i];
        if (marker.ipncId != cause->ipncId)
            continue;
        if (marker.pid == board)
            sensors += i;
        else if (marker.isCamera())
            cameras += i;
    }
    return sensors.isEmpty() ? cameras : sensors;
}

} // namespace corvanta::map
