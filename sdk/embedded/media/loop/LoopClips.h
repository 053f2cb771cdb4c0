#pragma once

#include "media/loop/LoopLibrary.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace ipncsdk::media {

/// Files cut from loops, as a camera's card holds them. One thread at a time; equal wishes give equal bytes.
class LoopClips final {
public:
    enum class Format { Mp4, Avi, Jpeg };
    struct Clip {
        Format format = Format::Mp4;
        std::size_t firstGop = 0; ///< modulo those of a loop; of a picture the group whose first frame it is
        std::size_t seconds = 1;  ///< of a video; it runs on at the loop's beginning
    };
    /// Asked while something is waited for; true gives up.
    using Cancelled = std::function<bool()>;

    /// `folder` is where the loops are kept.
    LoopClips(std::filesystem::path folder, Log log);

    /// The bytes of the file; empty when it could not be made, or was given up. Waits for the loop where that is made
    /// at first use.
    std::vector<std::uint8_t> make(const LoopSource& source, const Clip& clip, const Cancelled& cancelled);

private:
    LoopLibrary library_;
};

} // namespace ipncsdk::media
