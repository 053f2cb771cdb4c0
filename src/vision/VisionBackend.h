#pragma once

#include "vision/CameraCalibration.h"
#include "vision/LaserSpot.h"

#include <QPointF>
#include <QtPlugin>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

namespace corvanta::vision {

/// The corners of a code in px, in the order in which the scanner tells them.
using CodeCorners = std::array<QPointF, 4>;

/// The grey levels of a picture that somebody else keeps: rows from the top, one right behind the other.
struct GreyLevels {
    const std::uint8_t* bytes = nullptr;
    int width = 0;  ///< px
    int height = 0; ///< px
};

/// Finds the one code of a picture. Reusable for any number of pictures; of one thread at a time.
class CodeReader {
public:
    CodeReader() = default;
    CodeReader(const CodeReader&) = delete;
    CodeReader& operator=(const CodeReader&) = delete;
    virtual ~CodeReader() = default;

    virtual std::optional<CodeCorners> find(const GreyLevels& grey) = 0;
    /// In the grey levels 0.299 R + 0.587 G + 0.114 B.
    virtual std::optional<CodeCorners> find(const QImage& picture) = 0;
};

/// A camera as its calibration tells it, px.
struct Lens {
    std::array<double, 9> matrix{}; ///< row by row
    std::array<double, 5> distortion{};
};

/// Where a thing stands before a camera.
struct Pose {
    std::array<double, 3> translation{}; ///< mm
    std::array<double, 9> rotation{};    ///< row by row
};

/// What looks at pictures for everything that is measured with cameras. It is a plugin, `corvanta_vision_opencv`,
/// that is loaded when something is measured or set up for the first time, so that others do not carry its libraries.
/// Any thread; nothing throws.
class VisionBackend {
public:
    VisionBackend() = default;
    VisionBackend(const VisionBackend&) = delete;
    VisionBackend& operator=(const VisionBackend&) = delete;
    virtual ~VisionBackend() = default;

    virtual std::unique_ptr<CodeReader> makeCodeReader() const = 0;
    /// Of a square code with sides of twice `half` mm; none where there is no solution.
    virtual std::optional<Pose> poseOfCode(const CodeCorners& corners, float half, const Lens& lens) const = 0;
    /// As the functions of the same names tell.
    virtual std::optional<BoardCorners> findBoard(const QImage& photo, const BoardShape& shape) const = 0;
    virtual QImage drawBoard(const QImage& photo, const BoardShape& shape, const BoardCorners& corners) const = 0;
    virtual std::optional<Calibration> calibrate(const QVector<BoardCorners>& photos, const BoardShape& shape,
                                                 QSize size) const = 0;
    virtual SpotSearch findSpot(const QImage& picture, const QImage& reference,
                                const SpotSettings& settings) const = 0;
};

/// The backend, loaded at the first call; it stays until the program ends. Null, with one debug line, where this
/// installation has none. Any thread.
const VisionBackend* visionBackend();

/// What the user is told where there is none.
QString noVisionText();

} // namespace corvanta::vision

#define CORVANTA_VISION_BACKEND_IID "corvanta.VisionBackend/1"
Q_DECLARE_INTERFACE(corvanta::vision::VisionBackend, CORVANTA_VISION_BACKEND_IID)
