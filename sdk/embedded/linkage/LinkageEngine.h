#pragma once

#include "linkage/InputLevel.h"
#include "linkage/Plan.h"
#include "linkage/SwitchFight.h"
#include "sensor/Reading.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace ipncsdk::linkage {

/// A device with its plans.
struct LinkedDevice {
    std::string ipncid;
    DevicePorts ports;
    std::vector<Plan> plans;
};

/// What a plan raised.
struct Raised {
    std::string ipncid;
    std::int64_t planId = 0;
    int input = 0; ///< pid
    double value = 0;
    int level = 1;    ///< that the input has reached, at least the plan's
    bool low = false; ///< the value is too low
    /// When the input was read; nothing when the alarm comes from time that went by.
    std::optional<std::chrono::system_clock::time_point> readAt;
};

struct Switching {
    int output = 0; ///< pid
    bool on = false;
};

/// What the engine wants done and said, in order.
struct LinkageEffects {
    std::vector<Raised> alarms;
    std::vector<Switching> switches;
    std::vector<std::string> logLines;
    std::vector<std::string> notices; ///< sentences for the user
};

/// Evaluates linkage plans: pure logic, one thread. The time is given with each call and never goes back.
///
/// Life of a plan: idle; waiting, since its condition holds; active, once it has held for the plan's duration without
/// a break (one alarm, outputs on); idle again when the condition no longer holds (outputs off). A disabled plan, and
/// one that was stopped because it fought with another, is idle.
class LinkageEngine final {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Replaces devices and plans. Plans that are as they were go on where they are; changed ones begin anew.
    void setDevices(const std::vector<LinkedDevice>& devices, Time now);
    /// Takes what was read at `now`. Whatever was due before is done first.
    void take(const std::vector<sensor::Reading>& readings, Time now);
    /// Does what is due by `now`.
    void advance(Time now);
    /// When `advance` has something to do next; nothing: never.
    [[nodiscard]] std::optional<Time> nextDue() const;

    /// What has to be done since the last call.
    LinkageEffects takeEffects();

private:
    struct State {
        Plan plan;
        std::string ipncid;
        std::vector<Condition> conditions; ///< all of the plan's, those of "all inputs" included
        std::optional<Time> holdsSince;
        std::optional<Time> activeSince;
        std::optional<Time> dueAt;         ///< when the duration is over, or the loop's next turn comes
        std::set<int> wanted;              ///< outputs that it wants on
        std::set<std::int64_t> foughtWith; ///< not empty: stopped until one of these is changed
    };
    struct InputState {
        Input input;
        InputLevel level;
        bool answers = false;            ///< the last reading was a normal one
        std::vector<std::int64_t> plans; ///< that look at it
    };

    void addPlan(const LinkedDevice& device, const Plan& plan, std::map<std::int64_t, State>& before);
    void releaseChanged(const std::map<std::int64_t, State>& before);
    [[nodiscard]] bool hasReached(int input, int threshold) const;
    [[nodiscard]] bool holds(const Condition& condition, int threshold) const;
    [[nodiscard]] bool holds(const State& state) const;
    void judge(State& state, Time now, std::optional<std::chrono::system_clock::time_point> readAt);
    void activate(State& state, Time now, std::optional<std::chrono::system_clock::time_point> readAt);
    void rest(State& state);
    /// Sets what an active plan wants, and when that changes.
    void want(State& state, Time now);
    /// Switches outputs to what all plans together want.
    void settleOutputs(Time now);
    void stopFight(int output, const std::set<std::int64_t>& plans);

    std::map<std::int64_t, State> plans_; ///< by id
    std::map<int, InputState> inputs_;    ///< by pid
    std::map<int, std::set<std::int64_t>>
        wantedBefore_;       ///< by output: the plans that wanted it on at the last settling
    bool unsettled_ = false; ///< a plan wants other outputs than at the last settling
    SwitchFight fights_;
    LinkageEffects effects_;
};

} // namespace ipncsdk::linkage
