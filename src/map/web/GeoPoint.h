#pragma once

#include "map/MapMarker.h"

namespace corvanta::map {

/// A place on the world, and the one place that knows in which order its two numbers are written: calls of the page
/// take latitude, then longitude; the bridge is told longitude, then latitude ("lnglat"). A value.
struct GeoPoint {
    double lat = 0; ///< degrees north
    double lng = 0; ///< degrees east

    static GeoPoint of(const MapMarker& marker) { return {marker.lat, marker.lng}; }
    /// The numbers as the page tells them to the bridge.
    static GeoPoint fromBridge(double lng, double lat) { return {lat, lng}; }

    /// Finite, and on the world: -90 to 90 and -180 to 180.
    bool isValid() const;
    /// A marker with nothing but this position.
    MapMarker toMarker() const;
    /// "lat,lng", each in full precision and with a point. What is not finite counts as 0.
    QString toCallArguments() const;
};

} // namespace corvanta::map
