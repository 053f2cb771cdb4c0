#pragma once

#include "base/JsonText.h"
#include "base/ServiceCode.h"
#include "device/ParameterTable.h"
#include "device/PtzRequests.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::device {

constexpr std::size_t mostNames = 200;

/// What a "setcmds" asks for, checked as far as that needs no device.
struct DeviceWrites {
    struct Value {
        const Parameter* parameter;
        Json value; ///< as the store keeps it
    };
    std::vector<Value> values;
    std::vector<PtzCommand> moves;
    std::optional<Json> upgrade; ///< an object

    [[nodiscard]] bool has(std::string_view name) const;
    /// The device is gone for a while behind these.
    [[nodiscard]] bool restarts() const { return has("ipcamrestartcmd") || has("paradefaultcmd"); }
    [[nodiscard]] bool administers() const { return !values.empty() || upgrade || moves.empty(); }
};

/// Reads "setcmds": an object of names and values, or a list of such objects and of bare command names.
ServiceCode readWrites(const Json& setcmds, DeviceWrites& writes);

/// Writes the values into the store, in the caller's transaction. A reset comes before the values that are written
/// along with it. `now` is the time of day.
void applyWrites(soci::session& sql, const std::string& ipncid, const DeviceWrites& writes,
                 std::chrono::system_clock::time_point now);

/// The value of a parameter from what is stored of the device, from its "info", or its default.
Json storedOrDefault(const Parameter& parameter, const std::map<std::string, std::string>& stored, const Json& info);

} // namespace ipncsdk::device
