#include "device/OnvifDriver.h"

namespace ipncsdk::device {

using onvif::Refusal;

ServiceCode codeOf(Refusal refusal) {
    switch (refusal) {
    case Refusal::None:
        return ServiceCode::Done;
    case Refusal::BadAddress:
        return ServiceCode::BadRequest;
    case Refusal::Unreachable:
    case Refusal::TimedOut:
    case Refusal::NoOnvif:
    case Refusal::Cancelled:
        return ServiceCode::DeviceOffline;
    case Refusal::Password:
        return ServiceCode::CameraPassword;
    case Refusal::Clock:
        return ServiceCode::CameraClock;
    case Refusal::Fault:
        return ServiceCode::CameraFault;
    case Refusal::NotSupported:
        return ServiceCode::NotSupported;
    case Refusal::NoMedia:
        return ServiceCode::NoMedia;
    }
    return ServiceCode::CameraFault;
}

OnvifDriver::OnvifDriver(onvif::OnvifPtz& ptz)
    : ptz_(ptz) {}

template <typename T>
ServiceCode OnvifDriver::told(const onvif::Outcome<T>& outcome) {
    if (outcome)
        return ServiceCode::Done;
    failure_ = outcome.failure();
    return codeOf(outcome.failure().refusal);
}

ServiceCode OnvifDriver::caps(PtzCaps& caps) {
    const auto told = ptz_.caps();
    if (told)
        caps = {told->pan, told->tilt, told->zoom, told->focus, told->iris, told->presets, 0};
    return this->told(told);
}

ServiceCode OnvifDriver::state(PtzState& state) {
    const auto told = ptz_.state();
    if (told)
        state = {told->pan, told->tilt, told->zoom, told->moving, 0};
    return this->told(told);
}

ServiceCode OnvifDriver::presets(std::vector<PtzPreset>& presets) {
    const auto told = ptz_.presets();
    if (told) {
        for (const onvif::PtzPreset& preset : *told)
            presets.push_back({preset.index, preset.name});
    }
    return this->told(told);
}

ServiceCode OnvifDriver::cruises(std::vector<PtzCruise>&) {
    return ServiceCode::NotSupported;
}

ServiceCode OnvifDriver::move(const PtzMove& move) {
    return told(ptz_.move(move.pan, move.tilt, move.zoom, move.speed));
}

ServiceCode OnvifDriver::stop() {
    return told(ptz_.stop());
}

ServiceCode OnvifDriver::focus(int direction) {
    return told(ptz_.focus(direction));
}

ServiceCode OnvifDriver::iris(int) {
    return ServiceCode::NotSupported;
}

ServiceCode OnvifDriver::home() {
    return told(ptz_.home());
}

ServiceCode OnvifDriver::setPreset(const PtzPreset& preset) {
    return told(ptz_.setPreset(preset.index, preset.name));
}

ServiceCode OnvifDriver::goToPreset(int index) {
    return told(ptz_.goToPreset(index));
}

ServiceCode OnvifDriver::deletePreset(int index) {
    return told(ptz_.deletePreset(index));
}

ServiceCode OnvifDriver::setCruise(const PtzCruise&) {
    return ServiceCode::NotSupported;
}

ServiceCode OnvifDriver::deleteCruise(int) {
    return ServiceCode::NotSupported;
}

ServiceCode OnvifDriver::startCruise(int) {
    return ServiceCode::NotSupported;
}

ServiceCode OnvifDriver::stopCruise() {
    return ServiceCode::NotSupported;
}

} // namespace ipncsdk::device
