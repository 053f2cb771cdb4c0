#pragma once

#include "base/JsonText.h"
#include "device/PtzDriver.h"

#include <functional>
#include <optional>
#include <string_view>

namespace ipncsdk::device {

/// True for the names of "getcmds" and "setcmds" that are about movement.
bool isPtzName(std::string_view name);

/// One write, checked and ready to be done.
using PtzCommand = std::function<ServiceCode(PtzDriver& driver)>;

/// What a write asks for; nothing when the value is not what the name takes. Names that can only be read, and unknown
/// ones, are not taken.
std::optional<PtzCommand> readPtzCommand(std::string_view name, const Json& value);
bool isPtzCommand(std::string_view name);

/// The value of a read. `NotSupported` gives null, as for a name that cannot be read.
ServiceCode readPtz(PtzDriver& driver, std::string_view name, Json& value);

} // namespace ipncsdk::device
