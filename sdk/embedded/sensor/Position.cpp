#include "sensor/Position.h"

#include "sensor/Board.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr std::size_t mostLocations = 64;
constexpr double farthest = 1e6; ///< metres from the corner of the map

std::optional<double> coordinateAt(const Json& location, const char* key) {
    const Json* const value = memberAt(location, key);
    const auto number = value != nullptr ? numberOf(*value) : std::nullopt;
    return number && std::abs(*number) <= farthest ? number : std::nullopt;
}

const Json* listOf(const Json& record) {
    const Json* const info = memberAt(record, "info");
    const Json* const list = info != nullptr ? memberAt(*info, "locations") : nullptr;
    return list != nullptr && list->is_array() ? list : nullptr;
}

} // namespace

bool isPositionBoard(const Json& record) {
    return textAt(record, "protocol") == positionProtocol;
}

std::string completePosition(Json& record) {
    record["protocol"] = positionProtocol;
    if (memberAt(record, "info") == nullptr)
        record["info"] = Json::object();
    if (!record["info"].is_object())
        return "参考点格式不正确";
    Json& locations = record["info"]["locations"];
    if (locations.is_null())
        locations = Json::array();
    if (!locations.is_array() || locations.size() > mostLocations)
        return "参考点最多 " + std::to_string(mostLocations) + " 个";
    for (Json& location : locations) {
        for (const char* key : {"x", "y"}) {
            if (!coordinateAt(location, key))
                return "参考点坐标应为数值";
            if (location[key].is_number())
                location[key] = toText(location[key]);
        }
    }
    return {};
}

Json locationsOf(const Json& record) {
    Json locations = Json::array();
    const Json* const list = listOf(record);
    if (list == nullptr || list->size() > mostLocations)
        return locations;
    for (const Json& location : *list) {
        if (coordinateAt(location, "x") && coordinateAt(location, "y"))
            locations.push_back({{"x", location["x"]}, {"y", location["y"]}});
    }
    return locations;
}

SimulatedWalk::SimulatedWalk(const Json& record) {
    const Json points = locationsOf(record);
    if (points.size() < 2)
        return;
    for (const auto& [extent, key] : {std::pair{&x_, "x"}, std::pair{&y_, "y"}}) {
        *extent = {farthest, -farthest};
        for (const Json& point : points) {
            const double value = coordinateAt(point, key).value_or(0);
            *extent = {std::min(extent->low, value), std::max(extent->high, value)};
        }
    }
}

double SimulatedWalk::at(bool alongX, double seconds) const {
    // Two periods without a common measure lead over the whole area, a curve of Lissajous'.
    constexpr double periodX = 97;
    constexpr double periodY = 61;
    constexpr double used = 0.45; // of the extent, to both sides of the middle
    const Extent& extent = alongX ? x_ : y_;
    const double angle = 2 * std::numbers::pi * seconds / (alongX ? periodX : periodY);
    return (extent.low + extent.high) / 2 + (extent.high - extent.low) * used * std::sin(angle);
}

} // namespace ipncsdk::sensor
