#include "vision/QrPose.h"

#include "vision/MatrixText.h"

#include <QDebug>

#include <opencv2/calib3d.hpp>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace corvanta::vision {

namespace {

constexpr int Digits = 6; // significant ones of a position

/// Rotates a point of a plane.
std::array<double, 2> turned(double angle, double first, double second) {
    return {std::cos(angle) * first - std::sin(angle) * second, std::sin(angle) * first + std::cos(angle) * second};
}

/// The angles are radians and are taken for degrees here. Initial positions and thresholds of devices were made so;
/// right ones would move them all.
double asIfDegrees(double angle) {
    return -angle * CV_PI / 180;
}

std::array<double, 3> anglesOf(const cv::Matx33d& r) {
    return {std::atan2(r(2, 1), r(2, 2)), std::atan2(-r(2, 0), std::hypot(r(2, 1), r(2, 2))),
            std::atan2(r(1, 0), r(0, 0))};
}

bool isFinite(const Position& position) {
    return std::isfinite(position.x) && std::isfinite(position.y) && std::isfinite(position.z);
}

} // namespace

QrSetup QrSetup::fromMap(const QVariantMap& info) {
    return {info.value(QStringLiteral("cameraMatrix")).toString(),
            info.value(QStringLiteral("distCoeffs")).toString(), info.value(QStringLiteral("QRwidth")).toString()};
}

QStringList Position::texts() const {
    const auto text = [](float value) {
        return QString::number(static_cast<double>(value), 'g', Digits);
    };
    return {text(x), text(y), text(z)};
}

Position cameraPosition(const cv::Vec3d& t, const std::array<double, 3>& angles) {
    const auto [x1, y1] = turned(asIfDegrees(angles[2]), t[0], t[1]);
    const auto [z1, x2] = turned(asIfDegrees(angles[1]), t[2], x1);
    const auto [y2, z2] = turned(asIfDegrees(angles[0]), y1, z1);
    return {static_cast<float>(-x2), static_cast<float>(-y2), static_cast<float>(-z2)};
}

std::optional<QrPose> QrPose::make(const QrSetup& setup) {
    const cv::Mat camera = matrixFromText(setup.cameraMatrix);
    const cv::Mat distortion = matrixFromText(setup.distCoeffs);
    bool isNumber = false;
    const float width = setup.codeWidth.trimmed().toFloat(&isNumber);
    QrPose pose;
    const bool isUsable = camera.size() == cv::Size(3, 3) && distortion.total() == pose.distortion_.cols &&
                          isNumber && std::isfinite(width) && width > 0;
    if (isUsable) {
        pose.camera_ = camera;
        pose.distortion_ = cv::Mat(distortion.reshape(1, 1));
        pose.half_ = width / 2;
    }
    if (!isUsable || pose.camera_(0, 0) <= 0 || pose.camera_(1, 1) <= 0) {
        qDebug() << "no position can be measured with" << setup.cameraMatrix.left(200) << setup.distCoeffs.left(200)
                 << setup.codeWidth.left(20);
        return std::nullopt;
    }
    return pose;
}

std::optional<QrMeasurement> QrPose::measure(const CodeScanner::Corners& corners) const {
    const std::array<cv::Point3f, 4> model = {cv::Point3f(-half_, -half_, 0), cv::Point3f(-half_, half_, 0),
                                              cv::Point3f(half_, half_, 0), cv::Point3f(half_, -half_, 0)};
    cv::Vec3d rotation;
    cv::Vec3d translation;
    cv::Matx33d matrix;
    try {
        if (!cv::solvePnP(model, corners, camera_, distortion_, rotation, translation, false, cv::SOLVEPNP_ITERATIVE))
            return std::nullopt;
        cv::Rodrigues(rotation, matrix);
    } catch (const cv::Exception& error) {
        qDebug() << "the corners of a code have no position" << error.what();
        return std::nullopt;
    }
    QrMeasurement result;
    result.angles = anglesOf(matrix);
    result.position = cameraPosition(translation, result.angles);
    result.corners = corners;
    return isFinite(result.position) ? std::optional(result) : std::nullopt;
}

std::optional<QrMeasurement> QrPose::measure(const cv::Mat& grey, CodeScanner& scanner) const {
    const auto corners = scanner.find(grey);
    return corners ? measure(*corners) : std::nullopt;
}

float trimmedMean(std::vector<float> values) {
    std::sort(values.begin(), values.end());
    if (values.size() > 2)
        values = {values.begin() + 1, values.end() - 1};
    return std::accumulate(values.begin(), values.end(), 0.0F) / static_cast<float>(values.size());
}

std::optional<Position> trimmedMean(const std::vector<Position>& positions) {
    if (positions.empty())
        return std::nullopt;
    const auto mean = [&](float Position::*axis) {
        std::vector<float> values;
        values.reserve(positions.size());
        for (const Position& position : positions)
            values.push_back(position.*axis);
        return trimmedMean(std::move(values));
    };
    return Position{mean(&Position::x), mean(&Position::y), mean(&Position::z)};
}

} // namespace corvanta::vision
