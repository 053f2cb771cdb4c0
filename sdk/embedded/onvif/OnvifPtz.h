#pragma once

#include "onvif/CameraProbe.h"
#include "onvif/CameraSession.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::onvif {

/// A span of numbers, as cameras tell what they take.
struct Range {
    double low = 0;
    double high = 0;
    /// Where `value` lies from -1 to 1 (or 0 to 1), brought into this span.
    [[nodiscard]] double fromSigned(double value) const;
    [[nodiscard]] double fromUnit(double value) const;
    [[nodiscard]] double toSigned(double value) const;
    [[nodiscard]] double toUnit(double value) const;
};

struct PtzCaps {
    bool pan = false;
    bool tilt = false;
    bool zoom = false;
    bool focus = false;
    bool iris = false; ///< never: these cameras set it themselves
    bool home = false;
    int presets = 0; ///< how many there can be, 64 at most
};

struct PtzState {
    std::optional<double> pan;  ///< -1 to 1; nothing where the camera does not tell
    std::optional<double> tilt; ///< -1 to 1, 1 is up
    std::optional<double> zoom; ///< 0 to 1
    std::optional<bool> moving;
};

struct PtzPreset {
    int index = 0; ///< 1 to 64
    std::string name;
};

/// Moves a network camera. For one thread at a time; every call may wait for the network. A failure of kind
/// `NotSupported` means that the camera cannot do this.
///
/// Presets have tokens of the camera's own at the camera and numbers here. A token that is a number from 1 to 64 is
/// its own number. Others get the lowest number that is free, which they keep as long as this object lives.
class OnvifPtz final {
public:
    /// `session` outlives this.
    explicit OnvifPtz(CameraSession& session);
    OnvifPtz(const OnvifPtz&) = delete;
    OnvifPtz& operator=(const OnvifPtz&) = delete;

    Outcome<PtzCaps> caps();
    Outcome<PtzState> state();

    /// Moves on until the next move or stop, and by the camera's own watch for 10 s at most (less, where the camera
    /// allows less). Directions are -1, 0 or 1, tilt 1 is up; `speed` is 1 to 10. All 0 is a stop.
    Outcome<Done> move(int pan, int tilt, int zoom, int speed);
    Outcome<Done> stop();
    /// -1 near, 0 stop, 1 far.
    Outcome<Done> focus(int direction);
    Outcome<Done> home();

    Outcome<std::vector<PtzPreset>> presets();
    Outcome<Done> setPreset(int index, const std::string& name);
    /// `Fault` for a preset that is not there, as for the next one.
    Outcome<Done> goToPreset(int index);
    Outcome<Done> deletePreset(int index);

private:
    /// What the camera told of its movement.
    struct Node {
        MediaProfile profile;
        PtzCaps caps;
        Range panSpeed;
        Range tiltSpeed;
        Range zoomSpeed;
        Range panPlace;
        Range tiltPlace;
        Range zoomPlace;
        Range focusSpeed;
        double timeout = 10; ///< seconds
    };

    Outcome<Done> begin();
    Outcome<Done> readNode(Node& node);
    Outcome<Done> readTimeout(Node& node);
    void readFocus(Node& node);
    Outcome<Done> perform(const char* operation, const std::string& arguments = {});
    [[nodiscard]] std::string velocity(int pan, int tilt, int zoom, int speed) const;
    [[nodiscard]] std::optional<int> numberFor(const std::string& token);
    Outcome<std::string> presetToken(int index);

    CameraSession& session_;
    std::optional<Node> node_;                ///< nothing before the camera has told it
    std::map<int, std::string> presetTokens_; ///< by number; 1 to 64
};

} // namespace ipncsdk::onvif
