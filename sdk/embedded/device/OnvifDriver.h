#pragma once

#include "base/ServiceCode.h"
#include "device/PtzDriver.h"
#include "onvif/OnvifPtz.h"
#include "onvif/Outcome.h"

#include <optional>

namespace ipncsdk::device {

/// The code by which a client is told of a camera's refusal.
ServiceCode codeOf(onvif::Refusal refusal);

/// Moves a network camera by ONVIF. Such cameras have no cruises, and set their iris themselves.
class OnvifDriver final : public PtzDriver {
public:
    /// `ptz` outlives this.
    explicit OnvifDriver(onvif::OnvifPtz& ptz);

    /// The last failure that this told as a code; nothing when there was none.
    [[nodiscard]] const std::optional<onvif::Failure>& failure() const { return failure_; }

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

private:
    template <typename T>
    ServiceCode told(const onvif::Outcome<T>& outcome);

    onvif::OnvifPtz& ptz_;
    std::optional<onvif::Failure> failure_;
};

} // namespace ipncsdk::device
