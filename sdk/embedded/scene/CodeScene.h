#pragma once

#include "scene/Lens.h"
#include "scene/Print.h"

namespace ipncsdk::scene {

/// A camera that looks at a printed code, or at a chessboard held before it. Everything follows from the time, in
/// seconds since the recording's beginning.
class CodeScene final {
public:
    static constexpr auto text = "CORVANTA-01";
    static constexpr double codeSide = 220; ///< millimetres, without the quiet zone
    static constexpr int codePeriod = 32;   ///< seconds after which the code is where it was

    static constexpr int boardColumns = 9; ///< inner corners
    static constexpr int boardRows = 6;
    static constexpr double boardSquare = 25; ///< millimetres
    static constexpr int boardHold = 3;       ///< seconds in each pose
    static constexpr int boardPoses = 16;
    static constexpr int boardPeriod = boardHold * boardPoses;

    static Lens lens();
    static Print code();
    static Print board();

    /// Where the code's centre is, in the camera's space.
    static cv::Vec3d positionAt(double seconds);
    static Pose codePoseAt(double seconds);
    /// Where the chessboard is; its origin is the first inner corner.
    static Pose boardPoseAt(double seconds);
};

} // namespace ipncsdk::scene
