#include "vision/LaserScale.h"

#include <QCoreApplication>

#include <opencv2/imgproc.hpp>

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

/// Moves and scales points to within one of their middle. Numbers of like size keep the equations exact.
struct Normal {
    QPointF middle;
    double extent = 1;

    explicit Normal(const Corners& points)
        : middle((points[0] + points[1] + points[2] + points[3]) / 4)
        , extent(extentOf(points)) {}

    cv::Point2f apply(const QPointF& point) const {
        const QPointF moved = (point - middle) / extent;
        return {static_cast<float>(moved.x()), static_cast<float>(moved.y())};
    }
    cv::Matx33d matrix() const {
        return {1 / extent, 0, -middle.x() / extent, 0, 1 / extent, -middle.y() / extent, 0, 0, 1};
    }
};

/// The perspective that brings pixels to places.
cv::Matx33d perspective(const LaserScale::Points& points) {
    const Normal pixels(pixelsOf(points));
    const Normal places(placesOf(points));
    std::array<cv::Point2f, 4> from;
    std::array<cv::Point2f, 4> to;
    for (std::size_t index = 0; index < points.size(); ++index) {
        from[index] = pixels.apply(points[index].pixel);
        to[index] = places.apply(points[index].place);
    }
    const cv::Matx33d between = cv::getPerspectiveTransform(from.data(), to.data());
    return places.matrix().inv() * between * pixels.matrix();
}

double weightAt(const cv::Matx33d& matrix, const QPointF& pixel) {
    return matrix(2, 0) * pixel.x() + matrix(2, 1) * pixel.y() + matrix(2, 2);
}

/// Whether all four points lie on the same side of the horizon, as what a camera sees does. Where the horizon runs
/// just through their middle there is no such perspective, and what is computed does not bring the pixels to their
/// places.
bool canBeSeen(const cv::Matx33d& matrix, const LaserScale::Points& points) {
    constexpr double closeEnough = 1e-3; // of the points' distances
    const double tolerance = closeEnough * extentOf(placesOf(points));
    int positive = 0;
    for (const ScalePoint& point : points) {
        const cv::Vec3d place = matrix * cv::Vec3d(point.pixel.x(), point.pixel.y(), 1);
        if (!(distance(QPointF(place[0], place[1]) / place[2], point.place) <= tolerance))
            return false;
        positive += place[2] > 0 ? 1 : 0;
    }
    return positive == 0 || positive == 4;
}

std::array<double, 9> rowsOf(const cv::Matx33d& matrix) {
    std::array<double, 9> rows{};
    std::copy(std::begin(matrix.val), std::end(matrix.val), rows.begin());
    return rows;
}

} // namespace

LaserScale::LaserScale(const Matrix& toPlace)
    : toPlace_(toPlace)
    , toPixel_(rowsOf(cv::Matx33d(toPlace.data()).inv())) {}

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
    if (!canBeSeen(perspective(points), points))
        return Texts::tr("标定点的图上位置与实际坐标不对应,请检查顺序");
    return std::nullopt;
}

std::optional<LaserScale> LaserScale::fromPoints(const Points& points) {
    if (problem(points))
        return std::nullopt;
    cv::Matx33d matrix = perspective(points);
    matrix *= 1 / weightAt(matrix, points[0].pixel);
    return LaserScale(rowsOf(matrix));
}

std::optional<QPointF> LaserScale::apply(const Matrix& matrix, const QPointF& point) {
    const auto row = [&](std::size_t first) {
        return matrix[first] * point.x() + matrix[first + 1] * point.y() + matrix[first + 2];
    };
    const double weight = row(6);
    const QPointF result(row(0) / weight, row(3) / weight);
    return weight > 0 && isUsable(result) ? std::optional(result) : std::nullopt;
}

std::optional<QPointF> LaserScale::toPlace(const QPointF& pixel) const {
    return apply(toPlace_, pixel);
}

std::optional<QPointF> LaserScale::toPixel(const QPointF& place) const {
    return apply(toPixel_, place);
}

} // namespace corvanta::vision
