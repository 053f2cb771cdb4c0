#include "linkage/SwitchFight.h"

namespace ipncsdk::linkage {

std::set<std::int64_t> SwitchFight::note(int output, const std::set<std::int64_t>& plans, Time now) {
    std::deque<Switch>& switches = switches_[output];
    switches.push_back({now, plans});
    while (now - switches.front().time > window)
        switches.pop_front();
    if (switches.size() <= mostSwitches)
        return {};
    std::set<std::int64_t> all;
    for (const Switch& each : switches)
        all.insert(each.plans.begin(), each.plans.end());
    if (all.size() < 2) {
        // One plan's loop: of no interest, however fast it is.
        switches.pop_front();
        return {};
    }
    switches.clear();
    return all;
}

} // namespace ipncsdk::linkage
