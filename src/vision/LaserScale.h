#pragma once

#include <QPointF>
#include <QString>

#include <array>
#include <optional>

namespace corvanta::vision {

/// A point of the plate whose place is known.
struct ScalePoint {
    QPointF pixel; ///< in the picture, see `Spot`
    QPointF place; ///< mm on the plate
};

/// From places in the picture to places on the plate. A value; any number of threads.
class LaserScale final {
public:
    using Points = std::array<ScalePoint, 4>;

    /// For a plate that the camera looks at squarely: x to the right, y downwards, the picture's upper left is the
    /// origin. Nothing unless 0 < `millimetresPerPixel` <= 1000.
    static std::optional<LaserScale> fromScale(double millimetresPerPixel);

    /// For a plate seen at any angle; the axes are those of the points' places. Nothing where `problem` says why.
    static std::optional<LaserScale> fromPoints(const Points& points);

    /// Why four points make no scale, for the user; nothing when they do. Refused are numbers that are not
    /// finite or beyond a million, points that coincide or of which three lie (almost) on a line, in the picture or
    /// on the plate, and places that no view of a plate brings to such pixels: two of them were mixed up.
    static std::optional<QString> problem(const Points& points);

    /// mm. Nothing for a point at or beyond the plate's horizon.
    std::optional<QPointF> toPlace(const QPointF& pixel) const;

    /// px; the opposite way.
    std::optional<QPointF> toPixel(const QPointF& place) const;

private:
    using Matrix = std::array<double, 9>; ///< row by row; w is positive on the visible side of the plate

    explicit LaserScale(const Matrix& toPlace);

    static std::optional<QPointF> apply(const Matrix& matrix, const QPointF& point);

    Matrix toPlace_;
    Matrix toPixel_;
};

} // namespace corvanta::vision
