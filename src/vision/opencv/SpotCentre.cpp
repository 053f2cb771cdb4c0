#include "vision/opencv/SpotCentre.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvanta::vision::opencv {

namespace {

constexpr double WidthOfBell = 2.3548; // where a bell is half as high as its peak, in standard deviations
constexpr double LeastSigma = 1.0;     // px; a narrower bell would lie between the pixels
constexpr double GreatestSigma = 8.0;  // px; larger spots are looked at in fewer, larger pixels
constexpr double Reach = 4.5;          // sigmas that are looked at; beyond nothing counts any more
constexpr double SurroundingsFrom = 3.0;
constexpr int LeastSurroundings = 16; // px that tell a plane

/// A part of the picture: grey levels above the reference, in pixels that are `step` of the picture's wide.
struct View {
    cv::Mat1f values;
    cv::Mat1b
        unknown; ///< not 0 where something else shines so bright that the spot's light cannot be told; may be empty
    cv::Point2d origin; ///< of the view's upper left in the picture
    double step = 1;
};

/// Grey levels at (x, y) from a middle: level + slope * place
struct Plane {
    cv::Vec3d terms; ///< level, slope along x, slope along y

    double at(double x, double y) const { return terms[0] + terms[1] * x + terms[2] * y; }
};

/// Where a pixel is at its end although the reference leaves less of it than of the spot's core. Empty: nowhere.
cv::Mat1b unknownOf(const cv::Mat1b& light, const cv::Mat1f& values) {
    constexpr double atItsEnd = 250; // grey levels
    constexpr double ofTheCore = 0.8;
    double core = 0;
    cv::minMaxLoc(values, nullptr, &core);
    const cv::Mat1b unknown = (light >= atItsEnd) & (values < ofTheCore * core);
    return cv::countNonZero(unknown) > 0 ? unknown : cv::Mat1b();
}

View viewOf(const cv::Mat1b& light, const cv::Mat1b& reference, const cv::Point2d& middle, double sigma) {
    View view;
    const int step = std::max(1, static_cast<int>(std::ceil(sigma / GreatestSigma)));
    const double reach = Reach * sigma + 2.0 * step;
    const cv::Point upperLeft(static_cast<int>(std::floor(middle.x - reach)),
                              static_cast<int>(std::floor(middle.y - reach)));
    const cv::Point lowerRight(static_cast<int>(std::ceil(middle.x + reach)),
                               static_cast<int>(std::ceil(middle.y + reach)));
    cv::Rect part = cv::Rect(upperLeft, lowerRight) & cv::Rect({}, light.size());
    part.width -= part.width % step;
    part.height -= part.height % step;
    light(part).convertTo(view.values, CV_32F);
    if (!reference.empty()) {
        cv::subtract(view.values, reference(part), view.values, cv::noArray(), CV_32F);
        view.unknown = unknownOf(light(part), view.values);
    }
    if (step > 1) {
        cv::resize(view.values, view.values, part.size() / step, 0, 0, cv::INTER_AREA);
        if (!view.unknown.empty())
            cv::resize(view.unknown, view.unknown, part.size() / step, 0, 0, cv::INTER_AREA);
    }
    view.origin = part.tl();
    view.step = step;
    return view;
}

/// Whether the light at a pixel, or at the pixel on the other side of `middle`, is not known. Both are left out then:
/// what is missing on one side only would pull to the other.
bool isUnknown(const cv::Mat1b& unknown, int row, int column, const cv::Point2d& middle) {
    if (unknown.empty())
        return false;
    const cv::Point opposite(static_cast<int>(std::floor(2 * middle.x - column - 0.5)),
                             static_cast<int>(std::floor(2 * middle.y - row - 0.5)));
    return unknown(row, column) != 0 || (cv::Rect({}, unknown.size()).contains(opposite) && unknown(opposite) != 0);
}

/// Calls `use(x, y, value)` for the pixels within `reach` of `middle`; x and y from there to the pixel's middle.
template <typename Use>
void forPixels(const View& view, const cv::Point2d& middle, double reach, Use&& use) {
    const int top = std::max(0, static_cast<int>(middle.y - reach));
    const int bottom = std::min(view.values.rows, static_cast<int>(middle.y + reach) + 1);
    const int left = std::max(0, static_cast<int>(middle.x - reach));
    const int right = std::min(view.values.cols, static_cast<int>(middle.x + reach) + 1);
    for (int row = top; row < bottom; ++row) {
        const float* const line = view.values[row];
        for (int column = left; column < right; ++column) {
            if (!isUnknown(view.unknown, row, column, middle))
                use(column + 0.5 - middle.x, row + 0.5 - middle.y, static_cast<double>(line[column]));
        }
    }
}

/// The plane through the values round a spot, without those that lie far off it (something else shines there).
Plane planeAround(const View& view, const cv::Point2d& middle, double sigma) {
    constexpr int rounds = 4;
    constexpr double farOff = 2.5; // times the usual distance from the plane
    const double inner = SurroundingsFrom * sigma * SurroundingsFrom * sigma;
    Plane plane;
    double mostOff = std::numeric_limits<double>::infinity();
    for (int round = 0; round < rounds; ++round) {
        cv::Matx33d left = cv::Matx33d::zeros();
        cv::Vec3d right;
        double squares = 0;
        int count = 0;
        forPixels(view, middle, Reach * sigma, [&](double x, double y, double value) {
            const double off = value - plane.at(x, y);
            if (x * x + y * y < inner || std::abs(off) > mostOff)
                return;
            const cv::Vec3d place(1, x, y);
            left += place * place.t();
            right += place * value;
            squares += off * off;
            ++count;
        });
        if (count < LeastSurroundings)
            break;
        cv::Vec3d terms;
        if (!cv::solve(left, right, terms, cv::DECOMP_CHOLESKY))
            break;
        // The first round's distances are those from nothing.
        if (round > 0)
            mostOff = farOff * std::sqrt(squares / count) + 1;
        plane.terms = terms;
    }
    return plane;
}

/// The middle of what a bell at `middle` lets through, seen from there.
cv::Point2d pull(const View& view, const cv::Point2d& middle, double sigma, const Plane& plane,
                 const cv::Point2d& planeMiddle) {
    const cv::Point2d offset = middle - planeMiddle;
    double sum = 0;
    cv::Point2d sums;
    forPixels(view, middle, Reach * sigma, [&](double x, double y, double value) {
        const double weight =
            std::exp(-(x * x + y * y) / (2 * sigma * sigma)) * (value - plane.at(x + offset.x, y + offset.y));
        sum += weight;
        sums += cv::Point2d(x, y) * weight;
    });
    return sum > 0 ? sums / sum : cv::Point2d();
}

} // namespace

