#pragma once

#include "media/Stream.h"
#include "media/loop/LoopFormat.h"
#include "media/sound/TalkPlayer.h"

#include <array>
#include <cstdint>
#include <memory>

namespace ipncsdk::media {

/// The sound of one recorded camera: a pattern of tones of its own, computed from its number, and in its place what
/// somebody says to the camera, as if the camera's loudspeaker stood beside its microphone. Used on one thread.
class LoopVoice final {
public:
    static constexpr int rate = Talk::rate; ///< samples a second
    static constexpr std::size_t frameSamples =
        static_cast<std::size_t>(rate / loopFrameRate); ///< one picture's time

    /// `number` is any number; those below `patterns` have patterns that all differ.
    LoopVoice(int number, std::shared_ptr<const TalkLine> line);
    LoopVoice(const LoopVoice&) = delete;
    LoopVoice& operator=(const LoopVoice&) = delete;

    static constexpr int patterns = 240;

    /// The sound beside a picture, by the picture's number in the loop: one channel, valid until the next call. To be
    /// asked for every picture while somebody talks (`isTalkedTo`), or else talk piles up.
    SoundBlock next(int frame);
    bool isTalkedTo() { return talk_.isTalkedTo(); }
    /// True once for each talk of which something was lost, because it came faster than it could be played.
    bool hasLostTalk() { return talk_.hasLost(); }

private:
    void addTones(int frame, float gain, float nextGain);
    void addTalk();

    TalkPlayer talk_;
    float pitch_ = 0;     ///< of the lower tone, in turns a sample
    unsigned rhythm_ = 0; ///< bit n: a tone sounds in the n-th step of the pattern
    float gain_ = 0;      ///< of the tones, at the end of the last block
    int nextFrame_ = -1;  ///< that follows on the last block
    std::array<std::int16_t, frameSamples> samples_{};
};

} // namespace ipncsdk::media
