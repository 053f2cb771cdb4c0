#pragma once

#include "media/Picture.h"

#include <cstdint>
#include <vector>

namespace ipncsdk::media {

/// A picture as a JPEG file in memory, made smaller (never larger) so that it is at most `widest` pixels wide;
/// 0 keeps its size. Empty when that fails.
std::vector<std::uint8_t> encodeJpeg(const Picture& picture, int widest = 0);

} // namespace ipncsdk::media
