#pragma once

#include "base/JsonText.h"
#include "base/Reply.h"
#include "device/CameraTask.h"
#include "device/LoopDevice.h"
#include "device/NetworkCameras.h"
#include "device/PtzDriver.h"
#include "store/Database.h"
#include "store/Devices.h"
#include "store/StoreKey.h"

#include <memory>
#include <optional>
#include <string>

namespace ipncsdk::device {

struct DeviceWrites;

/// Answers the requests that go to a device or ask the service about one. For one thread at a time.
class DeviceRequests final {
public:
    DeviceRequests(store::Database& database, NetworkCameras& cameras, const store::StoreKey& key,
                   LoopDevices& loops);
    DeviceRequests(const DeviceRequests&) = delete;
    DeviceRequests& operator=(const DeviceRequests&) = delete;

    /// "p2pmsg": reads or writes device parameters. What the service keeps is written whole or not at all.
    [[nodiscard]] DeviceAnswer parameters(store::AccountId account, const Json& message);
    /// "serverreq": what the service knows of a device.
    [[nodiscard]] Reply serverData(store::AccountId account, const Json& message);
    /// "setnet" and "apconfig", of the account's own devices and of those that nobody owns.
    [[nodiscard]] ServiceCode setAddresses(store::AccountId account, const Json& message);
    [[nodiscard]] ServiceCode setWireless(store::AccountId account, const Json& message);
    /// "QRinfo" and "Laserinfo": how the pictures of a camera are measured, as the client keeps it. The member that
    /// is named like the command goes into the device's "info" as it is.
    [[nodiscard]] ServiceCode setMeasuring(store::AccountId account, const Json& message);
    /// "ipnclatestver"
    [[nodiscard]] Reply newestVersion(store::AccountId account, const Json& message);

    /// Enters what loop cameras have done by themselves: gone, come back, written a version. True when there was
    /// anything, and lists must be read again.
    bool settleLoops();

private:
    using ChangedInfo = std::optional<Json> (*)(const store::Device& device, const Json& message);

    ServiceCode changeInfo(store::AccountId account, const Json& message, ChangedInfo changed);
    /// Null when the device cannot be moved.
    std::unique_ptr<PtzDriver> driverOf(const store::Device& device);
    ServiceCode begin(const store::Device& device, const DeviceWrites& writes);
    /// Why the device does not take the writes.
    ServiceCode refusal(const store::Device& device, const NetworkCamera* camera, const DeviceWrites& writes);
    /// How the camera of an account or of the configuration file is reached; nothing when it has no device service.
    std::optional<NetworkCamera> onvifCamera(soci::session& sql, const store::Device& device);
    ServiceCode readBesides(const store::Device& device, const Json& names, Json& read);
    bool upgradeFits(const store::Device& device, const Json& upgrade);
    Reply stateOf(store::AccountId account, const Json& message);

    store::Database& database_;
    NetworkCameras& cameras_;
    const store::StoreKey& key_;
    LoopDevices& loops_;
};

/// True when the device can be reached as far as the service knows.
bool isOnline(const store::Device& device, const NetworkCameras& cameras);

/// The device when the account may see it now. Network cameras that the configuration file no longer names are not
/// seen. In the caller's transaction; throws what the connection throws.
std::optional<store::PlacedDevice> visibleDevice(soci::session& sql, store::AccountId account,
                                                 const std::string& ipncid, const NetworkCameras& cameras);

} // namespace ipncsdk::device
