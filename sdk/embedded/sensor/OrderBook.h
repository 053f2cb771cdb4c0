#pragma once

#include "base/ServiceCode.h"
#include "sensor/SampleFile.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace ipncsdk::sensor {

/// What a process wants that does not read the boards itself, handed over in the file of samples. One thread.
class OrderBook final {
public:
    enum class Kind { Write = 1, Hand = 2, Read = 3 };
    struct Order {
        Kind kind = Kind::Write;
        int pid = 0;
        double value = 0;
    };

    explicit OrderBook(SampleFile& file);

    /// Enters an order; returns its number.
    std::int64_t place(const Order& order, std::int64_t now);
    /// How it ended; nothing as long as nobody has done it.
    std::optional<ServiceCode> outcome(std::int64_t number);
    /// Takes an order back, done or not.
    void remove(std::int64_t number);

    /// Does the orders that wait, and forgets those that are older than a minute. `carryOut` runs outside of any
    /// transaction.
    void serve(std::int64_t now, const std::function<ServiceCode(const Order& order)>& carryOut);

private:
    SampleFile& file_;
};

} // namespace ipncsdk::sensor
