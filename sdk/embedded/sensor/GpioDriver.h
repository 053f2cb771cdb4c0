#pragma once

#include "sensor/Driver.h"

#include <map>

struct gpiod_chip;
struct gpiod_line;

namespace ipncsdk::sensor {

/// The lines of a GPIO chip. Systems without such chips refuse to open it.
class GpioDriver final : public Driver {
public:
    GpioDriver(const Board& board, std::string chip);
    ~GpioDriver() override;

    std::string open() override;
    std::string read(std::vector<RawValue>& raw) override;
    std::string write(const Port& output, double value) override;
    void close() override;

private:
    /// Null when the line can't be had.
    gpiod_line* request(const Port& port, bool isInput);

    const std::vector<Port> inputs_;
    const std::string path_;
    gpiod_chip* chip_ = nullptr;       ///< owned; null while closed
    std::map<int, gpiod_line*> lines_; ///< by pid; owned by the chip
};

} // namespace ipncsdk::sensor
