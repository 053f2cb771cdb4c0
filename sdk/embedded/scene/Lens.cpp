#include "scene/Lens.h"

#include <cmath>
#include <numbers>

namespace ipncsdk::scene {

namespace {

constexpr int mostSteps = 40;
constexpr double closeEnough = 1e-12;

/// The distortion of the pinhole model as OpenCV's documentation has it, "Camera Calibration and 3D Reconstruction".
cv::Point2d distorted(const std::array<double, 5>& distortion, const cv::Point2d& at) {
    const auto [k1, k2, p1, p2, k3] = distortion;
    const double r2 = at.x * at.x + at.y * at.y;
    const double radial = 1 + r2 * (k1 + r2 * (k2 + r2 * k3));
    return {at.x * radial + 2 * p1 * at.x * at.y + p2 * (r2 + 2 * at.x * at.x),
            at.y * radial + p1 * (r2 + 2 * at.y * at.y) + 2 * p2 * at.x * at.y};
}

cv::Matx33d turn(int axis, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const int first = (axis + 1) % 3;
    const int second = (axis + 2) % 3;
    cv::Matx33d matrix = cv::Matx33d::eye();
    matrix(first, first) = matrix(second, second) = std::cos(angle);
    matrix(second, first) = std::sin(angle);
    matrix(first, second) = -std::sin(angle);
    return matrix;
}

} // namespace

cv::Matx33d Lens::matrix() const {
    return {focusX, 0, centre.x, 0, focusY, centre.y, 0, 0, 1};
}

cv::Point2d Lens::pixelOf(const cv::Point2d& direction) const {
    const cv::Point2d bent = distorted(distortion, direction);
    return {bent.x * focusX + centre.x, bent.y * focusY + centre.y};
}

cv::Point2d Lens::directionOf(const cv::Point2d& pixel) const {
    const cv::Point2d seen((pixel.x - centre.x) / focusX, (pixel.y - centre.y) / focusY);
    cv::Point2d direction = seen;
    for (int step = 0; step < mostSteps; ++step) {
        const cv::Point2d wrong = distorted(distortion, direction) - seen;
        direction -= wrong;
        if (wrong.dot(wrong) < closeEnough * closeEnough)
            break;
    }
    return direction;
}

Lens Lens::scaled(const cv::Size& other) const {
    const double x = static_cast<double>(other.width) / size.width;
    const double y = static_cast<double>(other.height) / size.height;
    // Corners of pictures coincide, and pixels' centres are half a pixel away from them.
    return {other, focusX * x, focusY * y, {(centre.x + 0.5) * x - 0.5, (centre.y + 0.5) * y - 0.5}, distortion};
}

Lens Lens::zoomed(const cv::Point2d& corner, double magnification) const {
    return {size,
            focusX * magnification,
            focusY * magnification,
            {(centre.x + 0.5 - corner.x) * magnification - 0.5, (centre.y + 0.5 - corner.y) * magnification - 0.5},
            distortion};
}

Pose Pose::turned(const cv::Vec3d& degrees, const cv::Vec3d& translation) {
    return {turn(2, degrees[2]) * turn(1, degrees[1]) * turn(0, degrees[0]), translation};
}

cv::Vec3d Pose::place(const cv::Point3d& point) const {
    return rotation * cv::Vec3d(point.x, point.y, point.z) + translation;
}

cv::Point2d project(const Lens& lens, const Pose& pose, const cv::Point3d& point) {
    const cv::Vec3d place = pose.place(point);
    return lens.pixelOf({place[0] / place[2], place[1] / place[2]});
}

} // namespace ipncsdk::scene
