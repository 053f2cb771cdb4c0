#include "map/web/GeoPoint.h"

#include <cmath>

namespace corvanta::map {

namespace {

QString number(double value) {
    constexpr int AllDigits = 17; // that give back the same number
    return QString::number(std::isfinite(value) ? value : 0, 'g', AllDigits);
}

} // namespace

bool GeoPoint::isValid() const {
    return std::isfinite(lat) && std::isfinite(lng) && std::abs(lat) <= 90 && std::abs(lng) <= 180;
}

MapMarker GeoPoint::toMarker() const {
    MapMarker marker;
    marker.lat = lat;
    marker.lng = lng;
    return marker;
}

QString GeoPoint::toCallArguments() const {
    return number(lat) + QLatin1Char(',') + number(lng);
}

} // namespace corvanta::map
