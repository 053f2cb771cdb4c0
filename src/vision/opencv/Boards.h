#pragma once

#include "vision/CameraCalibration.h"

namespace corvanta::vision::opencv {

/// See the functions of the same names in `vision`. Any thread; none throws.
std::optional<BoardCorners> findBoard(const QImage& photo, const BoardShape& shape);
QImage drawBoard(const QImage& photo, const BoardShape& shape, const BoardCorners& corners);
std::optional<Calibration> calibrate(const QVector<BoardCorners>& photos, const BoardShape& shape, QSize size);

} // namespace corvanta::vision::opencv
