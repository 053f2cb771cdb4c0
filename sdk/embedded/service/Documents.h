#pragma once

#include "base/JsonText.h"
#include "device/FoundCameras.h"
#include "device/NetworkCameras.h"
#include "sensor/LatestValues.h"
#include "service/AccountService.h"
#include "store/Database.h"

#include <optional>
#include <string_view>

namespace ipncsdk::service {

/// Makes the documents that the client reads. Thread-safe.
class Documents final {
public:
    Documents(store::Database& database, const device::NetworkCameras& cameras, const device::FoundCameras& found,
              const AccountService& accounts, const sensor::LatestValues& latest);

    /// True when there is a document of this name.
    static bool isKnown(std::string_view name);
    /// The document; nothing when the store refused.
    [[nodiscard]] std::optional<Json> make(std::string_view name) const;
    /// The network cameras as "freshlocal" tells them, by id: those of the service, without names and passwords for
    /// their streams, and those that were found.
    [[nodiscard]] Json localDevices() const;

private:
    [[nodiscard]] std::optional<Json> deviceList() const;
    [[nodiscard]] std::optional<Json> userInfo() const;
    [[nodiscard]] Json phoneId() const;
    [[nodiscard]] Json firstAccount() const;

    store::Database& database_;
    const device::NetworkCameras& cameras_;
    const device::FoundCameras& found_;
    const AccountService& accounts_;
    const sensor::LatestValues& latest_;
};

} // namespace ipncsdk::service
