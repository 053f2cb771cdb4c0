#pragma once

#include "base/JsonText.h"
#include "base/Reply.h"
#include "device/NetworkCameras.h"
#include "store/Database.h"
#include "store/Devices.h"

#include <optional>
#include <string>

namespace ipncsdk::device {

/// Answers the requests that go to a device or ask the service about one. For one thread at a time.
class DeviceRequests final {
public:
    DeviceRequests(store::Database& database, const NetworkCameras& cameras);
    DeviceRequests(const DeviceRequests&) = delete;
    DeviceRequests& operator=(const DeviceRequests&) = delete;

    /// "p2pmsg": reads or writes device parameters. A write is done whole or not at all.
    [[nodiscard]] Reply parameters(store::AccountId account, const Json& message);
    /// "serverreq": what the service knows of a device.
    [[nodiscard]] Reply serverData(store::AccountId account, const Json& message);

private:
    Reply stateOf(store::AccountId account, const Json& message);
    static Reply sensorData(const Json& message);

    store::Database& database_;
    const NetworkCameras& cameras_;
};

/// True when the device can be reached as far as the service knows.
bool isOnline(const store::Device& device, const NetworkCameras& cameras);

/// The device when the account may see it now. Network cameras that the configuration file no longer names are not
/// seen. In the caller's transaction; throws what the connection throws.
std::optional<store::PlacedDevice> visibleDevice(soci::session& sql, store::AccountId account,
                                                 const std::string& ipncid, const NetworkCameras& cameras);

} // namespace ipncsdk::device
