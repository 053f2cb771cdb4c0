#pragma once

#include "vision/LaserInfo.h"

struct DeviceRecord;

namespace corvanta::vision {

/// What a device's record keeps of its laser ("Laserinfo" / "info", see `LaserInfo`); empty where nothing was set up.
QVariantMap laserInfoOf(const DeviceRecord& device);

/// The inputs that the device's laser spot is reported as: those that were set up, else those of its board for laser
/// spots, which the parameter "axis" of each tells apart.
QList<LaserInput> laserInputsOf(const DeviceRecord& device);

} // namespace corvanta::vision
