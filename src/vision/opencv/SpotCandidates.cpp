#include "vision/opencv/SpotCandidates.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>

namespace corvanta::vision::opencv {

namespace {

constexpr double WidthOfBell = 2.3548;

/// What lies below everything that is narrower than `largest`: the median of wide surroundings, at a coarse scale.
cv::Mat1b background(const cv::Mat1b& light, double largest) {
    constexpr int blocksOfSpot = 8;
    constexpr int surroundings = 21; // blocks; so a spot fills less than a fifth of them
    const int shorter = std::min(light.cols, light.rows);
    const int block = std::max(1, static_cast<int>(std::min<double>(largest, shorter)) / blocksOfSpot);
    const cv::Size coarseSize(std::max(1, light.cols / block), std::max(1, light.rows / block));
    cv::Mat1b coarse;
    cv::resize(light, coarse, coarseSize, 0, 0, cv::INTER_NEAREST); // the median takes care of the noise
    cv::medianBlur(coarse, coarse, surroundings);
    cv::Mat1b result;
    cv::resize(coarse, result, light.size(), 0, 0, cv::INTER_LINEAR);
    return result;
}

/// A connected region of a picture.
struct Region {
    cv::Rect box;
    cv::Mat1b shape; ///< of the box's size: not 0 where the region is
};

/// What is connected with `seed` by levels from `low` on. `mask` is all 0, before and after, and larger by a border
/// of one pixel.
Region regionAround(const cv::Mat1b& levels, cv::Mat1b& mask, const cv::Point& seed, int low) {
    constexpr int filled = 1;
    const int level = levels(seed);
    cv::Mat picture = levels; // is not written to: only the mask is
    Region region;
    cv::floodFill(picture, mask, seed, {}, &region.box, level - low, UCHAR_MAX - level,
                  8 | cv::FLOODFILL_FIXED_RANGE | cv::FLOODFILL_MASK_ONLY | (filled << 8));
    cv::Mat1b part = mask(region.box + cv::Point(1, 1));
    part.copyTo(region.shape);
    part.setTo(0);
    return region;
}

cv::Mat1b maskFor(const cv::Mat1b& levels) {
    return cv::Mat1b::zeros(levels.rows + 2, levels.cols + 2);
}

int halfOf(int level) {
    return std::max(1, (level + 1) / 2);
}

/// A region and what is round it in finer pixels. The edge of a small region would be no more than a few steps.
struct Part {
    cv::Point origin; ///< of the finer picture, in the picture
    int fine = 1;
    cv::Mat1b levels;
    Region region; ///< in the finer picture
};

Part partOf(const cv::Mat1b& levels, const Region& region) {
    constexpr int small = 24; // px
    constexpr int finer = 4;
    constexpr int margin = 2; // px
    Part part;
    if (std::max(region.box.width, region.box.height) > small) {
        part.origin = region.box.tl();
        part.levels = levels(region.box);
        part.region = {cv::Rect({}, region.box.size()), region.shape};
        return part;
    }
    const cv::Rect wide =
        (region.box + cv::Size(2 * margin, 2 * margin) - cv::Point(margin, margin)) & cv::Rect({}, levels.size());
    part.origin = wide.tl();
    part.fine = finer;
    cv::resize(levels(wide), part.levels, wide.size() * finer, 0, 0, cv::INTER_CUBIC);
    // The region's own peak: another one may lie in the margin.
    cv::Mat1b shape = cv::Mat1b::zeros(wide.size());
    region.shape.copyTo(shape(region.box - wide.tl()));
    cv::resize(shape, shape, part.levels.size(), 0, 0, cv::INTER_NEAREST);
    double peak = 0;
    cv::Point seed;
    cv::minMaxLoc(part.levels, nullptr, &peak, nullptr, &seed, shape);
    cv::Mat1b mask = maskFor(part.levels);
    part.region = regionAround(part.levels, mask, seed, halfOf(static_cast<int>(peak)));
    return part;
}

/// Shape, size and light of a region.
SpotCandidate describe(const Part& part, double blur) {
    constexpr double ofAPixel = 1.0 / 12; // second moment of a pixel about its middle
    const cv::Rect& box = part.region.box;
    cv::Mat1b light = cv::Mat1b::zeros(box.size());
    part.levels(box).copyTo(light, part.region.shape);
    const cv::Moments weighed = cv::moments(light);
    const cv::Moments flat = cv::moments(part.region.shape, true);
    const double pixel = 1.0 / part.fine;
    const cv::Point2d corner(box.x + 0.5, box.y + 0.5);
    SpotCandidate one;
    one.mass = weighed.m00 * pixel * pixel;
    one.middle = cv::Point2d(part.origin) +
                 (corner + cv::Point2d(weighed.m10 / weighed.m00, weighed.m01 / weighed.m00)) * pixel;
    cv::minMaxLoc(light, nullptr, &one.peak);

    const double xx = flat.mu20 / flat.m00 + ofAPixel;
    const double yy = flat.mu02 / flat.m00 + ofAPixel;
    const double xy = flat.mu11 / flat.m00;
    const double mean = (xx + yy) / 2;
    const double apart = std::hypot((xx - yy) / 2, xy);
    const double longer = mean + apart;
    const double shorter = std::max(mean - apart, ofAPixel);
    const double filled = flat.m00 / (4 * CV_PI * std::sqrt(longer * shorter)); // 1 for a full ellipse
    one.roundness = std::sqrt(shorter / longer) * std::min(1.0, filled);

    const double added = WidthOfBell * WidthOfBell * blur * blur;
    const double seen = 4 * flat.m00 * pixel * pixel / CV_PI;
    const double own = std::max(1.0, seen - added);
    one.diameter = std::sqrt(own);
    one.peak = std::min(255.0, one.peak * (own + added) / own);
    return one;
}

bool touchesBorder(const cv::Rect& box, const cv::Size& picture) {
    return box.x == 0 || box.y == 0 || box.br().x == picture.width || box.br().y == picture.height;
}

/// Where each level from `least` on is.
using PlacesOfLevels = std::array<std::vector<cv::Point>, UCHAR_MAX + 1>;

PlacesOfLevels placesFrom(const cv::Mat1b& levels, int least) {
    PlacesOfLevels places;
    for (int row = 0; row < levels.rows; ++row) {
        const uchar* const line = levels[row];
        for (int column = 0; column < levels.cols; ++column) {
            if (line[column] >= least)
                places[line[column]].emplace_back(column, row);
        }
    }
    return places;
}

} // namespace

StandingOut StandingOut::of(const cv::Mat1b& light, const cv::Mat1b& reference, double smallest, double largest) {
    constexpr double blurOfSmallest = 0.25; // so that the smallest spot keeps most of its height
    constexpr double greatestBlur = 2;      // px; more would not help against noise of single pixels
    cv::Mat1b above;
    if (reference.empty())
        above = light;
    else
        cv::subtract(light, reference, above);
    StandingOut result;
    cv::subtract(above, background(above, largest), result.levels);
    result.blur = std::min(greatestBlur, blurOfSmallest * smallest);
    cv::GaussianBlur(result.levels, result.levels, cv::Size(), result.blur);
    return result;
}

std::vector<SpotCandidate> findCandidates(const StandingOut& picture, double threshold) {
    constexpr double leastPeak = 0.66; // of the threshold: the blur takes up to a third of a spot's height
    constexpr int mostRegions = 1000;  // more is noise; the brightest come first
    const cv::Mat1b& levels = picture.levels;
    const int least = std::max(1, static_cast<int>(leastPeak * threshold));
    const PlacesOfLevels places = placesFrom(levels, least);
    cv::Mat1b mask = maskFor(levels);
    cv::Mat1b seen = cv::Mat1b::zeros(levels.size());
    std::vector<SpotCandidate> found;
    int regions = 0;
    for (int level = UCHAR_MAX; level >= least; --level) {
        for (const cv::Point& seed : places[static_cast<std::size_t>(level)]) {
            if (seen(seed) != 0)
                continue;
            if (++regions > mostRegions)
                return found;
            const Region region = regionAround(levels, mask, seed, halfOf(level));
            cv::Mat1b seenThere = seen(region.box);
            double peak = 0;
            cv::minMaxLoc(levels(region.box), nullptr, &peak, nullptr, nullptr, region.shape);
            // All that is connected by these levels is part of it, or of the foot of something brighter; so is what
            // is lower there.
            seenThere.setTo(1, region.shape);
            if (peak > level)
                continue;
            found.push_back(describe(partOf(levels, region), picture.blur));
            found.back().box = region.box;
            found.back().isCut = touchesBorder(region.box, levels.size());
        }
    }
    return found;
}

} // namespace corvanta::vision::opencv
