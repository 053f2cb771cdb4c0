#include "media/loop/Canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace ipncsdk::media {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

/// Repeatable noise (the finaliser of a 32-bit multiply-xor hash).
std::uint32_t noise(std::uint32_t value) {
    value = (value ^ (value >> 16)) * 0x7feb352dU;
    value = (value ^ (value >> 15)) * 0x846ca68bU;
    return value ^ (value >> 16);
}

std::uint8_t mix(std::uint8_t from, std::uint8_t to, unsigned weight) {
    return static_cast<std::uint8_t>((from * (255U - weight) + to * weight + 127U) / 255U);
}

/// A weight of 0 to 1 (times `full`) as coverage; what is added rounds it.
std::uint8_t toCoverage(float weight, float full) {
    constexpr float half = 0.5F;
    const float value = weight * full + half;
    return static_cast<std::uint8_t>(value);
}

std::uint8_t toByte(float value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0F, 255.0F));
}

/// Corners enough that an ellipse of this radius in pixels looks round.
int cornersFor(float radius) {
    return std::clamp(static_cast<int>(6 + radius * 1.2F), 8, 64);
}

} // namespace

Canvas::Canvas(Picture& picture, const Window& window)
    : picture_(picture)
    , scale_(static_cast<float>(picture.height) / sceneHeight * window.magnification)
    , origin_(window.origin) {}

/// The shape's box in pixels, cut to the picture and widened to whole chroma samples.
Canvas::Box Canvas::clippedBox(float left, float top, float right, float bottom) const {
    const auto limit = [](float value, int size) {
        return static_cast<int>(std::clamp(value, 0.0F, static_cast<float>(size)));
    };
    Box box;
    box.left = limit(std::floor(left), picture_.width) & ~1;
    box.top = limit(std::floor(top), picture_.height) & ~1;
    box.right = (limit(std::ceil(right), picture_.width) + 1) & ~1;
    box.bottom = (limit(std::ceil(bottom), picture_.height) + 1) & ~1;
    return box;
}

/// Adds what one edge of a polygon contributes: for each row it crosses, the signed area to its right, spread over
/// the pixels that the edge passes, so that a running sum along the row gives the exact coverage.
void Canvas::addEdge(const Box& box, Point from, Point to) {
    if (from.y == to.y) {
        return;
    }
    const float direction = from.y < to.y ? 1.0F : -1.0F;
    const Point upper = from.y < to.y ? from : to;
    const Point lower = from.y < to.y ? to : from;
    const int width = box.right - box.left;
    const int height = box.bottom - box.top;
    const float slope = (lower.x - upper.x) / (lower.y - upper.y);
    const int firstRow = std::max(0, static_cast<int>(std::floor(upper.y)));
    const int lastRow = std::min(height, static_cast<int>(std::ceil(lower.y)));
    for (int row = firstRow; row < lastRow; ++row) {
        const float y0 = std::max(upper.y, static_cast<float>(row));
        const float y1 = std::min(lower.y, static_cast<float>(row + 1));
        const float amount = direction * (y1 - y0);
        const float limit = static_cast<float>(width);
        const float xa = std::clamp(upper.x + (y0 - upper.y) * slope, 0.0F, limit);
        const float xb = std::clamp(upper.x + (y1 - upper.y) * slope, 0.0F, limit);
        const float x0 = std::min(xa, xb);
        const float x1 = std::max(xa, xb);
        const int first = static_cast<int>(x0);
        const int last = static_cast<int>(std::ceil(x1));
        float* cells = area_.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(width + 2) + first;
        if (last <= first + 1) {
            const float middle = 0.5F * (x0 + x1) - static_cast<float>(first);
            cells[0] += amount * (1 - middle);
            cells[1] += amount * middle;
            continue;
        }
        const float perPixel = 1 / (x1 - x0);
        const float head = 1 - (x0 - static_cast<float>(first));
        const float tail = x1 - static_cast<float>(last - 1);
        const float firstArea = 0.5F * perPixel * head * head;
        const float lastArea = 0.5F * perPixel * tail * tail;
        const int span = last - first;
        cells[0] += amount * firstArea;
        if (span == 2) {
            cells[1] += amount * (1 - firstArea - lastArea);
        } else {
            const float second = perPixel * (head + 0.5F);
            cells[1] += amount * (second - firstArea);
            for (int index = 2; index < span - 1; ++index) {
                cells[index] += amount * perPixel;
            }
            const float before = second + static_cast<float>(span - 3) * perPixel;
            cells[span - 1] += amount * (1 - before - lastArea);
        }
        cells[span] += amount * lastArea;
    }
}

