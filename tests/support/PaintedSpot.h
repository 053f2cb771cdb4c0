#pragma once

#include <QImage>
#include <QPointF>
#include <QSize>

#include <array>
#include <vector>

/// Pictures of laser spots whose centres are known. The upper-left pixel covers 0 to 1 in both directions.
namespace paintedSpot {

enum class Shape {
    Bell, ///< as a laser's
    Disc, ///< with a sharp edge: a lamp
    Ring  ///< likewise, dark within 0.7 of its diameter
};

/// Shares of a spot's light in red, green and blue. A camera's filters let a little of every light through.
inline constexpr std::array<double, 3> Red = {1, 0.12, 0.06};
inline constexpr std::array<double, 3> Green = {0.15, 1, 0.2};
inline constexpr std::array<double, 3> Blue = {0.05, 0.2, 1};
inline constexpr std::array<double, 3> White = {1, 1, 1};
inline constexpr std::array<double, 3> Warm = {1, 0.85, 0.6};

struct Light {
    QPointF centre;
    double diameter = 10;  ///< px, where it is half as bright as in its middle
    double peak = 150;     ///< grey levels; beyond what a pixel takes it is cut off
    double elongation = 1; ///< how many times as wide as high, at the same area
    double angle = 0;      ///< radians, of the longer axis
    std::array<double, 3> colour = Red;
    Shape shape = Shape::Bell;
};

struct Scene {
    QSize size = {320, 240};
    double ground = 40;  ///< grey levels in the picture's middle
    QPointF slope;       ///< by how much the ground grows over the picture's width and height
    double vignette = 0; ///< share of the ground that is missing in the corners
    double blur = 0;     ///< px, standard deviation; of the lens
    double noise = 0;    ///< grey levels, standard deviation; of each pixel and colour
    unsigned seed = 1;   ///< of the noise
    std::vector<Light> lights;
};

/// In `Format_RGB32`. The same scene gives the same picture.
QImage paint(const Scene& scene);

} // namespace paintedSpot
