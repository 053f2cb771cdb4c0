#include "scene/Photographer.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ipncsdk::scene {

namespace {

constexpr int gridStep = 8;
constexpr int pointsOnEdge = 16;
constexpr double middleGrey = 128;
constexpr double haloShare = 0.02;       ///< of the power
constexpr double haloWidth = 5;          ///< times the core
constexpr double haloReach = 3;          ///< times its width
constexpr float leastReciprocal = 1e-6F; ///< of a distance in millimetres
constexpr float nowhere = -1e9F;

/// From directions to the plane of a target: (X, Y, 1) times the reciprocal of the distance.
cv::Matx33f planeOf(const Pose& pose) {
    const cv::Matx33d& r = pose.rotation;
    const cv::Vec3d& t = pose.translation;
    return cv::Matx33d(r(0, 0), r(0, 1), t[0], r(1, 0), r(1, 1), t[1], r(2, 0), r(2, 1), t[2]).inv();
}

/// Places in a pixel, no two of them in one column or row of it: an edge that runs along the pixels is as smooth as
/// one that does not. The points of Hammersley.
std::vector<cv::Point2f> spread(int count) {
    std::vector<cv::Point2f> places;
    for (int index = 0; index < count; ++index) {
        double mirrored = 0;
        double digit = 0.5;
        for (int rest = index; rest > 0; rest /= 2, digit /= 2)
            mirrored += digit * (rest % 2);
        places.emplace_back(static_cast<float>((index + 0.5) / count), static_cast<float>(mirrored + 0.5 / count));
    }
    return places;
}

void smear(cv::Mat& picture, const cv::Point2d& motion) {
    const int reach = static_cast<int>(std::ceil(std::max(std::abs(motion.x), std::abs(motion.y)) / 2)) + 1;
    cv::Mat1f kernel(2 * reach + 1, 2 * reach + 1, 0.0F);
    constexpr int steps = 64;
    for (int step = 0; step < steps; ++step) {
        const double part = (step + 0.5) / steps - 0.5;
        const double x = reach + motion.x * part;
        const double y = reach + motion.y * part;
        const int column = static_cast<int>(x);
        const int row = static_cast<int>(y);
        const auto right = static_cast<float>(x - column);
        const auto down = static_cast<float>(y - row);
        kernel(row, column) += (1 - right) * (1 - down) / steps;
        kernel(row, column + 1) += right * (1 - down) / steps;
        kernel(row + 1, column) += (1 - right) * down / steps;
        kernel(row + 1, column + 1) += right * down / steps;
    }
    cv::filter2D(picture, picture, -1, kernel, {-1, -1}, 0, cv::BORDER_REPLICATE);
}

} // namespace

cv::Mat1f lightOf(const cv::Size& size, const Flaws& flaws) {
    cv::Mat1f light(size);
    const double reach = std::hypot(size.width / 2.0, size.height / 2.0);
    for (int row = 0; row < size.height; ++row) {
        for (int column = 0; column < size.width; ++column) {
            const double far = std::hypot(column + 0.5 - size.width / 2.0, row + 0.5 - size.height / 2.0) / reach;
            const double across = (column + 0.5) / size.width;
            light(row, column) =
                static_cast<float>((1 - flaws.gradient * across) * (1 - flaws.vignetting * far * far));
        }
    }
    return light;
}

void spoil(cv::Mat& picture, const Flaws& flaws) {
    const int channels = picture.channels();
    picture.convertTo(picture, CV_32F, flaws.contrast, middleGrey * (1 - flaws.contrast) + flaws.brightness);
    if (flaws.gradient != 0 || flaws.vignetting != 0) {
        const cv::Mat1f light = lightOf(picture.size(), flaws);
        cv::Mat all;
        cv::merge(std::vector<cv::Mat>(static_cast<std::size_t>(channels), light), all);
        cv::multiply(picture, all, picture);
    }
    if (flaws.blur > 0)
        cv::GaussianBlur(picture, picture, {}, flaws.blur, flaws.blur, cv::BORDER_REPLICATE);
    if (flaws.motion != cv::Point2d())
        smear(picture, flaws.motion);
    if (flaws.noise > 0) {
        cv::RNG random(flaws.seed);
        cv::Mat grain(picture.size(), picture.type());
        random.fill(grain, cv::RNG::NORMAL, 0, flaws.noise);
        picture += grain;
    }
    picture.convertTo(picture, CV_8U);
}

