#pragma once

#include <cstddef>

namespace corvanta::video {

/// Size of a decoded picture in pixels. A default one means "no picture".
struct FrameSize {
    unsigned width = 0;
    unsigned height = 0;
    friend bool operator==(const FrameSize&, const FrameSize&) = default;
};

/// Largest width and height that is taken. No camera and no graphics driver goes further, and the byte count of such
/// a picture still fits into 32 bits.
inline constexpr unsigned maxFrameSide = 16384;

/// Whether a planar YUV 4:2:0 picture of this size can be taken: both sides even, above 0 and at most maxFrameSide.
constexpr bool isUsable(FrameSize size) {
    const auto sideIsUsable = [](unsigned side) {
        return side > 0 && side <= maxFrameSide && side % 2 == 0;
    };
    return sideIsUsable(size.width) && sideIsUsable(size.height);
}

/// Bytes of a tightly packed I420 picture (Y plane, then U and V of a quarter each). `size` must be usable.
constexpr std::size_t byteCount(FrameSize size) {
    return static_cast<std::size_t>(size.width) * size.height / 2 * 3;
}

} // namespace corvanta::video
