#include "linkage/LinkageEngine.h"

#include "linkage/PlanParser.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ipncsdk::linkage {

namespace {

using std::chrono::milliseconds;
using std::chrono::system_clock;

/// What is done later than this is done as if it were due now.
constexpr std::chrono::seconds longestDelay{1};

/// "All inputs" are those that can reach a level at all.
std::vector<Condition> conditionsOf(const Plan& plan, const DevicePorts& ports) {
    if (!plan.allInputs)
        return plan.conditions;
    std::vector<Condition> conditions;
    for (const auto& [pid, input] : ports.inputs) {
        const bool canReach = std::any_of(input.thresholds.begin(), input.thresholds.end(),
                                          [&plan](const Threshold& each) { return each.level >= plan.threshold; });
        if (canReach)
            conditions.push_back({{pid}, false});
    }
    return conditions;
}

} // namespace

void LinkageEngine::setDevices(const std::vector<LinkedDevice>& devices, Time now) {
    std::map<std::int64_t, State> before = std::exchange(plans_, {});
    std::map<int, InputState> inputsBefore = std::exchange(inputs_, {});
    for (const LinkedDevice& device : devices) {
        for (const auto& [pid, input] : device.ports.inputs) {
            InputState& state = inputs_[pid];
            if (const auto known = inputsBefore.find(pid); known != inputsBefore.end()) {
                state.level = known->second.level;
                state.answers = known->second.answers;
                if (known->second.input != input && state.answers)
                    state.level.takeAnew(input);
            }
            state.input = input;
        }
    }
    for (const LinkedDevice& device : devices) {
        for (const Plan& plan : device.plans)
            addPlan(device, plan, before);
    }
    releaseChanged(before);
    unsettled_ = true; // plans that are gone want nothing
    for (auto& [id, state] : plans_)
        judge(state, now, std::nullopt);
    settleOutputs(now);
}

void LinkageEngine::addPlan(const LinkedDevice& device, const Plan& plan, std::map<std::int64_t, State>& before) {
    State state;
    const auto known = before.find(plan.id);
    const bool same = known != before.end() && known->second.plan == plan && known->second.ipncid == device.ipncid;
    if (same)
        state = known->second;
    state.plan = plan;
    state.ipncid = device.ipncid;
    state.conditions = conditionsOf(plan, device.ports);
    const std::string fault = missingPortFault(plan, device.ports);
    if (!fault.empty() && !same)
        effects_.logLines.push_back("linkage plan " + std::to_string(plan.id) + " of " + device.ipncid +
                                    " names an input or output that is not there");
    for (const Condition& condition : state.conditions) {
        for (const int pid : condition.inputs) {
            if (const auto input = inputs_.find(pid); input != inputs_.end() && device.ports.inputs.count(pid) > 0)
                input->second.plans.push_back(plan.id);
        }
    }
    plans_[plan.id] = std::move(state);
}

void LinkageEngine::releaseChanged(const std::map<std::int64_t, State>& before) {
    for (auto& [id, state] : plans_) {
        const bool released =
            std::any_of(state.foughtWith.begin(), state.foughtWith.end(), [&](const std::int64_t other) {
                const auto now = plans_.find(other);
                const auto then = before.find(other);
                return now == plans_.end() || then == before.end() || now->second.plan != then->second.plan;
            });
        if (released)
            state.foughtWith.clear();
    }
}

void LinkageEngine::take(const std::vector<sensor::Reading>& readings, Time now) {
    advance(now);
    for (const sensor::Reading& reading : readings) {
        const auto found = inputs_.find(reading.pid);
        if (found == inputs_.end())
            continue;
        InputState& input = found->second;
        input.answers = reading.normal;
        if (reading.normal)
            input.level.take(input.input, reading.value);
        else
            input.level.lose();
        for (const std::int64_t id : input.plans)
            judge(plans_.at(id), now, reading.time);
        settleOutputs(now);
    }
}

void LinkageEngine::advance(Time now) {
    // One due time after the other, so that turns keep their order; but for those of a sleep.
    for (auto next = nextDue(); next && *next <= now; next = nextDue()) {
        const auto due = now - *next > longestDelay ? std::make_optional(now) : next;
        for (auto& [id, state] : plans_) {
            if (!state.dueAt || *state.dueAt > *due)
                continue;
            if (state.activeSince)
                want(state, *due);
            else
                activate(state, *due, std::nullopt);
        }
        settleOutputs(*due);
    }
}

std::optional<LinkageEngine::Time> LinkageEngine::nextDue() const {
    std::optional<Time> next;
    for (const auto& [id, state] : plans_) {
        if (state.dueAt && (!next || *state.dueAt < *next))
            next = state.dueAt;
    }
    return next;
}

