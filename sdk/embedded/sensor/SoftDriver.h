#pragma once

#include "sensor/Driver.h"
#include "sensor/SoftExpression.h"

#include <deque>

namespace ipncsdk::sensor {

/// Inputs that are computed of others.
class SoftDriver final : public Driver {
public:
    SoftDriver(const Board& board, std::function<std::optional<double>(int pid)> valueOf);

    std::string open() override { return {}; }
    std::string read(std::vector<RawValue>& raw) override;
    std::string write(const Port& output, double value) override;

private:
    const std::function<std::optional<double>(int pid)> valueOf_;
    std::deque<std::unique_ptr<SoftExpression>> expressions_; ///< null for a text that cannot be understood
};

} // namespace ipncsdk::sensor
