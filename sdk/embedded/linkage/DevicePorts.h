#pragma once

#include "base/JsonText.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace ipncsdk::linkage {

/// The highest level of a threshold; the lowest is 1.
constexpr int highestLevel = 3;

/// A level of an input: reached when the value is above `high` or below `low`.
struct Threshold {
    int level = 1;
    std::optional<double> high;
    std::optional<double> low;
    friend bool operator==(const Threshold&, const Threshold&) = default;
};

/// What linkage needs to know of an input.
struct Input {
    int pid = 0;
    std::string name;
    std::string unit;
    std::string boardName;
    double hysteresis = 0; ///< not negative; how far the value must come back before a level is left
    std::vector<Threshold> thresholds;
    friend bool operator==(const Input&, const Input&) = default;
};

/// The inputs and outputs of one device, by pid.
struct DevicePorts {
    std::map<int, Input> inputs;
    std::set<int> outputs;
    bool isMeasured = false; ///< its recordings are measured by the client
    friend bool operator==(const DevicePorts&, const DevicePorts&) = default;
};

/// Reads a device record's "interfaces" and "extend"."sublist". What is not of the form is passed over.
DevicePorts portsOf(const Json& interfaces, const Json& extend);

/// A pid as messages carry it, number or digits; nothing when it is none.
std::optional<int> pidOf(const Json& value);

} // namespace ipncsdk::linkage
