#pragma once

#include "sensor/Driver.h"
#include "sensor/Position.h"

#include <functional>
#include <optional>
#include <vector>

namespace ipncsdk::sensor {

/// The value of a simulated input: a slow curve over the day, a little noise, and every four minutes an excursion of
/// some forty seconds that reaches the thresholds' levels in turn. It depends on the input and the time alone, so
/// several processes see the same plant.
double plantValue(const Port& input, std::chrono::system_clock::time_point time);

/// A board of a simulated plant. Outputs keep what was written. An input whose "follows" is n tells the state of the
/// n-th output (from 1), 0 before that was ever written.
class PlantDriver final : public Driver {
public:
    /// `valueOf` knows what was written last, here or by another program.
    PlantDriver(const Board& board, std::function<std::chrono::system_clock::time_point()> now,
                std::function<std::optional<double>(int pid)> valueOf = nullptr);

    std::string open() override { return {}; }
    std::string read(std::vector<RawValue>& raw) override;
    std::string write(const Port& output, double value) override;

private:
    [[nodiscard]] double valueAt(const Port& input, std::chrono::system_clock::time_point time) const;

    const std::vector<Port> inputs_;
    const std::vector<Port> outputs_;
    std::optional<SimulatedWalk> walk_; ///< of a positioning sensor
    const std::function<std::chrono::system_clock::time_point()> now_;
    const std::function<std::optional<double>(int pid)> valueOf_;
};

} // namespace ipncsdk::sensor
