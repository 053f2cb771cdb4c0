#include "media/loop/LoopReader.h"

#include <functional>
#include <utility>

namespace ipncsdk::media {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr microseconds framePeriod{1'000'000 / loopFrameRate};
/// Someone later than this (a suspended machine, a group that was not made in time) goes on from now.
constexpr milliseconds patience{500};

} // namespace

LoopReader::LoopReader(LoopLibrary& library, LoopKey key)
    : library_(library)
    , key_(std::move(key)) {}

std::shared_ptr<const Gop> LoopReader::await(ReaderHost& host, const Loop& loop, std::size_t number) const {
    std::shared_ptr<const Gop> gop;
    while (host.running() && gop == nullptr && !loop.failed()) {
        gop = loop.gop(number, milliseconds(50));
    }
    return gop;
}

StreamError LoopReader::run(ReaderHost& host) {
    host.stage(OpenStage::Information);
    const std::shared_ptr<Loop> loop = library_.acquire(key_);
    host.stage(OpenStage::Loading);
    std::shared_ptr<const Gop> gop = await(host, *loop, 0);
    if (gop == nullptr) {
        return loop->failed() ? StreamError::Internal : StreamError::None;
    }
    host.opened({key_.width(), key_.height(), loopFrameRate, "LOOP"});
    // Cameras that start together are spread over one frame's time, so that they do not all work at once. The first
    // picture is awaited by somebody and comes without that.
    auto spread = microseconds(std::hash<std::string>{}(key_.text()) % framePeriod.count());
    Clock::time_point due = Clock::now();
    microseconds time{0};
    for (std::size_t number = 0;; number = (number + 1) % Loop::gopCount) {
        gop = await(host, *loop, number);
        if (gop == nullptr) {
            return loop->failed() ? StreamError::Internal : StreamError::None;
        }
        std::size_t offset = 0;
        for (std::size_t index = 0; index < gop->sizes.size(); ++index) {
            const auto now = Clock::now();
            due = now - due > patience ? now : due;
            if (!host.waitUntil(due)) {
                return StreamError::None;
            }
            host.frame({gop->bytes.data() + offset, gop->sizes[index], index == 0, time});
            offset += gop->sizes[index];
            due += framePeriod + std::exchange(spread, microseconds(0));
            time += framePeriod;
        }
    }
}

} // namespace ipncsdk::media
