#pragma once

#include <chrono>

namespace ipncsdk {

/// Where time comes from, so that tests can set it. Thread-safe.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// A clock for waiting times, never set back.
    [[nodiscard]] virtual std::chrono::steady_clock::time_point steadyNow() const {
        return std::chrono::steady_clock::now();
    }

    /// The time of day, for stamps that people read.
    [[nodiscard]] virtual std::chrono::system_clock::time_point now() const {
        return std::chrono::system_clock::now();
    }
};

} // namespace ipncsdk
