#pragma once

#include "scene/Photographer.h"

#include <vector>

namespace ipncsdk::scene {

/// A camera that looks at a plate onto which a laser shines. The plate has a cross in each corner; x runs to the
/// right and y downwards from its middle, in millimetres. Everything follows from the time, in seconds since the
/// recording's beginning.
class LaserScene final {
public:
    static constexpr int period = 32; ///< seconds after which the spot is where it was
    static constexpr double crossX = 120;
    static constexpr double crossY = 65;

    static Lens lens();
    static Print plate();
    static Pose platePose();
    /// Left top, right top, right bottom, left bottom.
    static std::vector<cv::Point2d> crosses();

    /// Where the spot is on the plate.
    static cv::Point2d positionAt(double seconds);
    static Spot spotAt(double seconds);
};

} // namespace ipncsdk::scene
