#include "sensor/GpioDriver.h"

#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr auto noChips = "this system has no GPIO chips";

} // namespace

GpioDriver::GpioDriver(const Board& board, std::string chip)
    : inputs_(board.inputs)
    , path_(std::move(chip)) {}

GpioDriver::~GpioDriver() = default;

std::string GpioDriver::open() {
    return noChips;
}

void GpioDriver::close() {}

std::string GpioDriver::read(std::vector<RawValue>& /*raw*/) {
    return noChips;
}

std::string GpioDriver::write(const Port& /*output*/, double /*value*/) {
    return noChips;
}

} // namespace ipncsdk::sensor
