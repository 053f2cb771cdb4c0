#pragma once

#include "base/JsonText.h"

#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::sensor {

/// A limit of an input. A level is reached by a value above `high` or below `low`.
struct Threshold {
    int level = 1; ///< 1 to 3
    std::optional<double> high;
    std::optional<double> low;
};

/// An input or output of a board.
struct Port {
    int pid = 0; ///< unique in the store
    std::string name;
    std::string unit;
    bool upload = true; ///< its readings are kept as samples
    double scale = 1;   ///< value = raw * scale + offset
    double offset = 0;  ///< in the unit
    std::vector<Threshold> thresholds;
    Json params = Json::object();
};

/// A board of a device, as records describe it.
struct Board {
    int pid = 0;
    std::string type; ///< the name of a `BoardType`
    std::string name;
    Json params = Json::object();
    std::vector<Port> inputs;
    std::vector<Port> outputs;
    Json record; ///< everything, as it is stored

    /// A board is described whole by its record.
    friend bool operator==(const Board& a, const Board& b) { return a.record == b.record; }
};

/// Takes what a stored record says; what it does not say, or says in another type, keeps its usual value.
Board boardOf(const Json& record);

/// The board is simulated. Boards of older stores have no parameters at all.
bool isPlant(const Board& board);

/// A parameter, or what is usual.
double numberAt(const Json& params, const char* key, double usual);
int wholeAt(const Json& params, const char* key, int usual);
std::string textOr(const Json& params, const char* key, const std::string& usual);

} // namespace ipncsdk::sensor
