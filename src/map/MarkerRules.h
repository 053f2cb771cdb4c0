#pragma once

#include "map/MapRecord.h"

#include <QRectF>
#include <QString>

#include <optional>

/// Where markers are, and what may be said of maps. Values only.
namespace corvanta::map {

/// The box around the places of all markers, in fractions of the picture; nothing without markers.
std::optional<QRectF> boundsOf(const QList<MapMarker>& markers);

/// Where a place in metres, from the upper left corner, is on the picture, in fractions; nothing where the picture's
/// extent is unknown, or the place is not on it.
std::optional<QPointF> fractionOf(const QPointF& metres, const MapRecord& map);

/// How the n-th reference point (from 0) of a sensor is called.
QString referenceName(int number);

/// The picture of an alarm's level, as a resource: 1 to 4, empty for any other.
QString alarmPicture(int level);

/// Why a new map cannot be made; nothing when it can. The first reason, in the order in which they are looked for.
struct MapDraft {
    QString name;
    MapType type = MapType::Local;
    QString picture;   ///< path; of a picture map
    QString distanceX; ///< metres, as entered
    QString distanceY;
};
std::optional<QString> checkNew(const MapDraft& draft);
/// The same for one that exists: its picture stays.
std::optional<QString> checkEdited(const MapDraft& draft);

/// What the service takes: "name", "type", "range".
QVariantMap mapInfo(const MapDraft& draft);

/// How kind and owner of a map read.
QString typeText(MapType type);
QString ownerText(const MapRecord& map);

/// Why a marker cannot be saved so; nothing when it can. Coordinates as entered: fractions, or degrees.
std::optional<QString> checkMarker(const QString& name, const QString& first, const QString& second, MapType type);

} // namespace corvanta::map
