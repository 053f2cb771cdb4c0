#pragma once

#include "device/NetworkCameras.h"
#include "media/Stream.h"
#include "store/Database.h"
#include "store/Devices.h"
#include "store/StoreKey.h"

#include <filesystem>
#include <optional>
#include <string>

namespace ipncsdk::api {

/// Where a device's stream comes from; `camera` is null for a recorded scene.
media::Source sourceOf(const store::Device& device, const device::NetworkCamera* camera, bool mainStream,
                       const std::filesystem::path& root);

/// The light stream of a device, for the service itself, whoever owns it; nothing when the device has no video or
/// cannot be reached.
std::optional<media::Subscription> lightStreamOf(store::Database& database, const device::NetworkCameras& cameras,
                                                 const store::StoreKey& key, const std::filesystem::path& root,
                                                 const std::string& ipncid);

} // namespace ipncsdk::api
