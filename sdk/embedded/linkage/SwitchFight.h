#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <set>

namespace ipncsdk::linkage {

/// Finds plans that switch one output back and forth between them.
class SwitchFight final {
public:
    using Time = std::chrono::steady_clock::time_point;
    static constexpr std::chrono::seconds window{10};
    static constexpr std::size_t mostSwitches = 20;

    /// The output was switched because of these plans. Returns all plans that took part when that has happened more
    /// than `mostSwitches` times within the `window` and was not one plan's own doing; else nothing.
    std::set<std::int64_t> note(int output, const std::set<std::int64_t>& plans, Time now);

private:
    struct Switch {
        Time time;
        std::set<std::int64_t> plans;
    };
    std::map<int, std::deque<Switch>> switches_; ///< by output, of the last window
};

} // namespace ipncsdk::linkage
