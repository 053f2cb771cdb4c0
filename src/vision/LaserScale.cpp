#include "vision/LaserScale.h"

#include <QCoreApplication>
#include <QPolygonF>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <vector>

namespace corvanta::vision {

namespace {

constexpr double Farthest = 1e6;   // px or mm
constexpr double MostScale = 1000; // mm per px
/// Times the distance of the farthest points: how far each point is at least from each line through two others.
constexpr double LeastHeight = 0.02;

using Corners = std::array<QPointF, 4>;
using Matrix = std::array<double, 9>; // row by row, for columns (x, y, 1)

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LaserScale)
};

bool isUsable(const QPointF& point) {
    return std::abs(point.x()) <= Farthest && std::abs(point.y()) <= Farthest; // false for NaN
}

double distance(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// Twice the area of a triangle.
double doubleArea(const QPointF& a, const QPointF& b, const QPointF& c) {
    return std::abs((b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x()));
}

double extentOf(const Corners& points) {
    double extent = 0;
    for (const QPointF& a : points) {
        for (const QPointF& b : points)
            extent = std::max(extent, distance(a, b));
    }
    return extent;
}

bool haveEqual(const Corners& points) {
    const double least = LeastHeight * extentOf(points);
    for (std::size_t first = 0; first < points.size(); ++first) {
        for (std::size_t second = first + 1; second < points.size(); ++second) {
            if (distance(points[first], points[second]) <= least)
                return true;
        }
    }
    return false;
}

bool haveLine(const Corners& points) {
    const double least = LeastHeight * extentOf(points);
    for (std::size_t left = 0; left < points.size(); ++left) {
        Corners others = points;
        std::rotate(others.begin(), others.begin() + static_cast<std::ptrdiff_t>(left), others.end());
        const double longest = std::max(
            {distance(others[1], others[2]), distance(others[2], others[3]), distance(others[1], others[3])});
        if (doubleArea(others[1], others[2], others[3]) <= least * longest)
            return true;
    }
    return false;
}

Corners pixelsOf(const LaserScale::Points& points) {
    return {points[0].pixel, points[1].pixel, points[2].pixel, points[3].pixel};
}

Corners placesOf(const LaserScale::Points& points) {
    return {points[0].place, points[1].place, points[2].place, points[3].place};
}

Matrix product(const Matrix& left, const Matrix& right) {
    Matrix result{};
    for (std::size_t row = 0; row < 9; row += 3) {
        for (std::size_t column = 0; column < 3; ++column)
            result[row + column] =
                left[row] * right[column] + left[row + 1] * right[column + 3] + left[row + 2] * right[column + 6];
    }
    return result;
}

Matrix times(Matrix matrix, double factor) {
    for (double& element : matrix)
        element *= factor;
    return matrix;
}

/// By the adjugate. (Qt's own takes small elements for none.)
Matrix inverse(const Matrix& m) {
    const Matrix adjugate = {m[4] * m[8] - m[5] * m[7], m[2] * m[7] - m[1] * m[8], m[1] * m[5] - m[2] * m[4],
                             m[5] * m[6] - m[3] * m[8], m[0] * m[8] - m[2] * m[6], m[2] * m[3] - m[0] * m[5],
                             m[3] * m[7] - m[4] * m[6], m[1] * m[6] - m[0] * m[7], m[0] * m[4] - m[1] * m[3]};
    return times(adjugate, 1 / (m[0] * adjugate[0] + m[1] * adjugate[3] + m[2] * adjugate[6]));
}

/// Moves and scales points to within one of their middle. Numbers of like size keep the equations exact.
struct Normal {
    QPointF middle;
    double extent = 1;

    explicit Normal(const Corners& points)
        : middle((points[0] + points[1] + points[2] + points[3]) / 4)
        , extent(extentOf(points)) {}

    QPolygonF apply(const Corners& points) const {
        QPolygonF moved;
        for (const QPointF& point : points)
            moved += (point - middle) / extent;
        return moved;
    }
    Matrix matrix() const {
        return {1 / extent, 0, -middle.x() / extent, 0, 1 / extent, -middle.y() / extent, 0, 0, 1};
    }
};

/// The perspective that brings pixels to places; none where no such is found.
std::optional<Matrix> perspective(const LaserScale::Points& points) {
    const Corners from = pixelsOf(points);
    const Corners to = placesOf(points);
    const Normal pixels(from);
    const Normal places(to);
    QTransform t;
    if (!QTransform::quadToQuad(pixels.apply(from), places.apply(to), t))
        return std::nullopt;
    // Qt's matrices are for rows.
    const Matrix between = {t.m11(), t.m21(), t.m31(), t.m12(), t.m22(), t.m32(), t.m13(), t.m23(), t.m33()};
    return product(inverse(places.matrix()), product(between, pixels.matrix()));
}

std::array<double, 3> applied(const Matrix& matrix, const QPointF& point) {
    const auto row = [&](std::size_t first) {
        return matrix[first] * point.x() + matrix[first + 1] * point.y() + matrix[first + 2];
    };
    return {row(0), row(3), row(6)};
}

/// Whether all four points lie on the same side of the horizon, as what a camera sees does. Where the horizon runs
/// just through their middle there is no such perspective, and what is computed does not bring the pixels to their
/// places.
bool canBeSeen(const Matrix& matrix, const LaserScale::Points& points) {
    constexpr double closeEnough = 1e-3; // of the points' distances
    const double tolerance = closeEnough * extentOf(placesOf(points));
    int positive = 0;
    for (const ScalePoint& point : points) {
        const auto [x, y, weight] = applied(matrix, point.pixel);
        if (!(distance(QPointF(x, y) / weight, point.place) <= tolerance))
            return false;
        positive += weight > 0 ? 1 : 0;
    }
    return positive == 0 || positive == 4;
}

} // namespace

