#include "media/loop/LoopCamera.h"

#include <utility>

namespace ipncsdk::media {

LoopCamera::LoopCamera(const LoopKey& key, std::shared_ptr<const Picture> backdrop)
    : painter_(key, std::move(backdrop))
    , encoder_(key.width(), key.height()) {}

const Gop* LoopCamera::shoot(int frame, const View& view) {
    if (!encoder_.ready()) {
        return nullptr;
    }
    gop_.bytes.clear();
    gop_.sizes.clear();
    painter_.paint(frame, picture_, view);
    count_ = count_ % loopGopLength + 1;
    return encoder_.encode(picture_, gop_) ? &gop_ : nullptr;
}

} // namespace ipncsdk::media