Photographer::Photographer(const Lens& lens, int samples)
    : lens_(lens)
    , samples_(spread(std::max(1, samples)))
    , directions_(lens.size.height / gridStep + 4, lens.size.width / gridStep + 4) {
    for (int row = 0; row < directions_.rows; ++row) {
        for (int column = 0; column < directions_.cols; ++column) {
            const cv::Point2d direction = lens_.directionOf({(column - 1.0) * gridStep, (row - 1.0) * gridStep});
            directions_(row, column) = {static_cast<float>(direction.x), static_cast<float>(direction.y)};
        }
    }
}

/// The directions of the grid's columns at a row, which may lie between two of the grid's rows. A lens bends the line
/// between two points of the grid by some thousandths of a pixel.
void Photographer::enterRow(float y, std::vector<cv::Point2f>& columns) const {
    const float gridY = y / gridStep + 1;
    const int row = static_cast<int>(gridY);
    const float down = gridY - static_cast<float>(row);
    const cv::Point2f* const upper = directions_[row];
    const cv::Point2f* const lower = directions_[row + 1];
    columns.resize(static_cast<std::size_t>(directions_.cols));
    for (std::size_t column = 0; column < columns.size(); ++column)
        columns[column] = upper[column] + (lower[column] - upper[column]) * down;
}

cv::Point2f Photographer::directionAt(const std::vector<cv::Point2f>& columns, float x) {
    const float gridX = x / gridStep + 1;
    const auto column = static_cast<std::size_t>(gridX);
    const float right = gridX - static_cast<float>(column);
    return columns[column] + (columns[column + 1] - columns[column]) * right;
}

cv::Rect Photographer::boundsOf(const std::vector<cv::Point2d>& outline, const Pose& pose) const {
    const cv::Rect whole({}, lens_.size);
    constexpr double endless = std::numeric_limits<double>::infinity();
    cv::Point2d low(endless, endless);
    cv::Point2d high = -low;
    for (std::size_t corner = 0; corner < outline.size(); ++corner) {
        const cv::Point2d next = outline[(corner + 1) % outline.size()];
        for (int step = 0; step < pointsOnEdge; ++step) {
            const cv::Point2d at =
                outline[corner] + (next - outline[corner]) * (static_cast<double>(step) / pointsOnEdge);
            // What reaches behind the camera may be seen anywhere.
            if (pose.place({at.x, at.y, 0})[2] <= 1)
                return whole;
            const cv::Point2d seen = project(lens_, pose, {at.x, at.y, 0});
            low = {std::min(low.x, seen.x), std::min(low.y, seen.y)};
            high = {std::max(high.x, seen.x), std::max(high.y, seen.y)};
        }
    }
    const auto pixel = [](double value) {
        return static_cast<int>(std::clamp(value, -1e6, 1e6));
    };
    const cv::Point first(pixel(std::floor(low.x)) - 2, pixel(std::floor(low.y)) - 2);
    const cv::Point last(pixel(std::ceil(high.x)) + 3, pixel(std::ceil(high.y)) + 3);
    return last.x <= first.x || last.y <= first.y ? cv::Rect() : cv::Rect(first, last) & whole;
}

/// Where the left top corners of a row's pixels lie on the print, in its pixels; one more than there are pixels. A
/// place behind the camera is far outside of every print.
void Photographer::traceRow(const Tracer& tracer, int row, const cv::Rect& area,
                            std::vector<cv::Point2f>& places) const {
    const cv::Matx33f& plane = tracer.plane;
    std::vector<cv::Point2f> columns;
    enterRow(static_cast<float>(row) - 0.5F, columns);
    for (int column = 0; column <= area.width; ++column) {
        const cv::Point2f ray = directionAt(columns, static_cast<float>(area.x + column) - 0.5F);
        const float reciprocal = plane(2, 0) * ray.x + plane(2, 1) * ray.y + plane(2, 2);
        const float x = plane(0, 0) * ray.x + plane(0, 1) * ray.y + plane(0, 2);
        const float y = plane(1, 0) * ray.x + plane(1, 1) * ray.y + plane(1, 2);
        places[static_cast<std::size_t>(column)] =
            reciprocal > leastReciprocal ? tracer.origin + cv::Point2f(x, y) * (tracer.scale / reciprocal)
                                         : cv::Point2f(nowhere, nowhere);
    }
}

