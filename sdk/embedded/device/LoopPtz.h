#pragma once

#include "base/JsonText.h"
#include "device/LoopDevice.h"
#include "device/PtzDriver.h"
#include "store/Database.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ipncsdk::device {

/// Moves a loop camera. Its presets and cruises are kept in the store.
class LoopPtz final : public PtzDriver {
public:
    /// `database` outlives this. No call may come from inside its work.
    LoopPtz(std::string ipncid, std::shared_ptr<LoopDevice> device, store::Database& database);

    ServiceCode caps(PtzCaps& caps) override;
    ServiceCode state(PtzState& state) override;
    ServiceCode presets(std::vector<PtzPreset>& presets) override;
    ServiceCode cruises(std::vector<PtzCruise>& cruises) override;
    ServiceCode move(const PtzMove& move) override;
    ServiceCode stop() override;
    ServiceCode focus(int direction) override;
    ServiceCode iris(int direction) override;
    ServiceCode home() override;
    ServiceCode setPreset(const PtzPreset& preset) override;
    ServiceCode goToPreset(int index) override;
    ServiceCode deletePreset(int index) override;
    ServiceCode setCruise(const PtzCruise& cruise) override;
    ServiceCode deleteCruise(int index) override;
    ServiceCode startCruise(int index) override;
    ServiceCode stopCruise() override;

    /// The name of the parameter that keeps presets and cruises.
    static constexpr auto storedName = "ptz";

private:
    using Change = std::function<ServiceCode(Json& kept)>;

    /// What the store keeps: {"presets": {INDEX: {"name", "view"}}, "cruises": {INDEX: {"name", "points"}}}.
    ServiceCode read(Json& kept);
    ServiceCode change(const Change& change);

    const std::string ipncid_;
    const std::shared_ptr<LoopDevice> device_;
    store::Database& database_;
};

} // namespace ipncsdk::device
