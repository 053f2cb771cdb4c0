#include "manageWidget/PtzCaps.h"

#include <algorithm>

namespace corvanta::manage {
namespace {

constexpr int MostPresets = 64;
constexpr int MostCruises = 8;

/// The records of a list with a number between 1 and `most`; another record of a number seen before is left out.
template <typename Record, typename Make>
QVector<Record> records(const QVariant& value, int most, Make make) {
    QVector<Record> result;
    const QVariantList list = value.toList();
    for (const QVariant& one : list) {
        const Record record = make(one.toMap());
        const bool isKnown = std::any_of(result.begin(), result.end(),
                                         [&record](const Record& other) { return other.index == record.index; });
        if (record.index >= 1 && record.index <= most && !isKnown)
            result += record;
    }
    return result;
}

} // namespace

PtzCaps PtzCaps::fromValue(const QVariant& value) {
    const QVariantMap map = value.toMap();
    const auto flag = [&map](const char* key) {
        return map.value(QLatin1String(key)).toBool();
    };
    const auto count = [&map](const char* key, int most) {
        return std::clamp(map.value(QLatin1String(key)).toInt(), 0, most);
    };
    return {flag("pan"),
            flag("tilt"),
            flag("zoom"),
            flag("focus"),
            flag("iris"),
            count("presets", MostPresets),
            count("cruises", MostCruises)};
}

QVector<PtzPreset> PtzPreset::listFrom(const QVariant& value) {
    return records<PtzPreset>(value, MostPresets, [](const QVariantMap& map) {
        return PtzPreset{map.value(QStringLiteral("index")).toInt(), map.value(QStringLiteral("name")).toString()};
    });
}

QVector<PtzCruise> PtzCruise::listFrom(const QVariant& value) {
    return records<PtzCruise>(value, MostCruises, [](const QVariantMap& map) {
        PtzCruise cruise{
            map.value(QStringLiteral("index")).toInt(), map.value(QStringLiteral("name")).toString(), {}};
        const QVariantList points = map.value(QStringLiteral("points")).toList();
        for (const QVariant& one : points) {
            const QVariantMap point = one.toMap();
            cruise.points += Point{point.value(QStringLiteral("preset")).toInt(),
                                   std::clamp(point.value(QStringLiteral("seconds")).toInt(), 1, LongestStay)};
        }
        return cruise;
    });
}

QVariantMap PtzCruise::toMap() const {
    QVariantList list;
    for (const Point& point : points)
        list += QVariantMap{{QStringLiteral("preset"), point.preset}, {QStringLiteral("seconds"), point.seconds}};
    return {{QStringLiteral("index"), index}, {QStringLiteral("name"), name}, {QStringLiteral("points"), list}};
}

} // namespace corvanta::manage
