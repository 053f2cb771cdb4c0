#include "sensor/BoardRun.h"

#include "base/Log.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr int usualPeriod = 1000;

} // namespace

BoardRun::BoardRun(SensorBoard what, std::unique_ptr<Driver> driver, Steady now)
    : what_(std::move(what))
    , driver_(std::move(driver))
    , period_(std::max(100, wholeAt(what_.board.params, "period", usualPeriod)))
    , states_(what_.board.inputs.size())
    , retryAt_(now)
    , due_(driver_ ? now : Steady::max()) {}

bool BoardRun::ensureOpen(Steady now, bool atOnce) {
    if (open_ || !what_.reachable)
        return open_ && what_.reachable;
    if (now < retryAt_ && !atOnce)
        return false;
    const std::string fault = driver_->open();
    open_ = fault.empty();
    if (!open_)
        lost(now, fault);
    return open_;
}

void BoardRun::lost(Steady now, const std::string& reason) {
    if (!std::exchange(failing_, true))
        logLine("the board " + std::to_string(what_.board.pid) + " of " + what_.ipncid +
                " does not answer: " + reason);
    driver_->close();
    open_ = false;
    retryAt_ = now + pause_;
    pause_ = std::min(pause_ * 2, longestPause);
}

std::vector<Reading> BoardRun::poll(Steady now, std::chrono::system_clock::time_point wall) {
    // A beat that was missed is not made up for.
    due_ = std::max(due_ + period_, now);
    std::vector<RawValue> raw(states_.size());
    if (ensureOpen(now, false)) {
        const std::string fault = driver_->read(raw);
        if (!fault.empty()) {
            raw.assign(states_.size(), {});
            lost(now, fault);
        } else {
            if (std::exchange(failing_, false))
                logLine("the board " + std::to_string(what_.board.pid) + " of " + what_.ipncid + " answers again");
            pause_ = firstPause;
        }
    }
    return take(raw, wall, false);
}

std::vector<Reading> BoardRun::readAll(Steady now, std::chrono::system_clock::time_point wall) {
    std::vector<RawValue> raw(states_.size());
    if (driver_ && ensureOpen(now, true)) {
        const std::string fault = driver_->read(raw);
        if (!fault.empty()) {
            raw.assign(states_.size(), {});
            lost(now, fault);
        }
    }
    if (driver_)
        return take(raw, wall, true);
    std::vector<Reading> readings;
    for (std::size_t i = 0; i < states_.size(); ++i)
        readings.push_back({what_.board.inputs[i].pid, wall, states_[i].value, states_[i].normal});
    return readings;
}

std::vector<Reading> BoardRun::take(const std::vector<RawValue>& raw, std::chrono::system_clock::time_point wall,
                                    bool all) {
    std::vector<Reading> readings;
    for (std::size_t i = 0; i < states_.size(); ++i) {
        State& state = states_[i];
        const Port& input = what_.board.inputs[i];
        const double value = raw[i].value ? *raw[i].value * input.scale + input.offset : 0;
        const bool normal = raw[i].value && std::isfinite(value);
        const bool told = state.known && state.normal == normal && (!normal || !raw[i].fresh);
        state = {true, normal, normal ? value : state.value};
        if (!told || all)
            readings.push_back({input.pid, wall, state.value, normal});
    }
    return readings;
}

std::optional<Reading> BoardRun::hand(int pid, double raw, std::chrono::system_clock::time_point wall) {
    for (std::size_t i = 0; i < states_.size() && !driver_; ++i) {
        const Port& input = what_.board.inputs[i];
        const double value = raw * input.scale + input.offset;
        if (input.pid != pid || !std::isfinite(value))
            continue;
        states_[i] = {true, true, value};
        return Reading{pid, wall, value, true};
    }
    return std::nullopt;
}

std::string BoardRun::write(const Port& output, double value, Steady now) {
    if (!driver_)
        return "the board has no outputs";
    if (!ensureOpen(now, true))
        return "the board does not answer";
    return driver_->write(output, value);
}

void BoardRun::inherit(const BoardRun& before) {
    const std::vector<Port>& known = before.what_.board.inputs;
    for (std::size_t i = 0; i < states_.size(); ++i) {
        for (std::size_t k = 0; k < known.size(); ++k) {
            if (known[k].pid == what_.board.inputs[i].pid)
                states_[i] = {false, before.states_[k].normal, before.states_[k].value};
        }
    }
}

void BoardRun::release() {
    if (driver_ && open_)
        driver_->close();
    open_ = false;
}

} // namespace ipncsdk::sensor