void Canvas::blendRow(int row, int left, int count, const std::uint8_t* coverage, Colour colour) {
    std::uint8_t* luma = picture_.plane(0) + static_cast<std::size_t>(row) * static_cast<std::size_t>(picture_.width);
    for (int column = 0; column < count; ++column) {
        luma[left + column] = mix(luma[left + column], colour.y, coverage[column]);
    }
}

void Canvas::blendChroma(int row, int left, int count, const std::uint8_t* upper, const std::uint8_t* lower,
                         Colour colour) {
    const std::size_t offset = static_cast<std::size_t>(row / 2) * static_cast<std::size_t>(picture_.width / 2) +
                               static_cast<std::size_t>(left / 2);
    std::uint8_t* u = picture_.plane(1) + offset;
    std::uint8_t* v = picture_.plane(2) + offset;
    for (int column = 0; column < count; column += 2) {
        const unsigned weight = (upper[column] + upper[column + 1] + lower[column] + lower[column + 1] + 2U) / 4U;
        u[column / 2] = mix(u[column / 2], colour.u, weight);
        v[column / 2] = mix(v[column / 2], colour.v, weight);
    }
}

void Canvas::fillCoverage(const Box& box, Colour colour, float alpha) {
    const int width = box.right - box.left;
    const auto stride = static_cast<std::size_t>(width);
    coverage_.resize(stride * 2);
    for (int row = box.top; row < box.bottom; row += 2) {
        for (int half = 0; half < 2; ++half) {
            const float* cells = area_.data() + static_cast<std::size_t>(row + half - box.top) * (stride + 2);
            std::uint8_t* coverage = coverage_.data() + stride * static_cast<std::size_t>(half);
            float sum = 0;
            for (std::size_t column = 0; column < stride; ++column) {
                sum += cells[column];
                coverage[column] = toCoverage(std::min(std::abs(sum), 1.0F), alpha * 255);
            }
            blendRow(row + half, box.left, width, coverage, colour);
        }
        blendChroma(row, box.left, width, coverage_.data(), coverage_.data() + stride, colour);
    }
}

void Canvas::polygon(std::span<const Point> points, Colour colour, float alpha) {
    if (points.size() < 3) {
        return;
    }
    float left = points[0].x;
    float right = left;
    float top = points[0].y;
    float bottom = top;
    for (const Point& point : points) {
        left = std::min(left, point.x);
        right = std::max(right, point.x);
        top = std::min(top, point.y);
        bottom = std::max(bottom, point.y);
    }
    const Box box = clippedBox(pixelX(left), pixelY(top), pixelX(right), pixelY(bottom));
    if (box.empty()) {
        return;
    }
    const auto cells =
        static_cast<std::size_t>(box.right - box.left + 2) * static_cast<std::size_t>(box.bottom - box.top);
    area_.assign(cells, 0.0F);
    const auto toBox = [&](const Point& point) {
        return Point{pixelX(point.x) - static_cast<float>(box.left), pixelY(point.y) - static_cast<float>(box.top)};
    };
    Point previous = toBox(points.back());
    for (const Point& point : points) {
        const Point next = toBox(point);
        addEdge(box, previous, next);
        previous = next;
    }
    fillCoverage(box, colour, std::clamp(alpha, 0.0F, 1.0F));
}

void Canvas::rect(float x, float y, float width, float height, Colour colour, float alpha) {
    polygon({{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}}, colour, alpha);
}

