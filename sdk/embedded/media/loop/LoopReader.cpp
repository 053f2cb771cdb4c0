#include "media/loop/LoopReader.h"

#include "media/loop/LoopVoice.h"

#include <functional>
#include <utility>

namespace ipncsdk::media {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr microseconds framePeriod{1'000'000 / loopFrameRate};
/// Someone later than this (a suspended machine, a group that was not made in time) goes on from now.
constexpr milliseconds patience{500};

/// The sound beside the picture of a number, while somebody listens or talks.
void speak(ReaderHost& host, LoopVoice& voice, int frame) {
    const bool wanted = host.soundWanted();
    if (!wanted && !voice.isTalkedTo()) {
        return;
    }
    const SoundBlock sound = voice.next(frame);
    if (voice.hasLostTalk()) {
        host.log("talk comes faster than it can be played; the oldest is left out");
    }
    if (wanted) {
        host.sound(sound);
    }
}

} // namespace

LoopReader::LoopReader(LoopLibrary& library, LoopKey key, std::shared_ptr<const TalkLine> line)
    : library_(library)
    , key_(std::move(key))
    , line_(std::move(line)) {}

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
    host.opened({key_.width(), key_.height(), loopFrameRate, "LOOP", true, true});
    LoopVoice voice(key_.source.scene, line_);
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
            speak(host, voice, static_cast<int>(number) * loopGopLength + static_cast<int>(index));
            offset += gop->sizes[index];
            due += framePeriod + std::exchange(spread, microseconds(0));
            time += framePeriod;
        }
    }
}

} // namespace ipncsdk::media
