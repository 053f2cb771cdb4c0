#include "vision/QrPose.h"

#include "vision/MatrixText.h"

#include <QDebug>
#include <QtMath>

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
    return -angle * M_PI / 180;
}

/// Of a rotation's matrix.
std::array<double, 3> anglesOf(const std::array<double, 9>& r) {
    return {std::atan2(r[7], r[8]), std::atan2(-r[6], std::hypot(r[7], r[8])), std::atan2(r[3], r[0])};
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

Position cameraPosition(const std::array<double, 3>& t, const std::array<double, 3>& angles) {
    const auto [x1, y1] = turned(asIfDegrees(angles[2]), t[0], t[1]);
    const auto [z1, x2] = turned(asIfDegrees(angles[1]), t[2], x1);
    const auto [y2, z2] = turned(asIfDegrees(angles[0]), y1, z1);
    return {static_cast<float>(-x2), static_cast<float>(-y2), static_cast<float>(-z2)};
}

std::optional<QrPose> QrPose::make(const QrSetup& setup) {
    const Matrix camera = matrixFromText(setup.cameraMatrix);
    const Matrix distortion = matrixFromText(setup.distCoeffs);
    bool isNumber = false;
    const float width = setup.codeWidth.trimmed().toFloat(&isNumber);
    QrPose pose;
    const bool isUsable = camera.rows == 3 && camera.columns == 3 &&
                          distortion.values.size() == pose.lens_.distortion.size() && isNumber &&
                          std::isfinite(width) && width > 0;
    if (isUsable) {
        std::copy(camera.values.begin(), camera.values.end(), pose.lens_.matrix.begin());
        std::copy(distortion.values.begin(), distortion.values.end(), pose.lens_.distortion.begin());
        pose.half_ = width / 2;
    }
    // The focal lengths.
    if (!isUsable || pose.lens_.matrix[0] <= 0 || pose.lens_.matrix[4] <= 0) {
        qDebug() << "no position can be measured with" << setup.cameraMatrix.left(200) << setup.distCoeffs.left(200)
                 << setup.codeWidth.left(20);
        return std::nullopt;
    }
    return pose;
}

std::optional<QrMeasurement> QrPose::measure(const std::optional<CodeCorners>& corners) const {
    const VisionBackend* const backend = corners ? visionBackend() : nullptr;
    const auto seen = backend != nullptr ? backend->poseOfCode(*corners, half_, lens_) : std::nullopt;
    if (!seen)
        return std::nullopt;
    QrMeasurement result;
    result.angles = anglesOf(seen->rotation);
    result.position = cameraPosition(seen->translation, result.angles);
    return isFinite(result.position) ? std::optional(result) : std::nullopt;
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