LinkageEffects LinkageEngine::takeEffects() {
    return std::exchange(effects_, {});
}

bool LinkageEngine::hasReached(int input, int threshold) const {
    const auto found = inputs_.find(input);
    return found != inputs_.end() && found->second.level.level() >= threshold;
}

bool LinkageEngine::holds(const Condition& condition, int threshold) const {
    const auto reached = [&](int input) {
        return hasReached(input, threshold);
    };
    return condition.all ? std::all_of(condition.inputs.begin(), condition.inputs.end(), reached)
                         : std::any_of(condition.inputs.begin(), condition.inputs.end(), reached);
}

bool LinkageEngine::holds(const State& state) const {
    if (!state.plan.enabled || !state.foughtWith.empty() || state.conditions.empty())
        return false;
    const auto one = [&](const Condition& condition) {
        return holds(condition, state.plan.threshold);
    };
    return state.plan.allConditions ? std::all_of(state.conditions.begin(), state.conditions.end(), one)
                                    : std::any_of(state.conditions.begin(), state.conditions.end(), one);
}

void LinkageEngine::judge(State& state, Time now, std::optional<system_clock::time_point> readAt) {
    if (!holds(state))
        return rest(state);
    if (state.holdsSince)
        return;
    state.holdsSince = now;
    if (state.plan.duration)
        state.dueAt = now + *state.plan.duration;
    else
        activate(state, now, readAt);
}

void LinkageEngine::activate(State& state, Time now, std::optional<system_clock::time_point> readAt) {
    state.activeSince = now;
    // Of the inputs that make the condition hold, the one that is worst.
    Raised raised;
    raised.level = 0;
    for (const Condition& condition : state.conditions) {
        if (!holds(condition, state.plan.threshold))
            continue;
        for (const int pid : condition.inputs) {
            const auto input = inputs_.find(pid);
            if (input == inputs_.end() || input->second.level.level() <= raised.level)
                continue;
            const InputLevel& level = input->second.level;
            raised = {state.ipncid, state.plan.id, pid, level.value(), level.level(), level.isLow(), readAt};
        }
    }
    effects_.alarms.push_back(std::move(raised));
    want(state, now);
}

void LinkageEngine::rest(State& state) {
    state.holdsSince.reset();
    state.activeSince.reset();
    state.dueAt.reset();
    unsettled_ = unsettled_ || !state.wanted.empty();
    state.wanted.clear();
}

void LinkageEngine::want(State& state, Time now) {
    const auto elapsed = std::chrono::duration_cast<milliseconds>(now - *state.activeSince);
    const Wanted wanted = wantedAt(state.plan, elapsed);
    state.wanted = std::set<int>(wanted.outputs.begin(), wanted.outputs.end());
    unsettled_ = true;
    state.dueAt.reset();
    if (wanted.until)
        state.dueAt = *state.activeSince + *wanted.until;
}

void LinkageEngine::settleOutputs(Time now) {
    if (!std::exchange(unsettled_, false))
        return;
    std::map<int, std::set<std::int64_t>> wanted;
    for (const auto& [id, state] : plans_) {
        for (const int output : state.wanted)
            wanted[output].insert(id);
    }
    // Off before on: of a loop's outputs never two at a time.
    std::vector<Switching> changes;
    for (const auto& [output, plans] : wantedBefore_) {
        if (wanted.count(output) == 0)
            changes.push_back({output, false});
    }
    for (const auto& [output, plans] : wanted) {
        if (wantedBefore_.count(output) == 0)
            changes.push_back({output, true});
    }
    const auto before = std::exchange(wantedBefore_, wanted);
    for (const Switching& change : changes) {
        effects_.switches.push_back(change);
        const auto& plans = change.on ? wanted.at(change.output) : before.at(change.output);
        const auto fighters = fights_.note(change.output, plans, now);
        if (!fighters.empty())
            stopFight(change.output, fighters);
    }
    // Those that were stopped want nothing any more.
    settleOutputs(now);
}

void LinkageEngine::stopFight(int output, const std::set<std::int64_t>& plans) {
    std::string names;
    std::string ids;
    for (const std::int64_t id : plans) {
        const auto found = plans_.find(id);
        if (found == plans_.end())
            continue;
        found->second.foughtWith = plans;
        rest(found->second);
        names += (names.empty() ? "“" : "、“") + found->second.plan.name + "”";
        ids += " " + std::to_string(id);
    }
    effects_.logLines.push_back("linkage plans" + ids + " switch output " + std::to_string(output) +
                                " back and forth; they are stopped until one of them is changed");
    effects_.notices.push_back("联动策略" + names + "反复切换同一个控制输出, 已停止执行, 修改其中任一策略后恢复。");
}

} // namespace ipncsdk::linkage
