#include "vision/SpotCandidates.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <climits>
#include <cmath>
#include <numeric>
#include <utility>

namespace corvanta::vision {

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

/// A part of the picture, `fine` times as large as it is there, and which of its pixels are meant.
struct Part {
    cv::Point origin; ///< in the picture
    int fine = 1;
    cv::Mat1b levels;
    cv::Mat1b shape;
};

/// Shape, size and light of what a part shows in `rect`, to which its levels and its shape are cut already.
SpotCandidate describe(const Part& part, const cv::Rect& rect, const cv::Size& picture, double blur) {
    constexpr double ofAPixel = 1.0 / 12; // second moment of a pixel about its middle
    cv::Mat1b light = cv::Mat1b::zeros(part.levels.size());
    part.levels.copyTo(light, part.shape);
    const cv::Moments weighed = cv::moments(light);
    const cv::Moments flat = cv::moments(part.shape, true);
    const double pixel = 1.0 / part.fine;
    SpotCandidate one;
    one.mass = weighed.m00 * pixel * pixel;
    one.middle =
        cv::Point2d(part.origin) +
        cv::Point2d(rect.x + weighed.m10 / weighed.m00 + 0.5, rect.y + weighed.m01 / weighed.m00 + 0.5) * pixel;
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
    const cv::Point first = part.origin + rect.tl() / part.fine;
    const cv::Point last = part.origin + (rect.br() - cv::Point(1, 1)) / part.fine;
    one.box = cv::Rect(first, last + cv::Point(1, 1));
    one.isCut = first.x == 0 || first.y == 0 || last.x == picture.width - 1 || last.y == picture.height - 1;
    return one;
}

/// One connected region, made larger where it is so small that its edge would be no more than a few steps.
Part enlarged(const StandingOut& picture, const cv::Rect& box, const cv::Mat1b& region) {
    constexpr int small = 24; // px
    constexpr int finer = 4;
    Part part{box.tl(), 1, picture.levels(box), region};
    if (std::max(box.width, box.height) > small)
        return part;
    part.fine = finer;
    cv::Mat1b levels;
    cv::resize(part.levels, levels, cv::Size(), finer, finer, cv::INTER_CUBIC);
    part.levels = levels;
    cv::resize(region, part.shape, cv::Size(), finer, finer, cv::INTER_NEAREST);
    return part;
}

/// The labels of all regions but the one that is none.
std::vector<int> numbersUpTo(int count) {
    std::vector<int> numbers(static_cast<std::size_t>(std::max(0, count - 1)));
    std::iota(numbers.begin(), numbers.end(), 1);
    return numbers;
}

template <typename Value, typename GoesFirst>
void keepFirst(std::vector<Value>& values, std::size_t most, GoesFirst&& goesFirst) {
    const std::size_t kept = std::min(values.size(), most);
    std::partial_sort(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(kept), values.end(), goesFirst);
    values.resize(kept);
}

cv::Rect boxOf(const cv::Mat1i& stats, int label) {
    return {stats(label, cv::CC_STAT_LEFT), stats(label, cv::CC_STAT_TOP), stats(label, cv::CC_STAT_WIDTH),
            stats(label, cv::CC_STAT_HEIGHT)};
}

/// The parts of one connected region that are at least half as bright as its peak.
void addParts(const StandingOut& picture, const cv::Rect& box, const cv::Mat1b& region,
              std::vector<SpotCandidate>& found) {
    constexpr std::size_t mostParts = 16; // more are specks of noise
    const Part whole = enlarged(picture, box, region);
    double peak = 0;
    cv::minMaxLoc(whole.levels, nullptr, &peak, nullptr, nullptr, whole.shape);
    const cv::Mat1b bright = (whole.levels >= peak / 2) & whole.shape;
    cv::Mat1i labels;
    cv::Mat1i stats;
    cv::Mat1d middles;
    const int count = cv::connectedComponentsWithStats(bright, labels, stats, middles);
    std::vector<int> parts = numbersUpTo(count);
    keepFirst(parts, mostParts,
              [&stats](int a, int b) { return stats(a, cv::CC_STAT_AREA) > stats(b, cv::CC_STAT_AREA); });
    for (const int label : parts) {
        const cv::Rect rect = boxOf(stats, label);
        const Part part{whole.origin, whole.fine, whole.levels(rect), labels(rect) == label};
        found.push_back(describe(part, rect, picture.levels.size(), picture.blur));
    }
}

/// A connected region.
struct Region {
    cv::Rect box;
    cv::Mat1b shape; ///< of the box's size: not 0 where the region is
    double worth = 0;
};

/// The regions of levels from `low` on that reach `high` somewhere, but no more than `most`. Filled one by one: there
/// are few, and labels for the whole picture would take longer than all else.
std::vector<Region> regionsOf(const cv::Mat1b& levels, int low, int high, std::size_t most) {
    constexpr int now = 2;                                               // what is being filled
    constexpr int done = 1;                                              // what was
    cv::Mat picture = levels;                                            // is not written to: only the mask is
    cv::Mat1b mask = cv::Mat1b::zeros(levels.rows + 2, levels.cols + 2); // with a border, as filling asks for
    std::vector<Region> regions;
    for (int row = 0; row < levels.rows; ++row) {
        const uchar* const line = levels[row];
        for (int column = 0; column < levels.cols; ++column) {
            if (line[column] < high || mask(row + 1, column + 1) != 0)
                continue;
            if (regions.size() == most)
                return regions;
            Region region;
            const int area = cv::floodFill(picture, mask, {column, row}, {}, &region.box, line[column] - low,
                                           UCHAR_MAX - line[column],
                                           8 | cv::FLOODFILL_FIXED_RANGE | cv::FLOODFILL_MASK_ONLY | (now << 8));
            cv::Mat1b filled = mask(region.box + cv::Point(1, 1));
            region.shape = filled == now;
            filled.setTo(done, region.shape);
            region.worth = static_cast<double>(area) * line[column];
            regions.push_back(std::move(region));
        }
    }
    return regions;
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
    // A spot is looked at down to half of its height, and the blur takes up to a third of it.
    constexpr double lowest = 0.33;
    constexpr double leastPeak = 0.66;
    constexpr std::size_t mostRegions = 32;
    constexpr std::size_t mostFound = 1000; // more is noise, and only what is above it counts
    constexpr double higher = 1.5;
    const int low = std::max(1, static_cast<int>(lowest * threshold));
    double high = std::max(1.0, leastPeak * threshold);
    std::vector<Region> regions = regionsOf(picture.levels, low, static_cast<int>(high), mostFound);
    while (regions.size() == mostFound && high < UCHAR_MAX) {
        high *= higher;
        regions = regionsOf(picture.levels, low, static_cast<int>(high), mostFound);
    }
    keepFirst(regions, mostRegions, [](const Region& a, const Region& b) { return a.worth > b.worth; });

    std::vector<SpotCandidate> found;
    for (const Region& region : regions)
        addParts(picture, region.box, region.shape, found);
    return found;
}

} // namespace corvanta::vision
