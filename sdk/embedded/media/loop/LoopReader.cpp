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

LoopReader::LoopReader(LoopLibrary& library, LoopKey key, std::shared_ptr<const TalkLine> line,
                       std::shared_ptr<const LoopControl> control)
    : library_(library)
    , key_(std::move(key))
    , line_(std::move(line))
    , control_(std::move(control)) {}

std::shared_ptr<const Gop> LoopReader::await(ReaderHost& host, const Loop& loop, std::size_t number) const {
    std::shared_ptr<const Gop> gop;
    while (host.running() && gop == nullptr && !loop.failed()) {
        gop = loop.gop(number, milliseconds(50));
    }
    return gop;
}

StreamError LoopReader::run(ReaderHost& host) {
    host.stage(OpenStage::Information);
    key_.exhibit = state().exhibit;
    loop_ = library_.acquire(key_);
    LoopVoice voice(key_.source.scene, line_);
    // Cameras that start together are spread over one frame's time, so that they do not all work at once. The first
    // picture is awaited by somebody and comes without that.
    spread_ = microseconds(std::hash<std::string>{}(key_.text()) % framePeriod.count());
    End end = End::Lost;
    while (end == End::Lost && waitUntilReachable(host)) {
        host.stage(OpenStage::Loading);
        end = serve(host, voice);
    }
    return end == End::Failed ? StreamError::Internal : StreamError::None;
}

bool LoopReader::waitUntilReachable(ReaderHost& host) const {
    if (!state().reachable) {
        host.stage(OpenStage::Connecting);
    }
    while (host.running()) {
        if (state().reachable) {
            return true;
        }
        host.waitUntil(Clock::now() + milliseconds(50));
    }
    return false;
}

LoopReader::End LoopReader::serve(ReaderHost& host, LoopVoice& voice) {
    bool opened = false;
    due_ = Clock::now();
    camera_.reset();
    for (std::size_t number = 0;; number = (number + 1) % key_.gopCount()) {
        // Another exhibit has a recording of its own, which can be begun at a key frame.
        if (const int exhibit = state().exhibit; exhibit != key_.exhibit) {
            key_.exhibit = exhibit;
            loop_ = library_.acquire(key_);
            camera_.reset();
            number = 0;
        }
        const std::shared_ptr<const Gop> gop = await(host, *loop_, number);
        if (gop == nullptr) {
            return loop_->failed() ? End::Failed : End::Host;
        }
        if (!std::exchange(opened, true)) {
            host.opened({key_.width(), key_.height(), loopFrameRate, "LOOP", true, true});
            due_ = Clock::now();
        }
        const End end = serveGroup(host, *gop, static_cast<int>(number) * loopGopLength, voice);
        if (end != End::Host || !host.running()) {
            return end;
        }
    }
}

LoopReader::End LoopReader::serveGroup(ReaderHost& host, const Gop& gop, int firstFrame, LoopVoice& voice) {
    std::size_t offset = 0;
    for (std::size_t index = 0; index < gop.sizes.size(); ++index) {
        const auto now = Clock::now();
        due_ = now - due_ > patience ? now : due_;
        if (!host.waitUntil(due_)) {
            return End::Host;
        }
        const LoopControl::State current = state();
        if (!current.reachable) {
            return End::Lost;
        }
        const int frame = firstFrame + static_cast<int>(index);
        if (!show(host, {gop.bytes.data() + offset, gop.sizes[index], index == 0, time_}, frame, current.view)) {
            return End::Failed;
        }
        speak(host, voice, frame % loopLength);
        offset += gop.sizes[index];
        due_ += framePeriod + std::exchange(spread_, microseconds(0));
        time_ += framePeriod;
    }
    return End::Host;
}

bool LoopReader::show(ReaderHost& host, const CodedFrame& recorded, int frame, const View& view) {
    // The recording can be gone back to at its key frames only; until then the home view is painted.
    if (view.isHome() && (camera_ == nullptr || recorded.keyFrame)) {
        camera_.reset();
        host.frame(recorded);
        return true;
    }
    if (camera_ == nullptr) {
        camera_ =
            std::make_unique<LoopCamera>(key_, library_.backdrop(key_.source.scene, key_.width(), key_.height()));
    }
    const Gop* const shot = camera_->shoot(frame, view);
    if (shot == nullptr) {
        return false;
    }
    host.frame({shot->bytes.data(), shot->bytes.size(), camera_->isKeyFrame(), recorded.time});
    return true;
}

} // namespace ipncsdk::media
