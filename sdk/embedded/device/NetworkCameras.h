#pragma once

#include "device/ServiceConfig.h"

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::device {

/// The cameras that the configuration file names, recorded files among them. The set is fixed for one run; which of
/// them were found unreachable is learned from the streams. Thread-safe after `enter`.
class NetworkCameras final {
public:
    NetworkCameras() = default;
    NetworkCameras(const NetworkCameras&) = delete;
    NetworkCameras& operator=(const NetworkCameras&) = delete;

    /// Gives every camera its row in the store and a place in its group, in the caller's transaction. A camera that
    /// the user has moved stays where it is until the file names another group. Cameras whose id belongs to another
    /// device are left out. Adds what is wrong to `mistakes`.
    void enter(soci::session& sql, std::vector<NetworkCamera> cameras, std::vector<ConfigMistake>& mistakes);

    /// Null when there is no such camera. Valid as long as this object.
    [[nodiscard]] const NetworkCamera* find(const std::string& ipncid) const;
    [[nodiscard]] const std::map<std::string, NetworkCamera>& all() const { return cameras_; }

    /// A camera counts as reachable until a connection to it failed.
    [[nodiscard]] bool isReachable(const std::string& ipncid) const;
    void setReachable(const std::string& ipncid, bool reachable);

private:
    std::map<std::string, NetworkCamera> cameras_;
    mutable std::mutex mutex_;
    std::set<std::string> unreachable_; ///< guarded by mutex_
};

} // namespace ipncsdk::device
