#pragma once

#include "linkage/DevicePorts.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::linkage {

/// How the members of a list are switched on: all at once, or one after the other, round and round.
struct Mode {
    bool loop = false;
    std::chrono::milliseconds interval{0}; ///< of a loop; less than `shortestInterval` counts as that
    friend bool operator==(const Mode&, const Mode&) = default;
};

constexpr std::chrono::milliseconds shortestInterval{100};

/// One input, or several that belong together.
struct Condition {
    std::vector<int> inputs; ///< pids, at least one
    bool all = false;        ///< every input must have reached the level; else one of them
    friend bool operator==(const Condition&, const Condition&) = default;
};

/// One output, or several that belong together.
struct Action {
    std::vector<int> outputs; ///< pids, at least one
    Mode mode;
    friend bool operator==(const Action&, const Action&) = default;
};

/// A linkage plan as it is evaluated.
struct Plan {
    std::int64_t id = 0;
    std::string name;
    bool enabled = true;
    bool report = true;                           ///< people are notified
    bool allInputs = false;                       ///< every input that has thresholds is a condition of its own
    bool allConditions = false;                   ///< all conditions must hold; else one of them
    std::optional<std::chrono::seconds> duration; ///< how long the condition must hold; none: not at all
    int threshold = 1;                            ///< an input counts from this level on
    std::vector<Condition> conditions;
    std::vector<Action> actions;
    Mode mode; ///< of the actions
    friend bool operator==(const Plan&, const Plan&) = default;
};

/// The outputs that a plan wants to be on.
struct Wanted {
    std::vector<int> outputs;
    std::optional<std::chrono::milliseconds> until; ///< when that changes, on the same scale; nothing: never
};
/// `elapsed` since the plan's condition began to count. A combined action inside a plan's loop begins anew with each
/// of its turns.
Wanted wantedAt(const Plan& plan, std::chrono::milliseconds elapsed);

} // namespace ipncsdk::linkage
