#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ipncsdk::media {

/// Bytes of a packed I420 picture. Width and height are even.
constexpr std::size_t i420Size(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3 / 2;
}

/// One picture that owns its samples: planar YUV 4:2:0, rows tightly packed from the top, full range; Y of
/// width x height, then U, then V of width/2 x height/2. Width and height are even; no picture has width 0.
struct Picture {
    std::vector<std::uint8_t> samples;
    int width = 0;
    int height = 0;
    std::chrono::microseconds time{0};

    /// Gives the picture a size; the samples' values are then unspecified.
    void resize(int newWidth, int newHeight) {
        width = newWidth;
        height = newHeight;
        samples.resize(i420Size(newWidth, newHeight));
    }
    bool empty() const { return width == 0; }

    std::uint8_t* plane(int index) { return samples.data() + planeOffset(index); }
    const std::uint8_t* plane(int index) const { return samples.data() + planeOffset(index); }

private:
    std::size_t planeOffset(int index) const {
        const auto luma = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        return index == 0 ? 0 : index == 1 ? luma : luma + luma / 4;
    }
};

} // namespace ipncsdk::media
