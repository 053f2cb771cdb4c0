#include "sensor/GpioDriver.h"

#include <gpiod.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr auto consumer = "corvanta";

int flagsOf(const Port& port) {
    return wholeAt(port.params, "invert", 0) != 0 ? GPIOD_LINE_REQUEST_FLAG_ACTIVE_LOW : 0;
}

} // namespace

GpioDriver::GpioDriver(const Board& board, std::string chip)
    : inputs_(board.inputs)
    , path_(std::move(chip)) {}

GpioDriver::~GpioDriver() {
    close();
}

std::string GpioDriver::open() {
    close();
    chip_ = gpiod_chip_open(path_.c_str());
    return chip_ != nullptr ? "" : std::strerror(errno);
}

void GpioDriver::close() {
    lines_.clear();
    if (chip_ != nullptr)
        gpiod_chip_close(std::exchange(chip_, nullptr));
}

gpiod_line* GpioDriver::request(const Port& port, bool isInput) {
    if (const auto known = lines_.find(port.pid); known != lines_.end())
        return known->second;
    gpiod_line* const line = gpiod_chip_get_line(chip_, static_cast<unsigned>(wholeAt(port.params, "line", 0)));
    if (line == nullptr)
        return nullptr;
    const int refused = isInput ? gpiod_line_request_input_flags(line, consumer, flagsOf(port))
                                : gpiod_line_request_output_flags(line, consumer, flagsOf(port), 0);
    if (refused != 0)
        return nullptr;
    return lines_[port.pid] = line;
}

std::string GpioDriver::read(std::vector<RawValue>& raw) {
    for (std::size_t i = 0; i < inputs_.size(); ++i) {
        gpiod_line* const line = request(inputs_[i], true);
        const int value = line != nullptr ? gpiod_line_get_value(line) : -1;
        raw[i].value = value >= 0 ? std::make_optional<double>(value) : std::nullopt;
    }
    return {};
}

std::string GpioDriver::write(const Port& output, double value) {
    gpiod_line* const line = chip_ != nullptr ? request(output, false) : nullptr;
    if (line == nullptr || gpiod_line_set_value(line, value != 0 ? 1 : 0) != 0)
        return std::strerror(errno);
    return {};
}

} // namespace ipncsdk::sensor
