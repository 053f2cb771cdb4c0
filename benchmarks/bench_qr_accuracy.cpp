// Prints how far measured movements of a printed code are from the true ones, as a table for docs/vision.md. Pictures
// are those of a camera of 1280 x 720 with distortion, which is known exactly; in every picture the code is
// elsewhere.

#include "scene/Photographer.h"
#include "vision/MatrixText.h"
#include "vision/QrPose.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace vision = corvanta::vision;
namespace scene = ipncsdk::scene;

namespace {

constexpr int Pictures = 40; // a row

scene::Flaws usualFlaws() {
    scene::Flaws flaws;
    flaws.blur = 0.7;
    flaws.noise = 2;
    return flaws;
}

struct Case {
    const char* what;
    std::string value;
    double width = 100;    // mm
    double distance = 600; // mm
    double tilt = 0;       // degrees
    double turn = 0;       // degrees about the line of sight, at most, either way
    scene::Flaws flaws = usualFlaws();
};

scene::Lens lens() {
    scene::Lens lens;
    lens.distortion = {-0.12, 0.05, 0.0005, -0.0004, 0};
    return lens;
}

double percentile(std::vector<double> values, double share) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5)];
}

/// Where the code of a picture is: up to a sixth of its distance beside the middle.
scene::Pose poseOf(const Case& what, std::mt19937& random, double forward) {
    std::uniform_real_distribution<double> any(-1, 1);
    const double aside = what.distance / 6;
    return scene::Pose::turned({what.tilt, 0, 4 + what.turn * any(random)},
                               {aside * any(random), aside / 2 * any(random), what.distance + forward * any(random)});
}

void measure(const Case& what) {
    const scene::Lens camera = lens();
    const scene::Photographer photographer(camera);
    const scene::Print print = scene::codePrint("CORVANTA-1", what.width);
    const cv::Matx33d matrix = camera.matrix();
    const auto pose =
        vision::QrPose::make({vision::matrixText({3, 3, {std::begin(matrix.val), std::end(matrix.val)}}),
                              vision::matrixText({1, 5, {camera.distortion.begin(), camera.distortion.end()}}),
                              QString::number(what.width)});
    const auto reader = vision::visionBackend()->makeCodeReader();
    std::mt19937 random(1);
    std::vector<double> across;
    std::vector<double> along;
    std::vector<std::pair<cv::Vec3d, vision::Position>> found;
    for (int i = 0; i < Pictures; ++i) {
        const scene::Pose place = poseOf(what, random, what.distance / 20);
        scene::Flaws flaws = what.flaws;
        flaws.seed = static_cast<std::uint64_t>(i + 1);
        const cv::Mat picture = photographer.photograph(print, place, flaws);
        if (const auto result = pose->measure(reader->find({picture.data, picture.cols, picture.rows})))
            found.emplace_back(place.translation, result->position);
    }
    // A movement is what lies between two pictures; the sign of a position is turned.
    for (std::size_t i = 1; i < found.size(); ++i) {
        const cv::Vec3d moved = found[i].first - found[i - 1].first;
        const vision::Position& a = found[i - 1].second;
        const vision::Position& b = found[i].second;
        const cv::Vec3d seen(-(double(b.x) - a.x), -(double(b.y) - a.y), -(double(b.z) - a.z));
        const cv::Vec3d off = seen - moved;
        across.push_back(std::hypot(off[0], off[1]));
        along.push_back(std::abs(off[2]));
    }
    std::printf("| %s | %s | %.0f %% | %.2f | %.2f | %.2f | %.2f |\n", what.what, what.value.c_str(),
                100.0 * static_cast<double>(found.size()) / Pictures, percentile(across, 0.5),
                percentile(across, 0.95), percentile(along, 0.5), percentile(along, 0.95));
    std::fflush(stdout);
}

std::vector<Case> cases() {
    std::vector<Case> all;
    const auto add = [&all](const char* what, const std::string& value, const auto& change) {
        Case one{what, value};
        change(one);
        all.push_back(one);
    };
    const auto text = [](double value, const char* unit) {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%g %s", value, unit);
        return std::string(buffer);
    };
    for (const double metres : {0.3, 0.6, 0.8, 1.0, 1.5})
        add("distance, code of 100 mm", text(metres, "m"), [=](Case& one) { one.distance = metres * 1000; });
    for (const double metres : {1.0, 2.0, 3.0, 4.0, 5.0})
        add("distance, code of 600 mm", text(metres, "m"), [=](Case& one) {
            one.width = 600;
            one.distance = metres * 1000;
        });
    for (const double degrees : {15.0, 30.0, 45.0, 60.0})
        add("tilt", text(degrees, "°"), [=](Case& one) { one.tilt = degrees; });
    for (const double degrees : {5.0, 45.0, 180.0})
        add("turned meanwhile by", text(degrees, "°"), [=](Case& one) { one.turn = degrees; });
    for (const double sigma : {0.0, 1.5, 2.5, 3.5})
        add("blur", text(sigma, "px"), [=](Case& one) { one.flaws.blur = sigma; });
    for (const double pixels : {4.0, 8.0})
        add("motion", text(pixels, "px"), [=](Case& one) { one.flaws.motion = {pixels, 0}; });
    for (const double sigma : {0.0, 8.0, 20.0, 40.0})
        add("noise", text(sigma, "levels"), [=](Case& one) { one.flaws.noise = sigma; });
    for (const double share : {0.4, 0.7, 0.9})
        add("light falls to", text(100 * (1 - share), "%"), [=](Case& one) { one.flaws.gradient = share; });
    for (const double contrast : {0.5, 0.2, 0.1})
        add("contrast", text(100 * contrast, "%"), [=](Case& one) { one.flaws.contrast = contrast; });
    return all;
}

} // namespace

int main() {
    std::puts("| What | Value | Found | Across, median mm | 95 % | Along, median mm | 95 % |");
    std::puts("|---|---|---|---|---|---|---|");
    measure({"a code of 100 mm", "0.6 m"});
    for (const Case& one : cases())
        measure(one);
    return 0;
}
