#pragma once

#include "base/ServiceCode.h"

#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::device {

constexpr int mostPresets = 64;
constexpr int mostCruises = 8;

struct PtzCaps {
    bool pan = false;
    bool tilt = false;
    bool zoom = false;
    bool focus = false;
    bool iris = false;
    int presets = 0; ///< how many there can be
    int cruises = 0;
};

/// What a camera does not tell is left out.
struct PtzState {
    std::optional<double> pan;  ///< -1 to 1
    std::optional<double> tilt; ///< -1 to 1, which is up
    std::optional<double> zoom; ///< 0 to 1
    std::optional<bool> moving;
    int cruise = 0; ///< the one that runs; 0 for none
};

/// Directions are -1, 0 or 1; tilt 1 is up.
struct PtzMove {
    int pan = 0;
    int tilt = 0;
    int zoom = 0;
    int speed = 5; ///< 1 to 10
};

struct PtzPreset {
    int index = 0; ///< 1 to `mostPresets`
    std::string name;
};

struct PtzPoint {
    int preset = 0;
    int seconds = 1; ///< how long the camera stays there, 1 to 3600
};

struct PtzCruise {
    int index = 0; ///< 1 to `mostCruises`
    std::string name;
    std::vector<PtzPoint> points;
};

/// Moves one camera. For one thread at a time; calls may wait for a network or the store. Arguments have been
/// checked. What a camera cannot do is answered with `NotSupported`, a preset or cruise that is not there with
/// `BadRequest`.
class PtzDriver {
public:
    PtzDriver() = default;
    PtzDriver(const PtzDriver&) = delete;
    PtzDriver& operator=(const PtzDriver&) = delete;
    virtual ~PtzDriver() = default;

    virtual ServiceCode caps(PtzCaps& caps) = 0;
    virtual ServiceCode state(PtzState& state) = 0;
    virtual ServiceCode presets(std::vector<PtzPreset>& presets) = 0;
    virtual ServiceCode cruises(std::vector<PtzCruise>& cruises) = 0;

    /// Moves on until the next move or stop, for 10 s at most.
    virtual ServiceCode move(const PtzMove& move) = 0;
    virtual ServiceCode stop() = 0;
    /// -1 near, 0 stop, 1 far; for 10 s at most.
    virtual ServiceCode focus(int direction) = 0;
    /// -1 close, 0 stop, 1 open; for 10 s at most.
    virtual ServiceCode iris(int direction) = 0;
    virtual ServiceCode home() = 0;

    /// Keeps where the camera looks now.
    virtual ServiceCode setPreset(const PtzPreset& preset) = 0;
    virtual ServiceCode goToPreset(int index) = 0;
    virtual ServiceCode deletePreset(int index) = 0;
    virtual ServiceCode setCruise(const PtzCruise& cruise) = 0;
    virtual ServiceCode deleteCruise(int index) = 0;
    virtual ServiceCode startCruise(int index) = 0;
    virtual ServiceCode stopCruise() = 0;
};

} // namespace ipncsdk::device
