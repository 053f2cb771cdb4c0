#include "linkage/DevicePorts.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace ipncsdk::linkage {

namespace {

std::optional<double> numberAt(const Json& object, const char* key) {
    const Json* member = memberAt(object, key);
    if (member == nullptr || !member->is_number())
        return std::nullopt;
    const auto number = member->get<double>();
    return std::isfinite(number) ? std::make_optional(number) : std::nullopt;
}

std::vector<Threshold> thresholdsOf(const Json& port) {
    std::vector<Threshold> thresholds;
    const Json* list = memberAt(port, "thresholds");
    if (list == nullptr || !list->is_array())
        return thresholds;
    for (const Json& entry : *list) {
        const auto level = integerAt(entry, "level");
        if (!level || *level < 1 || *level > highestLevel)
            continue;
        const Threshold threshold{static_cast<int>(*level), numberAt(entry, "high"), numberAt(entry, "low")};
        if (threshold.high || threshold.low)
            thresholds.push_back(threshold);
    }
    return thresholds;
}

void addBoard(const Json& board, DevicePorts& ports) {
    const std::string boardName = textAt(board, "name").value_or("");
    const auto type = textAt(board, "type");
    ports.isMeasured = ports.isMeasured || type == "QR" || type == "LASER";
    if (const Json* inputs = memberAt(board, "input"); inputs != nullptr && inputs->is_array()) {
        for (const Json& port : *inputs) {
            const Json* const member = memberAt(port, "pid");
            const auto pid = member != nullptr ? pidOf(*member) : std::nullopt;
            if (!pid)
                continue;
            Input input;
            input.pid = *pid;
            input.name = textAt(port, "name").value_or("");
            input.unit = textAt(port, "unit").value_or("");
            input.boardName = boardName;
            input.hysteresis = std::abs(numberAt(port, "hysteresis").value_or(0));
            input.thresholds = thresholdsOf(port);
            ports.inputs[*pid] = std::move(input);
        }
    }
    if (const Json* outputs = memberAt(board, "output"); outputs != nullptr && outputs->is_array()) {
        for (const Json& port : *outputs) {
            const Json* const member = memberAt(port, "pid");
            if (const auto pid = member != nullptr ? pidOf(*member) : std::nullopt)
                ports.outputs.insert(*pid);
        }
    }
}

} // namespace

DevicePorts portsOf(const Json& interfaces, const Json& extend) {
    DevicePorts ports;
    for (const Json* boards : {&interfaces, memberAt(extend, "sublist")}) {
        if (boards == nullptr || !boards->is_array())
            continue;
        for (const Json& board : *boards)
            addBoard(board, ports);
    }
    return ports;
}

std::optional<int> pidOf(const Json& value) {
    std::int64_t number = 0;
    if (const auto whole = integerOf(value)) {
        number = *whole;
    } else if (value.is_string()) {
        const auto& text = value.get_ref<const std::string&>();
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size())
            return std::nullopt;
    }
    if (number <= 0 || number > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(number);
}

} // namespace ipncsdk::linkage