LaserScale::LaserScale(const Matrix& toPlace)
    : toPlace_(toPlace)
    , toPixel_(inverse(toPlace)) {}

std::optional<LaserScale> LaserScale::fromScale(double millimetresPerPixel) {
    if (!(millimetresPerPixel > 0 && millimetresPerPixel <= MostScale))
        return std::nullopt;
    return LaserScale({millimetresPerPixel, 0, 0, 0, millimetresPerPixel, 0, 0, 0, 1});
}

std::optional<QString> LaserScale::problem(const Points& points) {
    const Corners pixels = pixelsOf(points);
    const Corners places = placesOf(points);
    for (const Corners& corners : {pixels, places}) {
        if (!std::all_of(corners.begin(), corners.end(), isUsable))
            return Texts::tr("标定点坐标不是有效的数字");
    }
    if (haveEqual(pixels) || haveEqual(places))
        return Texts::tr("标定点不能重合");
    if (haveLine(pixels) || haveLine(places))
        return Texts::tr("任意三个标定点不能在一条直线上");
    const auto matrix = perspective(points);
    if (!matrix || !canBeSeen(*matrix, points))
        return Texts::tr("标定点的图上位置与实际坐标不对应,请检查顺序");
    return std::nullopt;
}

std::optional<LaserScale> LaserScale::fromPoints(const Points& points) {
    const auto matrix = problem(points) ? std::nullopt : perspective(points);
    if (!matrix)
        return std::nullopt;
    return LaserScale(times(*matrix, 1 / applied(*matrix, points[0].pixel)[2]));
}

std::optional<QPointF> LaserScale::apply(const Matrix& matrix, const QPointF& point) {
    const auto [x, y, weight] = applied(matrix, point);
    const QPointF result = QPointF(x, y) / weight;
    return weight > 0 && isUsable(result) ? std::optional(result) : std::nullopt;
}

std::optional<QPointF> LaserScale::toPlace(const QPointF& pixel) const {
    return apply(toPlace_, pixel);
}

std::optional<QPointF> LaserScale::toPixel(const QPointF& place) const {
    return apply(toPixel_, place);
}

} // namespace corvanta::vision
