#pragma once

#include "vision/VisionBackend.h"

namespace corvanta::vision::opencv {

/// Looks at pictures with OpenCV, and for codes with zbar.
class OpenCvBackend : public VisionBackend {
public:
    std::unique_ptr<CodeReader> makeCodeReader() const override;
    std::optional<Pose> poseOfCode(const CodeCorners& corners, float half, const Lens& lens) const override;
    std::optional<BoardCorners> findBoard(const QImage& photo, const BoardShape& shape) const override;
    QImage drawBoard(const QImage& photo, const BoardShape& shape, const BoardCorners& corners) const override;
    std::optional<Calibration> calibrate(const QVector<BoardCorners>& photos, const BoardShape& shape,
                                         QSize size) const override;
    SpotSearch findSpot(const QImage& picture, const QImage& reference, const SpotSettings& settings) const override;
};

} // namespace corvanta::vision::opencv
