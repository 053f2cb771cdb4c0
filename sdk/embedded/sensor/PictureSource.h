#pragma once

#include "media/Picture.h"

#include <chrono>
#include <optional>

namespace ipncsdk::sensor {

/// Decoded pictures of one device.
class PictureSource {
public:
    PictureSource() = default;
    PictureSource(const PictureSource&) = delete;
    PictureSource& operator=(const PictureSource&) = delete;
    virtual ~PictureSource() = default;

    /// Waits for the next picture; nothing when none comes in time.
    virtual std::optional<media::Picture> next(std::chrono::milliseconds timeout) = 0;
};

} // namespace ipncsdk::sensor
