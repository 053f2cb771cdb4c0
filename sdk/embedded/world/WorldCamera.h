#pragma once

#include "store/Devices.h"

#include <string>

namespace ipncsdk::world {

/// The number-th camera of the world (from 1), a recorded scene, as a device of `owner`.
store::Device cameraDevice(const std::string& ipncid, const char* name, store::AccountId owner, int number);

/// The id of the owner's number-th camera.
std::string cameraId(int number);

/// Puts a camera into a group of its owner. The word is needed once the camera has been deleted and is to be added
/// again. In the caller's transaction; throws what the connection throws.
void insertCamera(soci::session& sql, const store::Device& device, store::GroupId group);

} // namespace ipncsdk::world
