#pragma once

#include "vision/LaserSpot.h"

namespace corvanta::vision::opencv {

/// See `vision::findSpot`. Any thread; never throws.
SpotSearch findSpot(const QImage& picture, const QImage& reference, const SpotSettings& settings);

} // namespace corvanta::vision::opencv
