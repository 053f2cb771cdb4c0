#pragma once

#include "sensor/Board.h"
#include "sensor/PictureSource.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::sensor {

/// What one reading brought for one input.
struct RawValue {
    std::optional<double> value; ///< nothing: the input did not answer
    bool fresh = true;           ///< false: what was told before still holds
};

/// The way to one board. One thread at a time; calls may wait for the device, but never longer than some 10 s.
class Driver {
public:
    Driver() = default;
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;
    virtual ~Driver() = default;

    /// Makes the connection. Empty, or why it could not be made (for the log).
    virtual std::string open() = 0;
    /// Reads all inputs, in the board's order; `raw` has one entry for each. Empty, or why the connection is of no
    /// use any more and must be opened again: `raw` means nothing then.
    virtual std::string read(std::vector<RawValue>& raw) = 0;
    /// Switches an output of the board. Empty, or why it refused.
    virtual std::string write(const Port& output, double value) = 0;
    /// Gives up the connection. The driver can be opened again.
    virtual void close() {}
};

/// What drivers need besides their board.
struct DriverTools {
    std::function<std::chrono::system_clock::time_point()> now;
    /// The value of an input or output that a board of this device may use; nothing when there is none, or it is
    /// abnormal.
    std::function<std::optional<double>(const std::string& ipncid, int pid)> valueOf;
    /// The pictures of a device; null when it has none.
    std::function<std::unique_ptr<PictureSource>(const std::string& ipncid)> pictures;
};

/// Null for boards whose values are handed in.
std::unique_ptr<Driver> makeDriver(const std::string& ipncid, const Board& board, const DriverTools& tools);

} // namespace ipncsdk::sensor
