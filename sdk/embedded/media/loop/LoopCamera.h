#pragma once

#include "media/loop/LoopEncoder.h"
#include "media/loop/LoopLibrary.h"
#include "media/loop/LoopPainter.h"

#include <memory>

namespace ipncsdk::media {

/// The pictures of a loop camera that looks elsewhere than its recording, painted and coded one by one in the
/// recording's form. One thread.
class LoopCamera final {
public:
    LoopCamera(const LoopKey& key, std::shared_ptr<const Picture> backdrop);
    LoopCamera(const LoopCamera&) = delete;
    LoopCamera& operator=(const LoopCamera&) = delete;

    /// Makes the picture of a frame of the loop, as the only one of the group that is returned; the first one and one
    /// a second after it are key frames. Null when the encoder fails.
    const Gop* shoot(int frame, const View& view);
    /// The frame made last is a key frame.
    bool isKeyFrame() const { return count_ % loopGopLength == 1; }

private:
    LoopPainter painter_;
    LoopEncoder encoder_;
    Picture picture_;
    Gop gop_;
    int count_ = 0;
};

} // namespace ipncsdk::media
