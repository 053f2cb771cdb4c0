#pragma once

#include "media/Stream.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ipncsdk::media {

/// Frames a second of every loop.
inline constexpr int loopFrameRate = 25;
/// Frames from one key frame to the next.
inline constexpr int loopGopLength = 25;
/// Frames of a whole loop of a recorded scene: 8 seconds.
inline constexpr int loopLength = 200;
static_assert(loopLength % loopGopLength == 0);

/// Scenes that measuring cameras see: a printed code, a laser's spot. Their loops are longer than others.
inline constexpr int codeScene = 1000;
inline constexpr int laserScene = 1001;
constexpr bool isMeasuringScene(int scene) {
    return scene == codeScene || scene == laserScene;
}

/// Everything a loop's pictures depend on; equal keys mean equal loops.
struct LoopKey {
    LoopSource source;
    Quality quality = Quality::Light;
    int exhibit = 0; ///< as `LoopControl` has it; scenes that do not measure know 0 alone
    friend bool operator==(const LoopKey&, const LoopKey&) = default;

    int width() const { return quality == Quality::Main ? 1280 : 640; }
    int height() const { return quality == Quality::Main ? 720 : 360; }
    /// Frames of the whole loop, a multiple of `loopGopLength`.
    int length() const;
    std::size_t gopCount() const { return static_cast<std::size_t>(length() / loopGopLength); }
    /// The key as bytes that differ whenever the key differs.
    std::string text() const;
    /// A file name for the loop: letters and digits that come from a hash of the text, so that nothing of a title
    /// ever reaches a path.
    std::string fileName() const;
};

/// A run of coded frames from one key frame to the next, in Annex B form. Immutable once handed over.
struct Gop {
    std::vector<std::uint8_t> bytes;
    std::vector<std::uint32_t> sizes; ///< of each frame, in order; their sum is the number of bytes
};

} // namespace ipncsdk::media
