#include "service/MapCheck.h"

#include "base/Text.h"
#include "service/Params.h"

#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace ipncsdk::service {

namespace {

constexpr std::size_t longestDocument = 65536; ///< bytes
constexpr std::size_t longestMarkerName = 200;
constexpr std::size_t mostInputs = 256;
constexpr double longestDistance = 1e7; ///< metres

// What documents say of maps and markers without having been told, and what clients add for themselves.
constexpr std::array keysOfMaps = {"pid",  "mapid",   "type",   "filename", "filepath",
                                   "size", "friends", "userid", "sensors"};
constexpr std::array keysOfMarkers = {"sensorid", "mapsensorid", "mapid", "pid",
                                      "ipncid",   "protocol",    "info",  "filepath"};

template <typename Keys>
void drop(Json& object, const Keys& keys) {
    for (const char* key : keys)
        object.erase(key);
}

/// Checks a number that documents have as text, and writes it so.
bool completeNumberText(Json& object, const char* key, double low, double high) {
    const Json* const value = memberAt(object, key);
    const auto number = value != nullptr ? numberOf(*value) : std::nullopt;
    if (!number || *number < low || *number > high)
        return false;
    if (value->is_number())
        object[key] = toText(*value);
    return true;
}

/// Checks a degree, which documents have as a number.
bool completeDegrees(Json& object, const char* key, double most) {
    const Json* const value = memberAt(object, key);
    const auto number = value != nullptr ? numberOf(*value) : std::nullopt;
    if (!number || *number < -most || *number > most)
        return false;
    object[key] = *number;
    return true;
}

bool isObject(const Json* value) {
    return value != nullptr && value->is_object();
}

std::string completeRange(Json& document) {
    if (!isObject(memberAt(document, "range")) || !isObject(memberAt(document["range"], "distance")))
        return "请输入实际距离!";
    Json& distance = document["range"]["distance"];
    for (const char* key : {"w", "h"}) {
        // A picture without any extent has no scale.
        if (!completeNumberText(distance, key, std::numeric_limits<double>::min(), longestDistance))
            return "实际距离应为 0～10000000 米的数值!";
    }
    return {};
}

std::string completePlace(Json& document, bool local) {
    if (!local)
        return completeDegrees(document, "lat", 90) && completeDegrees(document, "lng", 180) ? "" : "经纬度不正确!";
    const bool good = isObject(memberAt(document, "point")) && completeNumberText(document["point"], "x", 0, 1) &&
                      completeNumberText(document["point"], "y", 0, 1);
    return good ? "" : "标记点坐标应为 0～1!";
}

/// Clients make a path of the icon's name.
std::string completeLook(Json& document) {
    for (const char* key : {"icon", "iconname"}) {
        const Json* const value = memberAt(document, key);
        const auto text = value == nullptr ? std::string() : textAt(document, key);
        const bool good = text && (text->empty() || isFileName(*text, longestFileName));
        if (!good)
            return "图标名称不正确!";
    }
    if (memberAt(document, "showmode") == nullptr)
        document["showmode"] = "always";
    if (document["showmode"] != "always" && document["showmode"] != "mousein")
        return "显示方式不正确!";
    for (const char* key : {"iconpublic", "showdatas", "isupdate"}) {
        if (memberAt(document, key) != nullptr && !flagAt(document, key))
            return std::string(key) + "不正确!";
    }
    const Json* const inputs = memberAt(document, "inputs");
    if (inputs == nullptr)
        return {};
    bool good = inputs->is_array() && inputs->size() <= mostInputs;
    for (std::size_t i = 0; good && i < inputs->size(); ++i)
        good = integerOf((*inputs)[i]).value_or(0) > 0;
    return good ? "" : "显示数据不正确!";
}

std::string checkSize(const Json& document) {
    return toText(document).size() > longestDocument ? "内容过长!" : "";
}

bool isName(const Json& document, std::size_t longest) {
    const auto name = textAt(document, "name");
    return name && isPlainText(*name, longest) && name->find_first_not_of(' ') != std::string::npos;
}

} // namespace

std::optional<bool> isLocalMap(const Json& mapInfo) {
    const auto type = textAt(mapInfo, "type");
    if (!type || (*type != "local" && *type != "online"))
        return std::nullopt;
    return *type == "local";
}

CheckedObject checkMap(const Json& mapInfo, const Json& before, bool local) {
    CheckedObject checked{before, {}};
    if (mapInfo.is_object())
        checked.document.update(mapInfo);
    drop(checked.document, keysOfMaps);
    if (!isName(checked.document, longestName))
        checked.fault = "地图名称的字符数应为 1～64!";
    if (checked.fault.empty() && (local || memberAt(checked.document, "range") != nullptr))
        checked.fault = completeRange(checked.document);
    if (checked.fault.empty())
        checked.fault = checkSize(checked.document);
    return checked;
}

CheckedObject checkMarker(const Json& sensorInfo, bool local) {
    CheckedObject checked{sensorInfo, {}};
    if (!sensorInfo.is_object())
        return {Json::object(), "标记点格式不正确!"};
    drop(checked.document, keysOfMarkers);
    if (!isName(checked.document, longestMarkerName))
        checked.fault = "标记点名称的字符数应为 1～200!";
    if (checked.fault.empty())
        checked.fault = completePlace(checked.document, local);
    if (checked.fault.empty())
        checked.fault = completeLook(checked.document);
    if (checked.fault.empty())
        checked.fault = checkSize(checked.document);
    return checked;
}

std::optional<int> markedPid(const Json& sensorInfo) {
    if (!isGiven(sensorInfo, "pid"))
        return 0;
    const auto pid = idAt(sensorInfo, "pid");
    // No board has a number that is none.
    constexpr int nowhere = -1;
    if (!pid)
        return std::nullopt;
    return *pid > 0 && *pid <= std::numeric_limits<int>::max() ? static_cast<int>(*pid) : nowhere;
}

} // namespace ipncsdk::service
