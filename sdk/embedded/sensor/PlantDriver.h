#pragma once

#include "sensor/Driver.h"
#include "sensor/Position.h"

#include <optional>

namespace ipncsdk::sensor {

/// The value of a simulated input: a slow curve over the day, a little noise, and every four minutes an excursion of
/// some forty seconds that reaches the thresholds' levels in turn. It depends on the input and the time alone, so
/// several processes see the same plant.
double plantValue(const Port& input, std::chrono::system_clock::time_point time);

/// A board of a simulated plant. Outputs keep what was written.
class PlantDriver final : public Driver {
public:
    PlantDriver(const Board& board, std::function<std::chrono::system_clock::time_point()> now);

    std::string open() override { return {}; }
    std::string read(std::vector<RawValue>& raw) override;
    std::string write(const Port& output, double value) override;

private:
    const std::vector<Port> inputs_;
    std::optional<SimulatedWalk> walk_; ///< of a positioning sensor
    const std::function<std::chrono::system_clock::time_point()> now_;
};

} // namespace ipncsdk::sensor