void Canvas::roundedRect(float x, float y, float width, float height, float radius, Colour colour, float alpha) {
    constexpr int steps = 5;
    std::array<Point, std::size_t{4} * (steps + 1)> points;
    const std::array<Point, 4> centres{Point{x + width - radius, y + height - radius},
                                       Point{x + radius, y + height - radius}, Point{x + radius, y + radius},
                                       Point{x + width - radius, y + radius}};
    std::size_t index = 0;
    for (int corner = 0; corner < 4; ++corner) {
        for (int step = 0; step <= steps; ++step) {
            const float angle = (static_cast<float>(corner) + static_cast<float>(step) / steps) * pi / 2;
            const Point& centre = centres[static_cast<std::size_t>(corner)];
            points[index++] = {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
        }
    }
    polygon(points, colour, alpha);
}

void Canvas::ellipse(Point centre, float radiusX, float radiusY, Colour colour, float alpha) {
    std::array<Point, 64> points;
    const int corners = cornersFor(std::max(radiusX, radiusY) * scale_);
    for (int corner = 0; corner < corners; ++corner) {
        const float angle = 2 * pi * static_cast<float>(corner) / static_cast<float>(corners);
        points[static_cast<std::size_t>(corner)] = {centre.x + radiusX * std::cos(angle),
                                                    centre.y + radiusY * std::sin(angle)};
    }
    polygon(std::span(points).first(static_cast<std::size_t>(corners)), colour, alpha);
}

void Canvas::arc(Point centre, float inner, float outer, float from, float to, Colour colour, float alpha) {
    std::array<Point, 64> points;
    constexpr std::size_t half = points.size() / 2;
    for (std::size_t index = 0; index < half; ++index) {
        const float angle = from + (to - from) * static_cast<float>(index) / static_cast<float>(half - 1);
        const Point unit{std::cos(angle), std::sin(angle)};
        points[index] = {centre.x + outer * unit.x, centre.y + outer * unit.y};
        points[points.size() - 1 - index] = {centre.x + inner * unit.x, centre.y + inner * unit.y};
    }
    polygon(points, colour, alpha);
}

void Canvas::line(Point from, Point to, float width, Colour colour, float alpha) {
    const float dx = to.x - from.x;
    const float dy = to.y - from.y;
    const float length = std::hypot(dx, dy);
    if (length == 0) {
        return;
    }
    const float nx = -dy / length * width / 2;
    const float ny = dx / length * width / 2;
    polygon({{from.x + nx, from.y + ny}, {to.x + nx, to.y + ny}, {to.x - nx, to.y - ny}, {from.x - nx, from.y - ny}},
            colour, alpha);
}

void Canvas::gradient(float x, float y, float width, float height, Colour top, Colour bottom) {
    const Box box = clippedBox(pixelX(x), pixelY(y), pixelX(x + width), pixelY(y + height));
    const auto between = [](std::uint8_t from, std::uint8_t to, float part) {
        return static_cast<float>(from) + (static_cast<float>(to) - static_cast<float>(from)) * part;
    };
    for (int row = box.top; row < box.bottom; ++row) {
        const float part = std::clamp((static_cast<float>(row) + 0.5F - pixelY(y)) / (height * scale_), 0.0F, 1.0F);
        const auto fill = [&](std::uint8_t* samples, float value, int left, int right) {
            for (int column = left; column < right; ++column) {
                const std::uint32_t dither = noise(static_cast<std::uint32_t>(row * 8192 + column)) & 255U;
                samples[column] = toByte(value + static_cast<float>(dither) / 256.0F);
            }
        };
        const auto pixelRow = static_cast<std::size_t>(row);
        const auto stride = static_cast<std::size_t>(picture_.width);
        fill(picture_.plane(0) + pixelRow * stride, between(top.y, bottom.y, part), box.left, box.right);
        if (row % 2 == 0) {
            const std::size_t offset = pixelRow / 2 * (stride / 2);
            fill(picture_.plane(1) + offset, between(top.u, bottom.u, part), box.left / 2, box.right / 2);
            fill(picture_.plane(2) + offset, between(top.v, bottom.v, part), box.left / 2, box.right / 2);
        }
    }
}

void Canvas::glow(Point centre, float radiusX, float radiusY, Colour colour, float alpha) {
    const Box box = clippedBox(pixelX(centre.x - radiusX), pixelY(centre.y - radiusY), pixelX(centre.x + radiusX),
                               pixelY(centre.y + radiusY));
    if (box.empty()) {
        return;
    }
    const int width = box.right - box.left;
    const auto stride = static_cast<std::size_t>(width);
    coverage_.resize(stride * 2);
    const float strength = std::clamp(alpha, 0.0F, 1.0F) * 255;
    for (int row = box.top; row < box.bottom; row += 2) {
        for (int half = 0; half < 2; ++half) {
            std::uint8_t* coverage = coverage_.data() + stride * static_cast<std::size_t>(half);
            const float dy = ((static_cast<float>(row + half) + 0.5F) / scale_ + origin_.y - centre.y) / radiusY;
            for (int column = 0; column < width; ++column) {
                const float dx =
                    ((static_cast<float>(box.left + column) + 0.5F) / scale_ + origin_.x - centre.x) / radiusX;
                const float rest = std::max(0.0F, 1 - dx * dx - dy * dy);
                coverage[column] = toCoverage(rest * rest, strength);
            }
            blendRow(row + half, box.left, width, coverage, colour);
        }
        blendChroma(row, box.left, width, coverage_.data(), coverage_.data() + stride, colour);
    }
}

void Canvas::grain(float x, float y, float width, float height, int amplitude, std::uint32_t seed) {
    const Box box = clippedBox(pixelX(x), pixelY(y), pixelX(x + width), pixelY(y + height));
    for (int row = box.top; row < box.bottom; ++row) {
        std::uint8_t* luma =
            picture_.plane(0) + static_cast<std::size_t>(row) * static_cast<std::size_t>(picture_.width);
        for (int column = box.left; column < box.right; ++column) {
            const auto place = static_cast<std::uint32_t>(row * 8192 + column);
            const int change =
                static_cast<int>(noise(place ^ (seed * 0x9e3779b9U)) % static_cast<unsigned>(2 * amplitude + 1)) -
                amplitude;
            luma[column] = static_cast<std::uint8_t>(std::clamp(luma[column] + change, 0, 255));
        }
    }
}

void Canvas::mask(int left, int top, const Mask& mask, Colour colour, float alpha) {
    // Whole chroma samples are blended, so the mask is laid into rows that start on an even pixel.
    const auto weight = static_cast<unsigned>(std::clamp(alpha, 0.0F, 1.0F) * 256);
    const int boxLeft = std::clamp(left, 0, picture_.width) & ~1;
    const int boxRight = (std::clamp(left + mask.width, 0, picture_.width) + 1) & ~1;
    const int boxTop = std::clamp(top, 0, picture_.height) & ~1;
    const int boxBottom = (std::clamp(top + mask.height, 0, picture_.height) + 1) & ~1;
    const int width = boxRight - boxLeft;
    if (width <= 0) {
        return;
    }
    const auto stride = static_cast<std::size_t>(width);
    for (int row = boxTop; row < boxBottom; row += 2) {
        coverage_.assign(stride * 2, 0);
        for (int half = 0; half < 2; ++half) {
            const int from = row + half - top;
            if (from < 0 || from >= mask.height) {
                continue;
            }
            std::uint8_t* coverage = coverage_.data() + stride * static_cast<std::size_t>(half);
            const auto source = static_cast<std::size_t>(from) * static_cast<std::size_t>(mask.width);
            for (int column = std::max(boxLeft, left); column < std::min(boxRight, left + mask.width); ++column) {
                const unsigned value = mask.coverage[source + static_cast<std::size_t>(column - left)];
                coverage[column - boxLeft] = static_cast<std::uint8_t>(value * weight >> 8);
            }
            blendRow(row + half, boxLeft, width, coverage, colour);
        }
        blendChroma(row, boxLeft, width, coverage_.data(), coverage_.data() + stride, colour);
    }
}

} // namespace ipncsdk::media
