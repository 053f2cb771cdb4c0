#include "scene/LaserScene.h"

#include <cmath>
#include <numbers>

namespace ipncsdk::scene {

namespace {

const cv::Size2d plateSize = {290, 175};
const cv::Point2d reach = {70, 34};
constexpr int ink = 8;
constexpr int paper = 150; ///< darker than the spot by far

} // namespace

Lens LaserScene::lens() {
    return {{1280, 720}, 998, 999, {633.0, 366.5}, {-0.12, 0.03, -0.0004, 0.0007, 0}};
}

Print LaserScene::plate() {
    return toned(platePrint(plateSize, crosses()), ink, paper);
}

Pose LaserScene::platePose() {
    return Pose::turned({7, -9, 1.5}, {-4, 6, 390});
}

std::vector<cv::Point2d> LaserScene::crosses() {
    return {{-crossX, -crossY}, {crossX, -crossY}, {crossX, crossY}, {-crossX, crossY}};
}

cv::Point2d LaserScene::positionAt(double seconds) {
    const double turn = 2 * std::numbers::pi * seconds / period;
    return {reach.x * std::sin(turn), reach.y * std::sin(2 * turn + 1)};
}

Spot LaserScene::spotAt(double seconds) {
    Spot spot;
    spot.at = positionAt(seconds);
    return spot;
}

} // namespace ipncsdk::scene