cv::Point2d spotCentre(const cv::Mat1b& light, const cv::Mat1b& reference, const cv::Point2d& near, double diameter) {
    constexpr int mostSteps = 40;
    constexpr double closeEnough = 0.001; // px
    // Near the border the bell is narrower: cut off on one side only it would pull to the other.
    constexpr double bellToBorder = 2.5;
    // A bell moves half the way to one of its own width in a step, and more to one that is cut off at white; 1.4
    // times that comes there quickly and never to and fro.
    constexpr double haste = 1.4;

    const double toBorder = std::min({near.x, near.y, light.cols - near.x, light.rows - near.y});
    const double wide = std::max(LeastSigma, diameter / WidthOfBell);
    const View view = viewOf(light, reference, near, wide);
    const cv::Point2d start = (near - view.origin) / view.step;
    const Plane plane = planeAround(view, start, wide / view.step);
    const double sigma = std::max(LeastSigma, std::min(wide, toBorder / bellToBorder) / view.step);

    cv::Point2d middle = start;
    for (int step = 0; step < mostSteps; ++step) {
        const cv::Point2d move = haste * pull(view, middle, sigma, plane, start);
        middle += move;
        if (std::hypot(move.x, move.y) < closeEnough)
            break;
    }
    const cv::Point2d centre = view.origin + middle * view.step;
    const bool isInside = cv::norm(centre - near) < std::max(1.0, diameter / 2);
    return isInside ? centre : near;
}

} // namespace corvanta::vision::opencv
