#include "sensor/PictureMeter.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace ipncsdk::sensor {

namespace {

constexpr int smallWidth = 160; ///< points; finer movements are noise
constexpr int smallHeight = 90;
constexpr double leastDifference = 18; ///< steps of the luma

/// The part in points of a picture; never empty.
cv::Rect within(const cv::Rect2d& part, int width, int height) {
    const int left = std::clamp(static_cast<int>(std::floor(part.x * width)), 0, width - 1);
    const int top = std::clamp(static_cast<int>(std::floor(part.y * height)), 0, height - 1);
    const int right = std::clamp(static_cast<int>(std::ceil((part.x + part.width) * width)), left + 1, width);
    const int bottom = std::clamp(static_cast<int>(std::ceil((part.y + part.height) * height)), top + 1, height);
    return {left, top, right - left, bottom - top};
}

} // namespace

PictureMeter::PictureMeter(const Json& params)
    : motion_(textOr(params, "measure", "motion") == "motion")
    , part_(numberAt(params, "x", 0), numberAt(params, "y", 0), numberAt(params, "w", 1), numberAt(params, "h", 1)) {}

std::optional<double> PictureMeter::measure(const media::Picture& picture) {
    if (picture.empty())
        return std::nullopt;
    // OpenCV's header takes no constant data; nothing is written.
    const cv::Mat whole(picture.height, picture.width, CV_8UC1, const_cast<std::uint8_t*>(picture.plane(0)));
    const cv::Mat part = whole(within(part_, picture.width, picture.height));
    if (!motion_)
        return cv::mean(part)[0] / 255 * 100;
    cv::Mat small;
    cv::resize(part, small, {std::min(smallWidth, part.cols), std::min(smallHeight, part.rows)}, 0, 0,
               cv::INTER_AREA);
    cv::GaussianBlur(small, small, {3, 3}, 0);
    cv::swap(small, before_);
    if (small.size() != before_.size())
        return std::nullopt;
    cv::Mat difference;
    cv::absdiff(small, before_, difference);
    cv::threshold(difference, difference, leastDifference, 1, cv::THRESH_BINARY);
    return 100.0 * cv::countNonZero(difference) / static_cast<double>(difference.total());
}

} // namespace ipncsdk::sensor
