#include "support/PaintedSpot.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace paintedSpot {

namespace {

constexpr double WidthOfBell = 2.3548; // where a bell is half as high as its peak, in standard deviations

using Plane = std::vector<std::array<double, 3>>;

double groundAt(const Scene& scene, double x, double y) {
    const double u = x / scene.size.width() - 0.5;
    const double v = y / scene.size.height() - 0.5;
    const double corner = 2 * (u * u + v * v); // 1 in the corners
    return (scene.ground + scene.slope.x() * u + scene.slope.y() * v) * (1 - scene.vignette * corner);
}

/// How bright a light is at a place seen from its centre, 0 to 1.
double shareAt(const Light& light, double blur, double x, double y) {
    const double wide = std::sqrt(light.elongation);
    const double along = x * std::cos(light.angle) + y * std::sin(light.angle);
    const double across = y * std::cos(light.angle) - x * std::sin(light.angle);
    if (light.shape != Shape::Bell) {
        const double out = std::hypot(along / wide, across * wide) / (light.diameter / 2);
        return out <= 1 && (light.shape == Shape::Disc || out > 0.7) ? 1 : 0;
    }
    const double own = light.diameter / WidthOfBell;
    const double a = std::hypot(own * wide, blur);
    const double b = std::hypot(own / wide, blur);
    const double dimmer = own * own / (a * b); // the same light on a larger area
    return dimmer * std::exp(-(along * along) / (2 * a * a) - (across * across) / (2 * b * b));
}

void add(const Light& light, const Scene& scene, Plane& plane) {
    const int parts = light.diameter < 12 ? 5 : 3; // of a pixel, each way
    constexpr double reach = 3;
    const double farthest = reach * (light.diameter * std::sqrt(light.elongation) + 2 * scene.blur) + 1;
    const int left = std::max(0, static_cast<int>(light.centre.x() - farthest));
    const int right = std::min(scene.size.width(), static_cast<int>(light.centre.x() + farthest) + 1);
    const int top = std::max(0, static_cast<int>(light.centre.y() - farthest));
    const int bottom = std::min(scene.size.height(), static_cast<int>(light.centre.y() + farthest) + 1);
    for (int row = top; row < bottom; ++row) {
        for (int column = left; column < right; ++column) {
            double share = 0;
            for (int part = 0; part < parts * parts; ++part)
                share += shareAt(light, scene.blur, column + (part % parts + 0.5) / parts - light.centre.x(),
                                 row + (part / parts + 0.5) / parts - light.centre.y());
            const double levels = light.peak * share / (parts * parts);
            auto& pixel = plane[static_cast<std::size_t>(row) * static_cast<std::size_t>(scene.size.width()) +
                                static_cast<std::size_t>(column)];
            for (std::size_t channel = 0; channel < pixel.size(); ++channel)
                pixel[channel] += levels * light.colour[channel];
        }
    }
}

/// Draws of a normal distribution; to pick from them is faster than to draw anew.
const std::vector<double>& someNoise() {
    static const std::vector<double> draws = [] {
        constexpr std::size_t count = 1 << 16;
        std::mt19937 random(1);
        std::normal_distribution<double> normal;
        std::vector<double> values(count);
        std::generate(values.begin(), values.end(), [&] { return normal(random); });
        return values;
    }();
    return draws;
}

} // namespace

QImage paint(const Scene& scene) {
    Plane plane(static_cast<std::size_t>(scene.size.width()) * static_cast<std::size_t>(scene.size.height()));
    std::size_t index = 0;
    for (int row = 0; row < scene.size.height(); ++row) {
        for (int column = 0; column < scene.size.width(); ++column)
            plane[index++].fill(groundAt(scene, column + 0.5, row + 0.5));
    }
    for (const Light& light : scene.lights)
        add(light, scene, plane);

    std::mt19937 random(scene.seed);
    const std::vector<double>& noise = someNoise();
    const auto level = [&](double value) {
        const double noisy = value + scene.noise * noise[random() % noise.size()];
        return static_cast<int>(std::clamp(noisy, 0.0, 255.0) + 0.5);
    };
    QImage picture(scene.size, QImage::Format_RGB32);
    index = 0;
    for (int row = 0; row < scene.size.height(); ++row) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(row));
        for (int column = 0; column < scene.size.width(); ++column) {
            const auto& pixel = plane[index++];
            const int red = level(pixel[0]);
            const int green = level(pixel[1]);
            line[column] = qRgb(red, green, level(pixel[2]));
        }
    }
    return picture;
}

} // namespace paintedSpot
