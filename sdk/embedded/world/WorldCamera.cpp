#include "world/WorldCamera.h"

#include "base/JsonText.h"
#include "store/AddableDevices.h"

#include <array>
#include <cstdio>

namespace ipncsdk::world {

namespace {

struct Firmware {
    const char* model;
    const char* software;
    const char* kernel;
    const char* boot;
};

constexpr std::array firmwares = {
    Firmware{"CV-D200", "3.4.12", "4.9.118", "2.1.0"},
    Firmware{"CV-B210", "3.4.12", "4.9.118", "2.1.0"},
    Firmware{"CV-P300", "3.5.1", "4.19.90", "2.2.3"},
};

/// The word of a camera that somebody owns: needed once the camera has been deleted and is to be added again.
std::string wordOf(std::string ipncid) {
    for (char& c : ipncid)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return "word-" + ipncid;
}

} // namespace

store::Device cameraDevice(const std::string& ipncid, const char* name, store::AccountId owner, int number) {
    const Firmware& firmware = firmwares[static_cast<std::size_t>(number) % firmwares.size()];
    store::Device device;
    device.ipncid = ipncid;
    device.owner = owner;
    device.origin = "loop";
    device.name = name;
    device.type = "video";
    // Neighbours on the wall show different scenes, and equal scenes stand at different places of the loop.
    device.scene = number - 1;
    device.phase = (number * 37) % 250;
    device.info = toText({{"model", firmware.model},
                          {"serial", ipncid},
                          {"softwareversion", firmware.software},
                          {"kernelversion", firmware.kernel},
                          {"biosversion", firmware.boot},
                          {"ip", "192.168.10." + std::to_string(10 + number)},
                          {"timezone", "UTC+08:00"},
                          {"QRinfo", Json::object()},
                          {"Laserinfo", Json::object()}});
    device.extend = R"({"sublist":[]})";
    device.video = R"({"codec":"H264","framerate":25,"streams":["main","light"]})";
    return device;
}

std::string cameraId(int number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "CAM%04d", number);
    return text.data();
}

void insertCamera(soci::session& sql, const store::Device& device, store::GroupId group) {
    store::insertDevice(sql, device, group, device.name);
    store::setDeviceWord(sql, device.ipncid, wordOf(device.ipncid));
}

} // namespace ipncsdk::world
