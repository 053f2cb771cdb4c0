#include "map/ui/MapSend.h"

#include "base/OperationLog.h"
#include "base/SdkGateway.h"

#include <QDateTime>

namespace corvanta::map {
namespace {
constexpr int LongestDetail = 500; // characters; a row of a log is to be read
} // namespace

void logChange(const AppContext& context, const QString& what, const QString& detail) {
    context.operationLog.addOperateLog(context.gateway.phoneId(), QDateTime::currentDateTime(),
                                       QStringLiteral("电子地图"), what, detail.left(LongestDetail));
}

QVariantMap markerParameters(const MapRecord& map, const MapMarker& marker) {
    QVariantMap info = marker.toMap();
    if (marker.id.isEmpty())
        info.remove(QStringLiteral("sensorid"));
    if (map.type == MapType::Online) {
        info.remove(QStringLiteral("point"));
    } else {
        info.remove(QStringLiteral("lat"));
        info.remove(QStringLiteral("lng"));
    }
    return {{QStringLiteral("mapid"), map.id},
            {QStringLiteral("ipncid"), marker.ipncId},
            {QStringLiteral("sensorinfo"), info}};
}

QVariantMap deletionParameters(const QString& mapId, const MapMarker& marker) {
    return {{QStringLiteral("mapid"), mapId},
            {QStringLiteral("ipncid"), marker.ipncId},
            {QStringLiteral("mapsensorid"), marker.id}};
}

} // namespace corvanta::map
