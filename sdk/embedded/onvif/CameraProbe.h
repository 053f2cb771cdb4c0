#pragma once

#include "onvif/CameraSession.h"

#include <string>
#include <vector>

namespace ipncsdk::onvif {

/// One of the streams that a camera offers.
struct MediaProfile {
    std::string token;
    std::string name;
    std::string codec; ///< "H264", "H265", "JPEG", as the camera says
    int width = 0;     ///< pixels
    int height = 0;
    int frameRate = 0;       ///< per second; 0 when the camera does not say
    std::string url;         ///< rtsp, without user name and password; empty when the camera gave none
    std::string videoSource; ///< token; empty when there is none
    std::string ptzNode;     ///< token; empty when this profile does not move the camera
    std::string ptzConfiguration;
};

struct CameraDescription {
    std::string manufacturer;
    std::string model;
    std::string firmware;
    std::string serial;
    std::vector<MediaProfile> profiles;
    std::string mainUrl;  ///< of the largest H.264 stream
    std::string lightUrl; ///< of the smallest one; the same when there is one only
    bool ptz = false;
    bool imaging = false;
};

/// The profiles of a camera without their addresses; at least one.
Outcome<std::vector<MediaProfile>> readProfiles(CameraSession& session);

/// Asks a camera what it is and where its streams are. `NoMedia` when it has no H.264 stream.
Outcome<CameraDescription> probe(CameraSession& session);

} // namespace ipncsdk::onvif
