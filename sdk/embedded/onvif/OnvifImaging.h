#pragma once

#include "onvif/CameraSession.h"
#include "onvif/OnvifPtz.h"

#include <map>
#include <string>

namespace ipncsdk::onvif {

/// Brightness and its like of a network camera. For one thread at a time; every call may wait for the network.
class OnvifImaging final {
public:
    /// By "brightness", "contrast", "saturation" and "sharpness", from 0 to 255; without those that the camera does
    /// not have.
    using Values = std::map<std::string, int>;

    /// `session` outlives this.
    explicit OnvifImaging(CameraSession& session);
    OnvifImaging(const OnvifImaging&) = delete;
    OnvifImaging& operator=(const OnvifImaging&) = delete;

    Outcome<Values> read();
    /// Writes these and leaves the others as they are. `NotSupported` when the camera does not have one of them;
    /// nothing is written then.
    Outcome<Done> write(const Values& values);

private:
    Outcome<Done> begin();

    CameraSession& session_;
    std::string source_;                  ///< the video source's token; empty before `begin`
    std::map<std::string, Range> ranges_; ///< what the camera takes, by our names
};

} // namespace ipncsdk::onvif
