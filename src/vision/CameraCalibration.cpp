#include "vision/CameraCalibration.h"

#include "vision/VisionBackend.h"

namespace corvanta::vision {

std::optional<BoardCorners> findBoard(const QImage& photo, const BoardShape& shape) {
    const VisionBackend* const backend = visionBackend();
    return backend != nullptr ? backend->findBoard(photo, shape) : std::nullopt;
}

QImage drawBoard(const QImage& photo, const BoardShape& shape, const BoardCorners& corners) {
    const VisionBackend* const backend = visionBackend();
    return backend != nullptr ? backend->drawBoard(photo, shape, corners) : photo;
}

std::optional<Calibration> calibrate(const QVector<BoardCorners>& photos, const BoardShape& shape, QSize size) {
    const VisionBackend* const backend = visionBackend();
    return backend != nullptr ? backend->calibrate(photos, shape, size) : std::nullopt;
}

} // namespace corvanta::vision
