#pragma once

#include "video/FrameSize.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace corvanta::playback {

/// A decoded picture as the renderer takes it: I420, full range, rows tightly packed, byteCount(size) bytes.
struct Picture {
    video::FrameSize size;
    std::vector<std::uint8_t> bytes;
};

/// Nobody changes a picture once it is handed out, so threads may share it.
using SharedPicture = std::shared_ptr<const Picture>;

} // namespace corvanta::playback
