// How exactly the spot of a laser is found, as tables in Markdown: how many of the pictures, and how far off, in px
// and on the plate in mm. The pictures are painted (tests/support/PaintedSpot.h), so the truth is known.
#include "support/PaintedSpot.h"
#include "vision/LaserMeasure.h"

#include <QBuffer>
#include <QElapsedTimer>

#include <opencv2/core/utility.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

using namespace corvanta::vision;
using paintedSpot::Light;
using paintedSpot::Scene;

namespace {

constexpr int Turns = 60;           // spots a row
constexpr QSize Size(640, 480);     // px; cut from the middle of a larger picture
constexpr double Focal = 900;       // px
constexpr double Away = 500;        // mm, of the plate
constexpr double Reach = 50;        // mm, of the spots from the plate's middle, both ways
constexpr double CrossesReach = 55; // mm, of the four crosses

struct Case {
    const char* name;
    double diameter = 10; // px
    double peak = 150;    // grey levels above the ground
    double noise = 3;     // grey levels
    double blur = 0;      // px
    double slope = 0;     // grey levels over the picture's width
    double tilt = 0;      // degrees that the plate is turned about its upright axis
    double clicks = 0;    // px, by how much at most the crosses were missed
    int quality = 0;      // of JPEG; 0: none
    int frames = 1;       // that are averaged
    bool lamps = false;   // shine beside, and are in the reference
};

/// Where a point of the plate is seen.
QPointF pixelOf(const QPointF& place, double tilt) {
    const double away = Away + place.x() * std::sin(tilt);
    return {Size.width() / 2.0 + Focal * place.x() * std::cos(tilt) / away,
            Size.height() / 2.0 + Focal * place.y() / away};
}

/// Random numbers that are the same in each run.
class Dice final {
public:
    double within(double most) { return std::uniform_real_distribution<double>(-most, most)(random_); }
    unsigned seed() { return static_cast<unsigned>(random_()); }

private:
    std::mt19937 random_{20};
};

std::optional<LaserMeter> meterOf(const Case& one, double tilt, const QImage& reference, Dice& dice) {
    LaserInfo info;
    info.mode = LaserInfo::Mode::Points;
    info.spot.colour = SpotColour::Red;
    info.spot.smallestDiameter = 2;
    info.spot.largestDiameter = 150;
    for (const QPointF& sides : {QPointF(-1, -1), QPointF(1, -1), QPointF(1, 1), QPointF(-1, 1)}) {
        const QPointF place = sides * CrossesReach;
        const QPointF missed(dice.within(one.clicks), dice.within(one.clicks));
        info.points += ScalePoint{pixelOf(place, tilt) + missed, place};
    }
    return LaserMeter::make(info, reference);
}

QImage throughJpeg(const QImage& picture, int quality) {
    QByteArray file;
    QBuffer buffer(&file);
    const bool isWritten = buffer.open(QIODevice::WriteOnly) && picture.save(&buffer, "JPG", quality);
    return isWritten ? QImage::fromData(file) : QImage();
}

QImage pictureOf(const Case& one, Scene scene, Dice& dice) {
    scene.seed = dice.seed();
    const QImage picture = paintedSpot::paint(scene);
    return one.quality > 0 ? throughJpeg(picture, one.quality) : picture;
}

Scene sceneOf(const Case& one) {
    Scene scene;
    scene.size = Size;
    scene.ground = 60;
    scene.slope = {one.slope, one.slope / 2};
    scene.noise = one.noise;
    scene.blur = one.blur;
    if (one.lamps) {
        for (const QPointF& centre : {QPointF(220, 170), QPointF(415, 290), QPointF(330, 180)}) {
            Light lamp{centre, 24, 300};
            lamp.colour = paintedSpot::Warm;
            lamp.shape = paintedSpot::Shape::Disc;
            scene.lights.push_back(lamp);
        }
    }
    return scene;
}

double share(std::vector<double> values, double part) {
    if (values.empty())
        return std::nan("");
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

double distance(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

void measure(const Case& one) {
    Dice dice;
    const double tilt = one.tilt * M_PI / 180;
    const Scene empty = sceneOf(one);
    const QImage reference = one.lamps ? pictureOf(one, empty, dice) : QImage();
    std::vector<double> pixels;
    std::vector<double> millimetres;
    for (int turn = 0; turn < Turns; ++turn) {
        const auto meter = meterOf(one, tilt, reference, dice);
        const QPointF place(dice.within(Reach), dice.within(Reach));
        Scene scene = empty;
        Light spot{pixelOf(place, tilt), one.diameter * std::sqrt(std::cos(tilt)), one.peak};
        spot.elongation = std::cos(tilt);
        scene.lights.push_back(spot);
        std::vector<LaserPosition> positions;
        QPointF centres;
        for (int frame = 0; frame < one.frames && meter; ++frame) {
            const auto found = meter->measure(pictureOf(one, scene, dice));
            if (!found.position)
                continue;
            positions.push_back(*found.position);
            centres += found.spot->centre;
        }
        if (const auto mean = trimmedMean(positions)) {
            pixels.push_back(distance(centres / static_cast<double>(positions.size()), spot.centre));
            millimetres.push_back(distance({mean->x, mean->y}, place));
        }
    }
    std::printf("| %s | %d %% | %.3f | %.3f | %.3f | %.3f |\n", one.name,
                static_cast<int>(100 * pixels.size() / Turns), share(pixels, 0.5), share(pixels, 0.95),
                share(millimetres, 0.5), share(millimetres, 0.95));
    std::fflush(stdout);
}

void measureAll(const char* title, const std::vector<Case>& cases) {
    std::printf("| %s | found | median, px | 95 %%, px | median, mm | 95 %%, mm |\n|---|---:|---:|---:|---:|---:|\n",
                title);
    for (const Case& one : cases)
        measure(one);
    std::printf("\n");
}

/// How long a picture of a camera takes, on one core.
void measureTime() {
    constexpr int pictures = 40;
    Scene scene;
    scene.size = {1280, 720};
    scene.noise = 4;
    const QImage reference = paintedSpot::paint(scene);
    scene.lights.push_back({{700.3, 300.6}, 20, 1500});
    scene.seed = 2;
    const QImage picture = paintedSpot::paint(scene);
    for (const QImage& without : {QImage(), reference}) {
        std::vector<double> times;
        for (int turn = 0; turn < pictures; ++turn) {
            QElapsedTimer timer;
            timer.start();
            findSpot(picture, without, {});
            times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        }
        std::printf("1280 x 720 %s reference: %.1f ms (least), %.1f ms (median)\n",
                    without.isNull() ? "without" : "with", share(times, 0), share(times, 0.5));
    }
}

std::vector<Case> changed(const char* const* names, const std::vector<double>& values, double Case::*member) {
    std::vector<Case> cases;
    for (const double value : values) {
        Case one{*names++};
        one.*member = value;
        cases.push_back(one);
    }
    return cases;
}

} // namespace

int main() {
    cv::setNumThreads(1); // a picture is measured on one core
    const char* const diameters[] = {"3 px", "5 px", "10 px", "20 px", "40 px", "80 px"};
    measureAll("Diameter", changed(diameters, {3, 5, 10, 20, 40, 80}, &Case::diameter));
    const char* const noises[] = {"none", "2 grey levels", "5 grey levels", "10 grey levels", "20 grey levels"};
    measureAll("Noise", changed(noises, {0, 2, 5, 10, 20}, &Case::noise));
    const char* const blurs[] = {"none", "1 px", "2 px", "4 px"};
    measureAll("Blur", changed(blurs, {0, 1, 2, 4}, &Case::blur));
    const char* const peaks[] = {"50 grey levels", "100 grey levels", "200 grey levels",
                                 "1,000, cut off", "5,000, cut off",  "20,000, cut off"};
    measureAll("Brightness", changed(peaks, {50, 100, 200, 1000, 5000, 20000}, &Case::peak));
    const char* const slopes[] = {"even", "40 grey levels", "100 grey levels"};
    std::vector<Case> light = changed(slopes, {0, 40, 100}, &Case::slope);
    Case lamps{"lamps, with a reference"};
    lamps.lamps = true;
    light.push_back(lamps);
    measureAll("Light over the picture", light);
    const char* const tilts[] = {"0 degrees", "30 degrees", "45 degrees", "60 degrees"};
    std::vector<Case> tilted = changed(tilts, {0, 30, 45, 60}, &Case::tilt);
    Case clicked{"30 degrees, crosses missed by up to 0.5 px"};
    clicked.tilt = 30;
    clicked.clicks = 0.5;
    tilted.push_back(clicked);
    measureAll("Tilt of the plate", tilted);
    Case jpeg{"JPEG, quality 85"};
    jpeg.quality = 85;
    Case poor{"JPEG, quality 50"};
    poor.quality = 50;
    Case tiny{"JPEG, quality 85, spot of 4 px"};
    tiny.quality = 85;
    tiny.diameter = 4;
    Case video{"mean of 10 pictures, noise of 10"};
    video.noise = 10;
    video.frames = 10;
    measureAll("Coding, several pictures", {jpeg, poor, tiny, video});
    measureTime();
    return 0;
}
