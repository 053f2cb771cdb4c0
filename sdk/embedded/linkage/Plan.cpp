#include "linkage/Plan.h"

#include <algorithm>

namespace ipncsdk::linkage {

namespace {

using std::chrono::milliseconds;

/// Which member of a loop has its turn, and when the turn began and ends.
struct Turn {
    std::size_t member = 0;
    milliseconds begin{0};
    milliseconds end{0};
};

Turn turnAt(const Mode& mode, std::size_t members, milliseconds elapsed) {
    const milliseconds interval = std::max(mode.interval, shortestInterval);
    const auto number = elapsed / interval;
    return {static_cast<std::size_t>(number) % members, interval * number, interval * (number + 1)};
}

void sooner(std::optional<milliseconds>& until, std::optional<milliseconds> other) {
    if (other && (!until || *other < *until))
        until = other;
}

/// `begin`: when the action's own turn began.
void add(const Action& action, milliseconds begin, milliseconds elapsed, Wanted& wanted) {
    if (!action.mode.loop || action.outputs.size() < 2) {
        wanted.outputs.insert(wanted.outputs.end(), action.outputs.begin(), action.outputs.end());
        return;
    }
    const Turn turn = turnAt(action.mode, action.outputs.size(), elapsed - begin);
    wanted.outputs.push_back(action.outputs[turn.member]);
    sooner(wanted.until, begin + turn.end);
}

} // namespace

Wanted wantedAt(const Plan& plan, milliseconds elapsed) {
    Wanted wanted;
    if (plan.mode.loop && plan.actions.size() > 1) {
        const Turn turn = turnAt(plan.mode, plan.actions.size(), elapsed);
        add(plan.actions[turn.member], turn.begin, elapsed, wanted);
        sooner(wanted.until, turn.end);
        return wanted;
    }
    for (const Action& action : plan.actions)
        add(action, milliseconds(0), elapsed, wanted);
    return wanted;
}

} // namespace ipncsdk::linkage
