#include "scene/MeasuringScene.h"

#include "scene/CodeScene.h"
#include "scene/LaserScene.h"

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <vector>

namespace ipncsdk::scene {

namespace {

constexpr int samples = 16;    ///< in a pixel
constexpr int stillPeriod = 8; ///< seconds of a recording in which nothing moves
constexpr std::uint64_t grainSeed = 20;
constexpr double grainSigma = 1.2;

const Flaws place = [] {
    Flaws flaws;
    flaws.gradient = 0.14;
    flaws.vignetting = 0.16;
    return flaws;
}();

Lens lensFor(MeasuringScene::Kind kind, const cv::Size& size, const MeasuringScene::Cutout& cutout) {
    const Lens whole = (kind == MeasuringScene::Kind::Code ? CodeScene::lens() : LaserScene::lens()).scaled(size);
    return whole.zoomed({cutout.corner.x * size.width, cutout.corner.y * size.height}, cutout.magnification);
}

/// Draws in shares of the whole picture, which is 16 wide and 9 high.
class Brush {
public:
    Brush(cv::Mat3b& picture, const MeasuringScene::Cutout& cutout)
        : picture_(picture)
        , scale_(picture.cols / 16.0 * cutout.magnification)
        , corner_(cutout.corner.x * 16, cutout.corner.y * 9) {}

    void box(double left, double top, double right, double bottom, const cv::Scalar& colour) {
        const std::vector<cv::Point> corners = {at(left, top), at(right, top), at(right, bottom), at(left, bottom)};
        cv::fillConvexPoly(picture_, corners, colour, cv::LINE_AA, fraction);
    }
    void disc(double x, double y, double radius, const cv::Scalar& colour) {
        cv::circle(picture_, at(x, y), cvRound(radius * scale_ * (1 << fraction)), colour, cv::FILLED, cv::LINE_AA,
                   fraction);
    }

private:
    static constexpr int fraction = 4; ///< bits of a pixel
    [[nodiscard]] cv::Point at(double x, double y) const {
        return {cvRound((x - corner_.x) * scale_ * (1 << fraction)),
                cvRound((y - corner_.y) * scale_ * (1 << fraction))};
    }

    cv::Mat3b& picture_;
    const double scale_;
    const cv::Point2d corner_;
};

} // namespace

MeasuringScene::MeasuringScene(Kind kind, Exhibit exhibit, const cv::Size& size)
    : kind_(kind)
    , exhibit_(exhibit)
    , size_(size)
    , light_(lightOf(size, place))
    , grain_(size)
    , backdrop_(size) {
    if (kind == Kind::Code)
        print_ = exhibit == Exhibit::Usual ? CodeScene::code() : CodeScene::board();
    cv::RNG random(grainSeed);
    random.fill(grain_, cv::RNG::NORMAL, 0, grainSigma);
    aim({});
}

void MeasuringScene::aim(const Cutout& cutout) {
    photographer_.emplace(lensFor(kind_, size_, cutout), samples);
    paintWall(cutout);
    for (int row = 0; row < backdrop_.rows; ++row) {
        for (int column = 0; column < backdrop_.cols; ++column) {
            cv::Vec3b& pixel = backdrop_(row, column);
            const float light = light_(row, column);
            const float grain = grain_(row, column);
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = cv::saturate_cast<uchar>(static_cast<float>(pixel[channel]) * light + grain);
        }
    }
    if (kind_ == Kind::Laser)
        lay(LaserScene::plate(), LaserScene::platePose(), backdrop_);
}

void MeasuringScene::paintWall(const Cutout& cutout) {
    Brush brush(backdrop_, cutout);
    brush.box(0, 0, 16, 9, {118, 122, 116});
    brush.box(0, 6.9, 16, 7.5, {84, 86, 84});
    brush.box(0, 7.5, 16, 9, {96, 104, 108});
    for (int post = 0; post < 6; ++post) {
        const double x = 0.9 + post * 2.9;
        brush.box(x, 0, x + 0.16, 6.9, {104, 108, 103});
        brush.disc(x + 0.08, 0.5, 0.09, {70, 72, 70});
        brush.disc(x + 0.08, 6.5, 0.09, {70, 72, 70});
    }
}

int MeasuringScene::periodOf(Kind kind, Exhibit exhibit) {
    if (kind == Kind::Code)
        return exhibit == Exhibit::Usual ? CodeScene::codePeriod : CodeScene::boardPeriod;
    return exhibit == Exhibit::Usual ? LaserScene::period : stillPeriod;
}

cv::Rect MeasuringScene::lay(const Print& print, const Pose& pose, cv::Mat3b& picture) const {
    const Photographer::Patch patch = photographer_->patch(print, pose);
    for (int row = 0; row < patch.area.height; ++row) {
        for (int column = 0; column < patch.area.width; ++column) {
            const float share = static_cast<float>(patch.coverage(row, column)) / 255;
            const cv::Point at(patch.area.x + column, patch.area.y + row);
            const float grey = static_cast<float>(patch.grey(row, column)) * light_(at) + grain_(at);
            cv::Vec3b& pixel = picture(at);
            if (share == 1) {
                pixel = cv::Vec3b::all(cv::saturate_cast<uchar>(grey));
                continue;
            }
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] =
                    cv::saturate_cast<uchar>(static_cast<float>(pixel[channel]) * (1 - share) + grey * share);
        }
    }
    return patch.area;
}

bool MeasuringScene::isSameAt(double seconds, double other) const {
    if (exhibit_ == Exhibit::Usual)
        return seconds == other;
    return kind_ == Kind::Laser ||
           std::floor(seconds / CodeScene::boardHold) == std::floor(other / CodeScene::boardHold);
}

cv::Rect MeasuringScene::paint(double seconds, cv::Mat3b& picture) const {
    cv::Rect area;
    if (kind_ == Kind::Code)
        area =
            lay(print_, exhibit_ == Exhibit::Usual ? CodeScene::codePoseAt(seconds) : CodeScene::boardPoseAt(seconds),
                picture);
    else if (exhibit_ == Exhibit::Usual)
        area = photographer_->shine(picture, LaserScene::platePose(), LaserScene::spotAt(seconds));
    const cv::Point first(area.x / 2 * 2, area.y / 2 * 2);
    const cv::Point last((area.x + area.width + 1) / 2 * 2, (area.y + area.height + 1) / 2 * 2);
    return area.empty() ? cv::Rect() : cv::Rect(first, last);
}

} // namespace ipncsdk::scene
