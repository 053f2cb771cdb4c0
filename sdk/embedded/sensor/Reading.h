#pragma once

#include "base/ServiceCode.h"

#include <chrono>
#include <vector>

namespace ipncsdk::sensor {

/// What was read of one input.
struct Reading {
    int pid = 0;
    std::chrono::system_clock::time_point time;
    double value = 0;   ///< after scale and offset; of no meaning when `normal` is false
    bool normal = true; ///< the input answered, with a finite value
};

/// Takes what was read. Called on the threads that read, one batch after another for one input; must not block.
class ReadingSink {
public:
    ReadingSink() = default;
    ReadingSink(const ReadingSink&) = delete;
    ReadingSink& operator=(const ReadingSink&) = delete;
    virtual ~ReadingSink() = default;

    virtual void take(const std::vector<Reading>& readings) = 0;
};

/// Switches outputs. Thread-safe; a call may wait for the device.
class OutputWriter {
public:
    OutputWriter() = default;
    OutputWriter(const OutputWriter&) = delete;
    OutputWriter& operator=(const OutputWriter&) = delete;
    virtual ~OutputWriter() = default;

    /// `UnknownInput` for an output that is not there, `WriteFailed` when it refused.
    virtual ServiceCode write(int pid, double value) = 0;
};

} // namespace ipncsdk::sensor
