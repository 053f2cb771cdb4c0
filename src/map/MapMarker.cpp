#include "map/MapMarker.h"

#include "sensor/Samples.h"

#include <QDebug>

#include <algorithm>

namespace corvanta::map {
namespace {

/// Takes a number out of `map`; what is none, or lies outside, becomes the nearest that does not.
double take(QVariantMap& map, const char* key, double low, double high) {
    const QVariant value = map.take(QLatin1String(key));
    const auto number = sensor::readNumber(value);
    const double result = std::clamp(number.value_or(0), low, high);
    if (value.isValid() && (!number || *number != result))
        qDebug() << "a marker's" << key << "is taken as" << result << "of" << value.toString().left(40);
    return result;
}

QString exactText(double number) {
    return QString::number(number, 'g', 17);
}

QVariantMap toPoint(const QString& x, const QString& y) {
    return {{QStringLiteral("x"), x}, {QStringLiteral("y"), y}};
}

} // namespace

MapMarker MapMarker::fromMap(const QVariantMap& map) {
    constexpr double farthest = 1e7; // m
    MapMarker marker;
    marker.rest = map;
    QVariantMap& rest = marker.rest;
    const auto text = [&rest](const char* key) {
        return rest.take(QLatin1String(key)).toString();
    };
    marker.id = text("sensorid");
    marker.pid = text("pid");
    if (marker.pid == QLatin1String("0"))
        marker.pid.clear();
    marker.ipncId = text("ipncid");
    marker.name = text("name");
    QVariantMap point = rest.take(QStringLiteral("point")).toMap();
    marker.x = take(point, "x", 0, 1);
    marker.y = take(point, "y", 0, 1);
    marker.lat = take(rest, "lat", -90, 90);
    marker.lng = take(rest, "lng", -180, 180);
    marker.icon = text("icon");
    marker.iconName = text("iconname");
    marker.iconPublic = rest.take(QStringLiteral("iconpublic")).toBool();
    marker.showMode = text("showmode") == QLatin1String("mousein") ? ShowMode::MouseIn : ShowMode::Always;
    marker.showDatas = rest.take(QStringLiteral("showdatas")).toBool();
    const QVariant update = rest.take(QStringLiteral("isupdate"));
    marker.isUpdate = !update.isValid() || update.toBool();
    const QVariant inputs = rest.take(QStringLiteral("inputs"));
    if (inputs.type() == QVariant::List) {
        marker.inputs.emplace();
        const QVariantList pids = inputs.toList();
        for (const QVariant& pid : pids)
            marker.inputs->append(pid.toInt());
    }
    marker.protocol = text("protocol");
    // What else the service says of the sensor stays where it is.
    const QVariantList locations =
        rest.value(QStringLiteral("info")).toMap().value(QStringLiteral("locations")).toList();
    for (const QVariant& entry : locations) {
        QVariantMap location = entry.toMap();
        const double x = take(location, "x", -farthest, farthest);
        marker.locations += QPointF(x, take(location, "y", -farthest, farthest));
    }
    return marker;
}

QVariantMap MapMarker::toMap() const {
    QVariantMap map = rest;
    const auto put = [&map](const char* key, const QVariant& value) {
        map.insert(QLatin1String(key), value);
    };
    put("sensorid", id);
    put("pid", pid);
    put("ipncid", ipncId);
    put("name", name);
    put("point", toPoint(exactText(x), exactText(y)));
    put("lat", lat);
    put("lng", lng);
    put("icon", icon);
    put("iconname", iconName);
    put("iconpublic", iconPublic);
    put("showmode", showMode == ShowMode::MouseIn ? QStringLiteral("mousein") : QStringLiteral("always"));
    put("showdatas", showDatas);
    put("isupdate", isUpdate);
    if (inputs) {
        QVariantList pids;
        for (const int one : *inputs)
            pids += one;
        put("inputs", pids);
    }
    if (!protocol.isEmpty())
        put("protocol", protocol);
    return map;
}

} // namespace corvanta::map