/// The grey of a pixel whose corners lie at these places of the print, and how much of it the print covers.
Photographer::Sample Photographer::sampleOf(const cv::Mat1b& print, const std::array<cv::Point2f, 4>& corners) const {
    const auto isInside = [&print](const cv::Point2f& at) {
        return at.x >= 0 && at.y >= 0 && at.x < static_cast<float>(print.cols) &&
               at.y < static_cast<float>(print.rows);
    };
    const auto cellOf = [](const cv::Point2f& at) {
        return cv::Point(static_cast<int>(at.x), static_cast<int>(at.y));
    };
    // Most pixels see a single one of the print.
    if (std::all_of(corners.begin(), corners.end(), isInside) &&
        std::all_of(corners.begin(), corners.end(),
                    [&](const cv::Point2f& at) { return cellOf(at) == cellOf(corners[0]); }))
        return {print(cellOf(corners[0])), 255};
    int hits = 0;
    int sum = 0;
    for (const cv::Point2f& sample : samples_) {
        const cv::Point2f above = corners[0] + (corners[1] - corners[0]) * sample.x;
        const cv::Point2f below = corners[2] + (corners[3] - corners[2]) * sample.x;
        const cv::Point2f at = above + (below - above) * sample.y;
        if (isInside(at)) {
            ++hits;
            sum += print(cellOf(at));
        }
    }
    const int all = static_cast<int>(samples_.size());
    return hits == 0 ? Sample()
                     : Sample{static_cast<uchar>((sum + hits / 2) / hits), static_cast<uchar>(hits * 255 / all)};
}

Photographer::Patch Photographer::patch(const Print& print, const Pose& pose) const {
    Patch patch;
    patch.area = boundsOf(print.outline(), pose);
    patch.grey = cv::Mat1b(patch.area.size(), static_cast<uchar>(0));
    patch.coverage = cv::Mat1b(patch.area.size(), static_cast<uchar>(0));
    const Tracer tracer{planeOf(pose), static_cast<float>(1 / print.pixelSize), cv::Point2f(print.origin)};
    std::vector<cv::Point2f> upper(static_cast<std::size_t>(patch.area.width) + 1);
    std::vector<cv::Point2f> lower(upper.size());
    traceRow(tracer, patch.area.y, patch.area, lower);
    for (int row = 0; row < patch.area.height; ++row) {
        std::swap(upper, lower);
        traceRow(tracer, patch.area.y + row + 1, patch.area, lower);
        for (int column = 0; column < patch.area.width; ++column) {
            const auto at = static_cast<std::size_t>(column);
            const Sample sample = sampleOf(print.picture, {upper[at], upper[at + 1], lower[at], lower[at + 1]});
            patch.grey(row, column) = sample.grey;
            patch.coverage(row, column) = sample.coverage;
        }
    }
    return patch;
}

cv::Mat1b Photographer::photograph(const Print& print, const Pose& pose, const Flaws& flaws, int wall) const {
    cv::Mat1b picture(lens_.size, cv::saturate_cast<uchar>(wall));
    const Patch seen = patch(print, pose);
    for (int row = 0; row < seen.area.height; ++row) {
        for (int column = 0; column < seen.area.width; ++column) {
            const int share = seen.coverage(row, column);
            uchar& pixel = picture(seen.area.y + row, seen.area.x + column);
            pixel = static_cast<uchar>((seen.grey(row, column) * share + pixel * (255 - share) + 127) / 255);
        }
    }
    spoil(picture, flaws);
    return picture;
}

cv::Rect Photographer::shine(cv::Mat3b& picture, const Pose& plate, const Spot& spot) const {
    const double halo = spot.radius * haloWidth;
    const double reach = halo * haloReach;
    const cv::Rect area = boundsOf({spot.at + cv::Point2d(-reach, -reach), spot.at + cv::Point2d(-reach, reach),
                                    spot.at + cv::Point2d(reach, reach), spot.at + cv::Point2d(reach, -reach)},
                                   plate);
    const cv::Matx33f plane = planeOf(plate);
    std::vector<cv::Point2f> columns;
    for (int row = area.y; row < area.y + area.height; ++row) {
        enterRow(static_cast<float>(row), columns);
        for (int column = area.x; column < area.x + area.width; ++column) {
            const cv::Point2f ray = directionAt(columns, static_cast<float>(column));
            const cv::Vec3f at = plane * cv::Vec3f(ray.x, ray.y, 1);
            const double x = at[0] / at[2] - spot.at.x;
            const double y = at[1] / at[2] - spot.at.y;
            const double far = x * x + y * y;
            const double light = spot.power * (std::exp(-far / (2 * spot.radius * spot.radius)) +
                                               haloShare * std::exp(-far / (2 * halo * halo)));
            cv::Vec3b& pixel = picture(row, column);
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = cv::saturate_cast<uchar>(pixel[channel] + light * spot.colour[channel]);
        }
    }
    return area;
}

} // namespace ipncsdk::scene
