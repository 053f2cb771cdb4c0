#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace ipncsdk::scene {

/// A camera: how directions become points of its picture. The pinhole model with radial and tangential distortion, in
/// pixels; (0, 0) is the centre of the picture's first pixel.
struct Lens {
    cv::Size size = {1280, 720}; ///< of the picture
    double focusX = 1000;        ///< focal lengths
    double focusY = 1000;
    cv::Point2d centre = {639.5, 359.5};
    std::array<double, 5> distortion{}; ///< k1, k2, p1, p2, k3

    [[nodiscard]] cv::Matx33d matrix() const;
    /// Where a direction (x / z, y / z) lies in the picture.
    [[nodiscard]] cv::Point2d pixelOf(const cv::Point2d& direction) const;
    /// The other way round, found step by step; true for points of pictures that are not bent beyond recognition.
    [[nodiscard]] cv::Point2d directionOf(const cv::Point2d& pixel) const;

    /// The same camera with a picture of another size.
    [[nodiscard]] Lens scaled(const cv::Size& other) const;
    /// A part of the picture blown up to the picture's size: its left top corner, counted from the left top corner of
    /// the picture, and how much larger it becomes.
    [[nodiscard]] Lens zoomed(const cv::Point2d& corner, double magnification) const;
};

/// Where a target is: a point of it becomes rotation * point + translation in the camera's space (x to the right, y
/// downwards, z forwards, millimetres).
struct Pose {
    cv::Matx33d rotation = cv::Matx33d::eye();
    cv::Vec3d translation = {0, 0, 1000};

    /// Turned about x, then y, then z, by degrees.
    static Pose turned(const cv::Vec3d& degrees, const cv::Vec3d& translation);
    [[nodiscard]] cv::Vec3d place(const cv::Point3d& point) const;
};

/// Where a point of a target is seen. It lies in front of the camera.
cv::Point2d project(const Lens& lens, const Pose& pose, const cv::Point3d& point);

} // namespace ipncsdk::scene
