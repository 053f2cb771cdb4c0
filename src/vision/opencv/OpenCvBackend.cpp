#include "vision/opencv/OpenCvBackend.h"

#include "vision/opencv/Boards.h"
#include "vision/opencv/CodePose.h"
#include "vision/opencv/CodeScanner.h"
#include "vision/opencv/SpotSearch.h"

namespace corvanta::vision::opencv {

std::unique_ptr<CodeReader> OpenCvBackend::makeCodeReader() const {
    return std::make_unique<CodeScanner>();
}

std::optional<Pose> OpenCvBackend::poseOfCode(const CodeCorners& corners, float half, const Lens& lens) const {
    return opencv::poseOfCode(corners, half, lens);
}

std::optional<BoardCorners> OpenCvBackend::findBoard(const QImage& photo, const BoardShape& shape) const {
    return opencv::findBoard(photo, shape);
}

QImage OpenCvBackend::drawBoard(const QImage& photo, const BoardShape& shape, const BoardCorners& corners) const {
    return opencv::drawBoard(photo, shape, corners);
}

std::optional<Calibration> OpenCvBackend::calibrate(const QVector<BoardCorners>& photos, const BoardShape& shape,
                                                    QSize size) const {
    return opencv::calibrate(photos, shape, size);
}

SpotSearch OpenCvBackend::findSpot(const QImage& picture, const QImage& reference,
                                   const SpotSettings& settings) const {
    return opencv::findSpot(picture, reference, settings);
}

} // namespace corvanta::vision::opencv
