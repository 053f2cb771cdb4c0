#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace ipncsdk::media {

/// A container of one H.264 stream that is written into memory.
class MemoryMuxer final {
public:
    /// `format` as libavformat names it; `frameRate` is the unit of times.
    MemoryMuxer(const char* format, int frameRate);
    ~MemoryMuxer();
    MemoryMuxer(const MemoryMuxer&) = delete;
    MemoryMuxer& operator=(const MemoryMuxer&) = delete;

    /// `head` holds the parameter sets in Annex B form, or nothing where they stand in the frames alone.
    bool begin(int width, int height, std::span<const std::uint8_t> head);
    /// An access unit in Annex B form. `number`: when it is shown, in frames from the beginning; each above the last.
    bool write(std::span<const std::uint8_t> frame, bool keyFrame, std::int64_t number);
    /// The file, once `begin` has succeeded; empty when it could not be ended. Nothing may be called after it.
    std::vector<std::uint8_t> finish();

private:
    struct Context;
    const std::unique_ptr<Context> context_;
};

} // namespace ipncsdk::media
