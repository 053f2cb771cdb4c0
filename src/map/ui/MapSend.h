#pragma once

#include "base/AppContext.h"
#include "map/MapRecord.h"

#include <QString>
#include <QVariantMap>

/// What the dialogs and views of maps share.
namespace corvanta::map {

/// Writes what the signed-in account did to maps into the log of operations. The log is Chinese in every language.
void logChange(const AppContext& context, const QString& what, const QString& detail);

/// What "提交地图传感器" takes: a marker with the coordinates of its kind of map.
QVariantMap markerParameters(const MapRecord& map, const MapMarker& marker);

/// What "删除地图传感器" takes.
QVariantMap deletionParameters(const QString& mapId, const MapMarker& marker);

} // namespace corvanta::map
