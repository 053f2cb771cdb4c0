#pragma once

#include <cstdint>
#include <span>

namespace ipncsdk::media {

/// True when the bytes are a whole PNG or JPEG picture, by its first bytes and by decoding it. A picture of more than
/// 64 million pixels counts as none: its file may be small.
bool isStillPicture(std::span<const std::uint8_t> bytes);

} // namespace ipncsdk::media
