#include "sensor/Driver.h"

#include "sensor/FolderDriver.h"
#include "sensor/GpioDriver.h"
#include "sensor/ModbusDriver.h"
#include "sensor/MqttDriver.h"
#include "sensor/PlantDriver.h"
#include "sensor/SoftDriver.h"
#include "sensor/VideoDriver.h"

#include <filesystem>
#include <system_error>

namespace ipncsdk::sensor {

namespace {

std::unique_ptr<Driver> makeLines(const Board& board) {
    std::error_code error;
    const std::string chip = textOr(board.params, "chip", "");
    const std::filesystem::path path(std::u8string(chip.begin(), chip.end()));
    if (std::filesystem::is_directory(path, error))
        return std::make_unique<FolderDriver>(board, path);
    return std::make_unique<GpioDriver>(board, chip);
}

} // namespace

std::unique_ptr<Driver> makeDriver(const std::string& ipncid, const Board& board, const DriverTools& tools) {
    if (isPlant(board))
        return std::make_unique<PlantDriver>(
            board, tools.now, [ipncid, valueOf = tools.valueOf](int pid) { return valueOf(ipncid, pid); });
    if (board.type == "RS485" || board.type == "RS232")
        return std::make_unique<ModbusDriver>(board);
    if (board.type == "IO")
        return makeLines(board);
    if (board.type == "ZIGBEE" || board.type == "POSITION")
        return std::make_unique<MqttDriver>(board);
    if (board.type == "SOFT")
        return std::make_unique<SoftDriver>(
            board, [ipncid, valueOf = tools.valueOf](int pid) { return valueOf(ipncid, pid); });
    if (board.type == "VIDEO")
        return std::make_unique<VideoDriver>(board, [ipncid, pictures = tools.pictures] { return pictures(ipncid); });
    return nullptr;
}

} // namespace ipncsdk::sensor
