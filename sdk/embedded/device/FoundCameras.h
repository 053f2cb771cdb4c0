#pragma once

#include "base/JsonText.h"
#include "device/NetworkCameras.h"
#include "onvif/DiscoveryMessage.h"

#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace ipncsdk::device {

/// The cameras that the last search of the local network found. Thread-safe.
class FoundCameras final {
public:
    FoundCameras() = default;
    FoundCameras(const FoundCameras&) = delete;
    FoundCameras& operator=(const FoundCameras&) = delete;

    /// Takes the place of what was found before; true when that was something else.
    bool replace(std::vector<onvif::FoundCamera> cameras);

    /// Adds those that were not known, and takes what is new about the others; true when anything was.
    bool add(const std::vector<onvif::FoundCamera>& cameras);

    /// The hosts of the cameras that accounts have added.
    void setAddedHosts(std::set<std::string> hosts);

    /// Their entries of "freshlocal", by "onvif-" and the camera's own id. One counts as added when a camera of the
    /// configuration file or of an account has the same host.
    [[nodiscard]] Json localDevices(const NetworkCameras& added) const;

private:
    mutable std::mutex mutex_;
    std::vector<onvif::FoundCamera> cameras_; ///< guarded by mutex_
    std::set<std::string> addedHosts_;        ///< guarded by mutex_
};

} // namespace ipncsdk::device
