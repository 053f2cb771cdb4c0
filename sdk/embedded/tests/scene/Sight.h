#pragma once

#include "scene/Lens.h"

#include <opencv2/core.hpp>

#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::sight {

/// A code as zbar reads it.
struct Code {
    std::string text;
    std::vector<cv::Point2f> corners; ///< left top, left bottom, right bottom, right top; whole pixels
};

/// The one code in a picture; nothing when there is none, or more than one.
std::optional<Code> readCode(const cv::Mat1b& picture);

/// Where a code with sides of so many millimetres is, in the camera's space.
cv::Vec3d positionOf(const Code& code, double side, const scene::Lens& lens);

/// The inner corners of a chessboard, row by row, to a fraction of a pixel; empty when they are not all seen.
std::vector<cv::Point2f> findBoard(const cv::Mat1b& picture, int columns, int rows);

/// Points of OpenCV's own projection.
std::vector<cv::Point2d> projected(const scene::Lens& lens, const scene::Pose& pose,
                                   const std::vector<cv::Point3d>& points);

/// The inner corners of a board on its plane, row by row.
std::vector<cv::Point3d> boardPoints(int columns, int rows, double square);

} // namespace ipncsdk::sight
