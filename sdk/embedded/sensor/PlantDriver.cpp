#include "sensor/PlantDriver.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string_view>
#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr std::int64_t cycle = 240;    ///< seconds from one excursion to the next
constexpr std::int64_t excursion = 40; ///< seconds
constexpr std::int64_t ramp = 8;       ///< seconds of rising and of falling
constexpr double day = 86400;

/// What is believable in a unit: the middle, and how far the day and the noise lead from it.
struct Usual {
    std::string_view unit;
    double middle;
    double daily;
    double noise;
};

constexpr std::array usuals = {
    Usual{"℃", 24, 4, 0.15},     Usual{"%RH", 52, 8, 0.4},       Usual{"MPa", 0.62, 0.04, 0.004},
    Usual{"kPa", 101, 1, 0.05},  Usual{"m³/h", 118, 14, 1},      Usual{"m", 3.1, 0.4, 0.01},
    Usual{"%LEL", 3, 1, 0.15},   Usual{"ppm", 420, 40, 3},       Usual{"V", 228, 3, 0.4},
    Usual{"A", 36, 6, 0.5},      Usual{"mm/s", 2.1, 0.3, 0.08},  Usual{"lx", 320, 180, 6},
    Usual{"pH", 7.2, 0.2, 0.02}, Usual{"mg/L", 0.8, 0.15, 0.01}, Usual{"kW", 42, 9, 0.6},
};

/// A number from 0 to 1 that looks random (SplitMix64).
double scattered(std::int64_t pid, std::int64_t step) {
    std::uint64_t value = static_cast<std::uint64_t>(pid) * 0x9E3779B97F4A7C15U + static_cast<std::uint64_t>(step);
    value += 0x9E3779B97F4A7C15U;
    value = (value ^ value >> 30U) * 0xBF58476D1CE4E5B9U;
    value = (value ^ value >> 27U) * 0x94D049BB133111EBU;
    value ^= value >> 31U;
    return static_cast<double>(value >> 11U) / 9007199254740992.0;
}

/// Noise without jumps: between one second's number and the next one's.
double noise(int pid, double seconds) {
    const double step = std::floor(seconds);
    const double from = scattered(pid, static_cast<std::int64_t>(step));
    const double to = scattered(pid, static_cast<std::int64_t>(step) + 1);
    return (from + (to - from) * (seconds - step)) * 2 - 1;
}

/// The thresholds that are reached in one direction, by level.
std::vector<std::pair<int, double>> limitsOf(const Port& input, std::optional<double> Threshold::*direction) {
    std::vector<std::pair<int, double>> limits;
    for (const Threshold& threshold : input.thresholds) {
        if (threshold.*direction)
            limits.emplace_back(threshold.level, *(threshold.*direction));
    }
    std::sort(limits.begin(), limits.end());
    return limits;
}

/// How far an excursion has got, from 0 to 1.
double share(std::int64_t place) {
    if (place >= excursion)
        return 0;
    const std::int64_t edge = std::min(place, excursion - place);
    return std::min(1.0, static_cast<double>(edge) / static_cast<double>(ramp));
}

/// Something that is on or off, such as a door. One with a threshold is on for an excursion only.
double onOff(const Port& input, std::int64_t turn, std::int64_t place) {
    if (!input.thresholds.empty())
        return place < excursion ? 1 : 0;
    return scattered(input.pid, turn) < 0.5 ? 0 : 1;
}

} // namespace

double plantValue(const Port& input, std::chrono::system_clock::time_point time) {
    const double seconds = std::chrono::duration<double>(time.time_since_epoch()).count();
    // Inputs do not go off together.
    const auto shifted = static_cast<std::int64_t>(std::floor(seconds)) + std::int64_t{input.pid} * 53;
    const std::int64_t turn = shifted / cycle;
    const std::int64_t place = shifted % cycle;
    const auto* const known =
        std::find_if(usuals.begin(), usuals.end(), [&](const Usual& usual) { return usual.unit == input.unit; });
    if (input.unit.empty())
        return onOff(input, turn, place);
    const Usual usual = known != usuals.end() ? *known : Usual{"", 50, 10, 0.5};
    const double quiet = usual.middle + usual.daily * std::sin(2 * std::numbers::pi * seconds / day + input.pid) +
                         usual.noise * noise(input.pid, seconds);
    const auto highs = limitsOf(input, &Threshold::high);
    const auto limits = highs.empty() ? limitsOf(input, &Threshold::low) : highs;
    if (limits.empty())
        return quiet;
    // Between two excursions the value keeps away from the first limit, whatever that is.
    const double first = limits.front().second;
    const double room = std::max(std::abs(first - usual.middle), std::abs(first) * 0.05) + usual.noise;
    const double rest = highs.empty() ? std::max(quiet, first + room * 0.3) : std::min(quiet, first - room * 0.3);
    const auto at = static_cast<std::size_t>(turn % static_cast<std::int64_t>(limits.size()));
    const double next =
        at + 1 < limits.size() ? limits[at + 1].second : limits[at].second + (limits[at].second - rest);
    const double target = limits[at].second + (next - limits[at].second) * 0.4;
    return rest + (target - rest) * share(place);
}

PlantDriver::PlantDriver(const Board& board, std::function<std::chrono::system_clock::time_point()> now,
                         std::function<std::optional<double>(int pid)> valueOf)
    : inputs_(board.inputs)
    , outputs_(board.outputs)
    , now_(std::move(now))
    , valueOf_(std::move(valueOf)) {
    if (isPositionBoard(board.record))
        walk_.emplace(board.record);
}

std::string PlantDriver::read(std::vector<RawValue>& raw) {
    const auto now = now_();
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
        // What is believable is the value that people see, so scale and offset are taken back.
        const double value = valueAt(inputs_[i], now);
        const double digits = inputs_[i].unit == "MPa" ? 1000 : 100;
        raw[i].value = (std::round(value * digits) / digits - inputs_[i].offset) / inputs_[i].scale;
    }
    return {};
}

double PlantDriver::valueAt(const Port& input, std::chrono::system_clock::time_point time) const {
    if (walk_)
        return walk_->at(textOr(input.params, "axis", "x") == "x",
                         std::chrono::duration<double>(time.time_since_epoch()).count());
    const int followed = wholeAt(input.params, "follows", 0);
    if (followed <= 0 || !valueOf_)
        return plantValue(input, time);
    const auto at = static_cast<std::size_t>(followed - 1);
    return at < outputs_.size() ? valueOf_(outputs_[at].pid).value_or(0) : 0;
}

std::string PlantDriver::write(const Port& /*output*/, double /*value*/) {
    return {};
}

} // namespace ipncsdk::sensor
