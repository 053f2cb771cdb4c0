#pragma once

#include "linkage/DevicePorts.h"

#include <array>

namespace ipncsdk::linkage {

/// Which level the values of one input have reached.
class InputLevel final {
public:
    /// A level is reached the moment a value is beyond its threshold, and left when one has come back by the input's
    /// hysteresis.
    void take(const Input& input, double value);
    /// Judges the last value by an input that was changed, as if nothing had been reached before.
    void takeAnew(const Input& input);
    /// The input does not answer: no level is reached.
    void lose();

    /// The highest level reached; 0: none.
    [[nodiscard]] int level() const;
    /// The highest level was reached from above: the value is too low.
    [[nodiscard]] bool isLow() const;
    [[nodiscard]] double value() const { return value_; }

private:
    struct Reached {
        bool high = false;
        bool low = false;
    };
    std::array<Reached, highestLevel> reached_; ///< from level 1 on
    double value_ = 0;
};

} // namespace ipncsdk::linkage
