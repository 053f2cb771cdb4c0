#pragma once

#include <span>

namespace ipncsdk::pictures {

/// A PNG file that the library brings along. Lives as long as the program.
struct EmbeddedPicture {
    const char* name; ///< file name, such as "camera.png"
    std::span<const unsigned char> bytes;
};

/// Icons for whoever marks something on a map, 64 x 64 pixels, by their names.
std::span<const EmbeddedPicture> icons();

/// Plans of the first start's world, 1920 x 1080 pixels.
std::span<const EmbeddedPicture> plans();

} // namespace ipncsdk::pictures
