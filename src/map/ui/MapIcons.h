#pragma once

#include "map/MapMarker.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace corvanta::map {

/// A picture of the icon library in a size for the screen; null when it is none, or too large for one.
QPixmap readIcon(const QString& path, int side);

/// The drawing for a marker without an icon of its own: "map-camera", "map-sensor", "map-position", "map-reference".
QIcon usualIcon(const QString& drawing);

/// The same in pixels; drawn once for all who show it.
QPixmap usualPixmap(const QString& drawing, int side);

/// What stands for a marker: its icon where that is here, else the drawing for its kind.
QIcon markerIcon(const MapMarker& marker);

} // namespace corvanta::map
