#include "vision/opencv/CodePose.h"

#include <QDebug>

#include <opencv2/calib3d.hpp>

#include <algorithm>
#include <iterator>

namespace corvanta::vision::opencv {

std::optional<Pose> poseOfCode(const CodeCorners& corners, float half, const Lens& lens) {
    const std::array<cv::Point3f, 4> model = {cv::Point3f(-half, -half, 0), cv::Point3f(-half, half, 0),
                                              cv::Point3f(half, half, 0), cv::Point3f(half, -half, 0)};
    std::array<cv::Point2f, 4> seen;
    std::transform(corners.begin(), corners.end(), seen.begin(), [](const QPointF& corner) {
        return cv::Point2f(static_cast<float>(corner.x()), static_cast<float>(corner.y()));
    });
    const cv::Matx33d camera(lens.matrix.data());
    const cv::Matx<double, 1, 5> distortion(lens.distortion.data());
    cv::Vec3d rotation;
    cv::Vec3d translation;
    cv::Matx33d matrix;
    try {
        if (!cv::solvePnP(model, seen, camera, distortion, rotation, translation, false, cv::SOLVEPNP_ITERATIVE))
            return std::nullopt;
        cv::Rodrigues(rotation, matrix);
    } catch (const cv::Exception& error) {
        qDebug() << "the corners of a code have no position" << error.what();
        return std::nullopt;
    }
    Pose pose;
    std::copy(std::begin(translation.val), std::end(translation.val), pose.translation.begin());
    std::copy(std::begin(matrix.val), std::end(matrix.val), pose.rotation.begin());
    return pose;
}

} // namespace corvanta::vision::opencv
