#pragma once

#include "base/JsonText.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ipncsdk::device {

/// A version of the firmware of loop cameras.
struct Firmware {
    const char* version;
    std::int64_t size; ///< bytes
    const char* notes; ///< for the user
};

/// The newest one for a model; null when there is none for it.
const Firmware* newestFirmware(std::string_view model);

/// True when dotted numbers `a` stand for a later version than `b`.
bool isNewer(std::string_view a, std::string_view b);

/// What "ipnclatestver" tells of a device with this "info"; nothing when its maker tells nothing.
std::optional<Json> newestVersionFor(const Json& info);

/// The version that a firmware file holds, by its beginning; empty when it is no firmware.
std::string versionInFile(std::string_view beginning);

} // namespace ipncsdk::device
