#pragma once

#include "vision/VisionBackend.h"

namespace corvanta::vision::opencv {

/// See `VisionBackend`. Any thread; never throws.
std::optional<Pose> poseOfCode(const CodeCorners& corners, float half, const Lens& lens);

} // namespace corvanta::vision::opencv
