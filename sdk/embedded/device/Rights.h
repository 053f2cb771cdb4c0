#pragma once

#include "base/JsonText.h"
#include "store/Devices.h"

#include <string>

namespace ipncsdk::device {

/// What an account may do with a device; the keys of the "authority" object.
enum class Right {
    Admin,  ///< "admin": own it, change everything
    Video,  ///< "video": watch it
    Record, ///< "record": take its coded stream
    Ptz,    ///< "ptz": move it
    Param   ///< "param": read its parameters and sensor data
};

/// The "authority" object of a device as the account sees it, with a flag for every right.
Json authorityOf(const store::PlacedDevice& device);

/// The same for a friend, from the JSON text that the store keeps of the share.
Json authorityOfShare(const std::string& rights);

bool allows(const store::PlacedDevice& device, Right right);

} // namespace ipncsdk::device
