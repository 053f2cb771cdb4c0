#pragma once

#include "media/Picture.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ipncsdk::media {

/// A colour as the picture holds it: full-range YUV.
struct Colour {
    std::uint8_t y = 0;
    std::uint8_t u = 128;
    std::uint8_t v = 128;
};

/// The colour of 8-bit R, G, B by the full-range BT.601 formula that JPEG files use as well.
constexpr Colour rgb(int red, int green, int blue) {
    const double y = 0.299 * red + 0.587 * green + 0.114 * blue;
    const double u = 128 + 0.564334 * (blue - y);
    const double v = 128 + 0.713267 * (red - y);
    const auto byte = [](double value) {
        return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value + 0.5);
    };
    return {byte(y), byte(u), byte(v)};
}

/// A place in a scene. Every scene is 16 units wide and 9 high whatever the picture's size; (0, 0) is the top left.
struct Point {
    float x = 0;
    float y = 0;
};

/// The part of a scene that a picture shows.
struct Window {
    Point origin;            ///< of the scene, at the picture's left top
    float magnification = 1; ///< 1: the whole scene is as wide as the picture
    friend bool operator==(const Window& a, const Window& b) {
        return a.origin.x == b.origin.x && a.origin.y == b.origin.y && a.magnification == b.magnification;
    }
};

/// An 8-bit coverage picture in pixels, as a font renderer makes it.
struct Mask {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage; ///< width x height, rows from the top

    /// One pixel; it lies inside.
    std::uint8_t& at(int x, int y) {
        return coverage[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }
};

/// Draws anti-aliased shapes straight into an I420 picture. Not thread-safe; the picture outlives the canvas.
///
/// Alpha runs from 0 (nothing) to 1 (opaque). Whatever lies outside the picture is cut off.
class Canvas final {
public:
    static constexpr float sceneWidth = 16;
    static constexpr float sceneHeight = 9;

    explicit Canvas(Picture& picture, const Window& window = {});
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    /// Pixels for one scene unit.
    float scale() const { return scale_; }
    int pixelWidth() const { return picture_.width; }
    int pixelHeight() const { return picture_.height; }

    void polygon(std::span<const Point> points, Colour colour, float alpha = 1);
    void polygon(std::initializer_list<Point> points, Colour colour, float alpha = 1) {
        polygon(std::span(points.begin(), points.size()), colour, alpha);
    }
    void rect(float x, float y, float width, float height, Colour colour, float alpha = 1);
    void roundedRect(float x, float y, float width, float height, float radius, Colour colour, float alpha = 1);
    void ellipse(Point centre, float radiusX, float radiusY, Colour colour, float alpha = 1);
    /// A slice of a ring from `from` to `to` radians, clockwise, 0 to the right.
    void arc(Point centre, float inner, float outer, float from, float to, Colour colour, float alpha = 1);
    void line(Point from, Point to, float width, Colour colour, float alpha = 1);
    /// Fills a rectangle with colours running from `top` to `bottom`, dithered so that no bands show.
    void gradient(float x, float y, float width, float height, Colour top, Colour bottom);
    /// A soft light: full `alpha` in the centre, nothing at the radius.
    void glow(Point centre, float radiusX, float radiusY, Colour colour, float alpha);
    /// Roughens the brightness of a rectangle by up to `amplitude` levels; equal seeds give equal grain.
    void grain(float x, float y, float width, float height, int amplitude, std::uint32_t seed);
    /// Paints a mask with its left top at a pixel.
    void mask(int left, int top, const Mask& mask, Colour colour, float alpha = 1);

private:
    struct Box {
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        bool empty() const { return left >= right || top >= bottom; }
    };

    float pixelX(float x) const { return (x - origin_.x) * scale_; }
    float pixelY(float y) const { return (y - origin_.y) * scale_; }
    Box clippedBox(float left, float top, float right, float bottom) const;
    void addEdge(const Box& box, Point from, Point to);
    void fillCoverage(const Box& box, Colour colour, float alpha);
    void blendRow(int row, int left, int count, const std::uint8_t* coverage, Colour colour);
    void blendChroma(int row, int left, int count, const std::uint8_t* upper, const std::uint8_t* lower,
                     Colour colour);

    Picture& picture_;
    float scale_;
    Point origin_;
    std::vector<float> area_;            ///< signed areas of the shape being filled, a row of the box after another
    std::vector<std::uint8_t> coverage_; ///< two rows of the box
};

} // namespace ipncsdk::media
