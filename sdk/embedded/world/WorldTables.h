#pragma once

#include "base/JsonText.h"

#include <vector>

namespace ipncsdk::world {

struct GroupPlan {
    const char* name;
    std::vector<const char*> cameras; ///< names, in display order
};

/// The first account's groups and the cameras in them, all of them online.
const std::vector<GroupPlan>& ownGroups();

/// Cameras that a friend owns and gives to the first account.
struct GivenCamera {
    const char* ipncid;
    const char* name;
    const char* rights; ///< the "authority" object, as JSON text
};
const std::vector<GivenCamera>& givenCameras();

/// Cameras that nobody owns until an account adds them by their words.
struct WaitingCamera {
    const char* ipncid;
    const char* name;
    const char* word;
};
const std::vector<WaitingCamera>& waitingCameras();

/// What a camera carries besides its video; pids are unique in the whole world.
struct BoardPlan {
    const char* camera; ///< name of a camera of `ownGroups`
    Json interfaces;    ///< as in the device record
    Json extend;
};
const std::vector<BoardPlan>& boards();

/// The first account's last group: cameras that can't be reached. Every one that can be stands before them, so that
/// a wall of 64 is full.
const GroupPlan& groupOfOffline();

} // namespace ipncsdk::world
