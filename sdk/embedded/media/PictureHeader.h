#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>

namespace ipncsdk::media {

/// What the beginning of a picture's file says of it.
struct PictureHeader {
    enum class Kind { Png, Jpeg };
    Kind kind = Kind::Png;
    std::uint32_t width = 0; ///< pixels, not 0, as height
    std::uint32_t height = 0;
};

/// Reads the header of a PNG (ISO/IEC 15948) or JPEG (ITU-T T.81) file from its first byte on; the picture itself is
/// not decoded. Nothing when it is neither, or the header is damaged or not there whole.
std::optional<PictureHeader> readPictureHeader(std::istream& file);

} // namespace ipncsdk::media
