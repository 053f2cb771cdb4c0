#pragma once

#include "vision/VisionBackend.h"

#include <QStringList>
#include <QVariantMap>

#include <array>
#include <optional>

namespace corvanta::vision {

/// What a device's record says of its camera and its code, as texts. A value that crosses threads.
struct QrSetup {
    QString cameraMatrix; ///< 3 x 3, see MatrixText.h
    QString distCoeffs;   ///< 1 x 5, likewise
    QString codeWidth;    ///< mm, side length of the printed code

    /// From the object that the record keeps: "cameraMatrix", "distCoeffs", "QRwidth".
    static QrSetup fromMap(const QVariantMap& info);
};

/// Where the camera stands as seen from the code; mm.
struct Position {
    float x = 0;
    float y = 0;
    float z = 0;

    /// x, y and z, each with six significant digits.
    QStringList texts() const;
};

/// A code found in a picture.
struct QrMeasurement {
    Position position;
    std::array<double, 3> angles{}; ///< about x, y and z; radians
};

/// From corners to positions, for one camera and one size of code. A value; any number of threads.
class QrPose final {
public:
    /// None for texts that are no such matrices, or a width that is no positive number; one debug line says so.
    static std::optional<QrPose> make(const QrSetup& setup);

    /// The position for the corners that a `CodeReader` has found; none for none, or where there is no solution.
    std::optional<QrMeasurement> measure(const std::optional<CodeCorners>& corners) const;

private:
    QrPose() = default;

    Lens lens_;
    float half_ = 0; ///< mm, half of the code's side
};

/// Turns a translation back by three angles (about x, y and z), and turns its sign: where the camera is.
Position cameraPosition(const std::array<double, 3>& translation, const std::array<double, 3>& angles);

/// Of each axis the mean of all values, without the lowest and the highest where there are more than two. Empty for
/// none.
std::optional<Position> trimmedMean(const std::vector<Position>& positions);

/// The same of one axis; at least one value.
float trimmedMean(std::vector<float> values);

} // namespace corvanta::vision
