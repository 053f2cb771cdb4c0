#pragma once

#include "sensor/LatestValues.h"
#include "store/Accounts.h"

#include <functional>
#include <string>

namespace soci {
class session;
}

namespace ipncsdk::world {

/// The ids of the cameras that measure.
inline constexpr auto codeCameraId = "CAM0067";
inline constexpr auto laserCameraId = "CAM0068";

/// Adds the last group of the world, that of the cameras that measure: one looks at a printed code, one at a laser's
/// spot. They have boards for what is measured, outputs that change what they are shown, and plans that have them
/// measured when an output is switched on, or every few minutes while another one is. `number` counts the cameras. In
/// the caller's transaction; throws what the connection throws.
void fillMeasuring(soci::session& sql, store::AccountId owner, int number);

/// What says which exhibit a camera shows (see `LoopControl`): by the newest value of one of its outputs, whichever
/// process wrote it. Null for cameras that do not measure. `latest` outlives it.
std::function<int()> exhibitOf(const std::string& ipncid, const sensor::LatestValues& latest);

} // namespace ipncsdk::world
