#include "media/loop/View.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace ipncsdk::media {

namespace {

/// How much closer than the whole scene the longest zoom shows it.
constexpr float longestZoom = 4;
/// And the view to the very side, which needs room to move in.
constexpr float sideways = 0.6F;
/// The blur of a focus that is furthest off, as a part of the picture's height.
constexpr float widestBlur = 1.0F / 30;
/// What a fully opened iris multiplies the brightness by; a closed one divides by it.
constexpr float widestIris = 2.5F;

/// Replaces each of `count` samples, `step` apart, by the mean of those at most `radius` away; the ends go on.
void blurLine(std::uint8_t* samples, int count, int step, int radius, std::vector<std::uint8_t>& line) {
    line.resize(static_cast<std::size_t>(count));
    const auto at = [&](int index) {
        return line[static_cast<std::size_t>(std::clamp(index, 0, count - 1))];
    };
    for (int index = 0; index < count; ++index) {
        line[static_cast<std::size_t>(index)] = samples[static_cast<std::ptrdiff_t>(index) * step];
    }
    const unsigned width = static_cast<unsigned>(2 * radius + 1);
    unsigned sum = 0;
    for (int index = -radius; index <= radius; ++index) {
        sum += at(index);
    }
    for (int index = 0; index < count; ++index) {
        samples[static_cast<std::ptrdiff_t>(index) * step] = static_cast<std::uint8_t>((sum + width / 2) / width);
        sum += at(index + radius + 1);
        sum -= at(index - radius);
    }
}

} // namespace

Window windowOf(const View& view) {
    const float aside = std::max(std::abs(view.pan), std::abs(view.tilt));
    Window window;
    window.magnification = std::max(1 + longestZoom * view.zoom, 1 + sideways * aside);
    const float room = 0.5F * (1 - 1 / window.magnification);
    window.origin.x = Canvas::sceneWidth * room * (1 + view.pan);
    window.origin.y = Canvas::sceneHeight * room * (1 - view.tilt);
    return window;
}

void defocus(Picture& picture, float focus) {
    const float pixels = std::abs(focus) * widestBlur * static_cast<float>(picture.height);
    std::vector<std::uint8_t> line;
    for (int plane = 0; plane < 3; ++plane) {
        const int part = plane == 0 ? 1 : 2;
        const int width = picture.width / part;
        const int height = picture.height / part;
        const int radius = static_cast<int>(std::lround(pixels)) / part;
        if (radius == 0) {
            continue;
        }
        for (int row = 0; row < height; ++row) {
            blurLine(picture.plane(plane) + static_cast<std::ptrdiff_t>(row) * width, width, 1, radius, line);
        }
        for (int column = 0; column < width; ++column) {
            blurLine(picture.plane(plane) + column, height, width, radius, line);
        }
    }
}

void expose(Picture& picture, float iris) {
    if (iris == 0) {
        return;
    }
    std::array<std::uint8_t, 256> table{};
    const float factor = std::pow(widestIris, iris);
    for (std::size_t value = 0; value < table.size(); ++value) {
        table[value] = static_cast<std::uint8_t>(std::min(255.0F, static_cast<float>(value) * factor + 0.5F));
    }
    const auto luma = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    for (std::uint8_t& sample : std::span(picture.plane(0), luma)) {
        sample = table[sample];
    }
}

} // namespace ipncsdk::media
