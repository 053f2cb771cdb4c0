#include "sensor/Board.h"

#include <cmath>
#include <limits>

namespace ipncsdk::sensor {

namespace {

std::optional<double> limitAt(const Json& threshold, const char* key) {
    const Json* const value = memberAt(threshold, key);
    return value != nullptr && value->is_number() ? std::make_optional(value->get<double>()) : std::nullopt;
}

std::vector<Threshold> thresholdsOf(const Json& record) {
    std::vector<Threshold> thresholds;
    const Json* const list = memberAt(record, "thresholds");
    if (list == nullptr || !list->is_array())
        return thresholds;
    for (const Json& entry : *list) {
        const int level = wholeAt(entry, "level", 0);
        if (level >= 1 && level <= 3)
            thresholds.push_back({level, limitAt(entry, "high"), limitAt(entry, "low")});
    }
    return thresholds;
}

Json paramsOf(const Json& record) {
    const Json* const params = memberAt(record, "params");
    return params != nullptr && params->is_object() ? *params : Json::object();
}

std::vector<Port> portsOf(const Json& record, const char* key) {
    std::vector<Port> ports;
    const Json* const list = memberAt(record, key);
    if (list == nullptr || !list->is_array())
        return ports;
    for (const Json& entry : *list) {
        Port port;
        port.pid = wholeAt(entry, "pid", 0);
        port.name = textOr(entry, "name", "");
        port.unit = textOr(entry, "unit", "");
        port.upload = textOr(entry, "isupload", "1") != "0";
        port.scale = numberAt(entry, "scale", 1);
        port.offset = numberAt(entry, "offset", 0);
        port.thresholds = thresholdsOf(entry);
        port.params = paramsOf(entry);
        if (port.pid > 0)
            ports.push_back(std::move(port));
    }
    return ports;
}

} // namespace

double numberAt(const Json& params, const char* key, double usual) {
    const Json* const value = memberAt(params, key);
    return value != nullptr && value->is_number() && std::isfinite(value->get<double>()) ? value->get<double>()
                                                                                         : usual;
}

int wholeAt(const Json& params, const char* key, int usual) {
    const auto value = integerAt(params, key);
    const bool fits = value && *value >= std::numeric_limits<int>::min() && *value <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(*value) : usual;
}

std::string textOr(const Json& params, const char* key, const std::string& usual) {
    return textAt(params, key).value_or(usual);
}

Board boardOf(const Json& record) {
    Board board;
    board.pid = wholeAt(record, "pid", 0);
    board.type = textOr(record, "type", "");
    board.name = textOr(record, "name", "");
    board.params = paramsOf(record);
    board.inputs = portsOf(record, "input");
    board.outputs = portsOf(record, "output");
    board.record = record;
    return board;
}

bool isPlant(const Board& board) {
    const bool simulated = board.type == "RS485" || board.type == "RS232" || board.type == "IO" ||
                           board.type == "ZIGBEE" || board.type == "POSITION";
    return simulated && textOr(board.params, "mode", "plant") == "plant";
}

} // namespace ipncsdk::sensor
