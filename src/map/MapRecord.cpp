#include "map/MapRecord.h"

#include "sensor/Samples.h"

#include <QDebug>

namespace corvanta::map {
namespace {

double metres(const QVariantMap& distance, const char* key) {
    const double value = sensor::readNumber(distance.value(QLatin1String(key))).value_or(0);
    return value > 0 ? value : 0;
}

MapType typeOf(const QString& text) {
    if (text == QLatin1String("local"))
        return MapType::Local;
    if (text == QLatin1String("online"))
        return MapType::Online;
    qDebug() << "a map of an unknown type" << text.left(40);
    return MapType::Unknown;
}

} // namespace

MapRecord MapRecord::fromMap(const QVariantMap& map, bool isShared) {
    MapRecord record;
    record.rest = map;
    const auto text = [&record](const char* key) {
        return record.rest.take(QLatin1String(key)).toString();
    };
    record.shared = isShared;
    record.id = text("pid");
    record.name = text("name");
    record.type = typeOf(text("type"));
    record.fileName = text("filename");
    record.ownerId = text("userid");
    record.friends = record.rest.take(QStringLiteral("friends")).toStringList();
    const QVariantMap distance =
        record.rest.value(QStringLiteral("range")).toMap().value(QStringLiteral("distance")).toMap();
    record.width = metres(distance, "w");
    record.height = metres(distance, "h");
    const QVariantList markers = record.rest.take(QStringLiteral("sensors")).toList();
    for (const QVariant& marker : markers)
        record.markers += MapMarker::fromMap(marker.toMap());
    return record;
}

int MapRecord::indexOf(const QString& markerId) const {
    for (int i = 0; i < markers.size(); ++i) {
        if (!markerId.isEmpty() && markers[i].id == markerId)
            return i;
    }
    return -1;
}

} // namespace corvanta::map
