#pragma once

#include "base/JsonText.h"
#include "base/Reply.h"
#include "device/PtzRequests.h"
#include "device/ServiceConfig.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::device {

/// What is left to be done of a "p2pmsg" by the camera itself, which the network may keep waiting. Rights have been
/// checked, and what the service keeps of the device is read or written already.
struct CameraTask {
    NetworkCamera camera; ///< has a device service
    std::vector<PtzCommand> moves;
    std::map<std::string, int> image; ///< to be written; from 0 to 255
    std::vector<std::string> names;   ///< to be read: about movement, or of `isImageName`
    Json content;                     ///< of the reply; "getcmds" takes what is read
};

/// What a "p2pmsg" came to. With a task the reply is not ready before that is done.
struct DeviceAnswer {
    Reply reply;
    std::optional<CameraTask> task;
};

/// True for the image parameters that a camera has by ONVIF.
bool isImageName(const std::string& name);

} // namespace ipncsdk::device
