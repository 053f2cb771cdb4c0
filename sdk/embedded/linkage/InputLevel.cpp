#include "linkage/InputLevel.h"

namespace ipncsdk::linkage {

void InputLevel::take(const Input& input, double value) {
    value_ = value;
    std::array<Reached, highestLevel> now;
    for (const Threshold& threshold : input.thresholds) {
        const auto index = static_cast<std::size_t>(threshold.level - 1);
        const Reached& before = reached_[index];
        // Several entries of one level count together.
        if (threshold.high)
            now[index].high = now[index].high || value > *threshold.high - (before.high ? input.hysteresis : 0.0);
        if (threshold.low)
            now[index].low = now[index].low || value < *threshold.low + (before.low ? input.hysteresis : 0.0);
    }
    reached_ = now;
}

void InputLevel::takeAnew(const Input& input) {
    lose();
    take(input, value_);
}

void InputLevel::lose() {
    reached_ = {};
}

int InputLevel::level() const {
    for (int level = highestLevel; level > 0; --level) {
        const Reached& reached = reached_[static_cast<std::size_t>(level - 1)];
        if (reached.high || reached.low)
            return level;
    }
    return 0;
}

bool InputLevel::isLow() const {
    const int highest = level();
    return highest > 0 && !reached_[static_cast<std::size_t>(highest - 1)].high;
}

} // namespace ipncsdk::linkage
