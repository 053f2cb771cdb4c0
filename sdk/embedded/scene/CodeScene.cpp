#include "scene/CodeScene.h"

#include <array>
#include <cmath>
#include <numbers>

namespace ipncsdk::scene {

namespace {

constexpr int ink = 26;
constexpr int paper = 226;
const cv::Vec3d home = {12, -6, 620};
const cv::Vec3d reach = {40, 24, 40};
/// A code that faces the camera straight could as well be turned the other way.
const cv::Vec3d codeTurn = {9, -11, 3};

/// How the chessboard is held: its turn in degrees, and where its middle is.
struct Held {
    cv::Vec3d turn;
    cv::Vec3d middle;
};

const std::array<Held, CodeScene::boardPoses>& heldPoses() {
    // Near and far, straight and tilted either way, and into every corner, where the lens bends most.
    static const std::array<Held, CodeScene::boardPoses> poses = {{
        {{0, 0, 0}, {0, 0, 470}},
        {{26, 0, 0}, {0, 0, 500}},
        {{-26, 0, 0}, {0, 0, 500}},
        {{0, 28, 0}, {0, 0, 500}},
        {{0, -28, 0}, {0, 0, 500}},
        {{12, 12, 8}, {-150, -60, 560}},
        {{12, -12, -8}, {150, -60, 560}},
        {{-12, 12, -8}, {-150, 60, 560}},
        {{-12, -12, 8}, {150, 60, 560}},
        {{0, 0, 45}, {0, 0, 640}},
        {{18, 18, 0}, {-90, 0, 520}},
        {{-18, -18, 0}, {90, 0, 520}},
        {{0, 20, 90}, {0, 0, 700}},
        {{20, -20, -20}, {60, 20, 600}},
        {{-30, 10, 12}, {-200, -70, 640}},
        {{30, -10, -12}, {200, 70, 640}},
    }};
    return poses;
}

double swing(double seconds, double period, double offset) {
    return std::sin(2 * std::numbers::pi * (seconds / period + offset));
}

} // namespace

Lens CodeScene::lens() {
    return {{1280, 720}, 1004, 1001, {648.5, 352.0}, {-0.21, 0.06, 0.0009, -0.0006, 0}};
}

Print CodeScene::code() {
    return toned(codePrint(text, codeSide), ink, paper);
}

Print CodeScene::board() {
    return toned(boardPrint(boardColumns, boardRows, boardSquare), ink, paper);
}

cv::Vec3d CodeScene::positionAt(double seconds) {
    const cv::Vec3d part(swing(seconds, codePeriod, 0), swing(seconds, codePeriod / 2.0, 0.25),
                         swing(seconds, codePeriod, 0.25));
    return home + part.mul(reach);
}

Pose CodeScene::codePoseAt(double seconds) {
    return Pose::turned(codeTurn, positionAt(seconds));
}

Pose CodeScene::boardPoseAt(double seconds) {
    const int turn = static_cast<int>(std::floor(seconds / boardHold)) % boardPoses;
    const Held& held = heldPoses()[static_cast<std::size_t>((turn + boardPoses) % boardPoses)];
    Pose pose = Pose::turned(held.turn, {});
    const cv::Point3d middle((boardColumns - 1) * boardSquare / 2, (boardRows - 1) * boardSquare / 2, 0);
    pose.translation = held.middle - pose.place(middle);
    return pose;
}

} // namespace ipncsdk::scene
