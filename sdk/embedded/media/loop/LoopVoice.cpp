#include "media/loop/LoopVoice.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ipncsdk::media {

namespace {

constexpr float lowestPitch = 330; ///< Hz
constexpr int pitches = 24;        ///< semitones upwards
constexpr float level = 0.1F;      ///< of full scale
/// A pattern has 16 steps of an eighth of a second: four of them make a loop.
constexpr int stepSamples = LoopVoice::rate / 8;
constexpr int noteSamples = stepSamples * 9 / 10;
/// Tones swell and fade over 10 ms, which no ear takes for a click.
constexpr int rampSamples = LoopVoice::rate / 100;
constexpr std::array<unsigned, 10> rhythms{0x1111, 0x0101, 0x5511, 0x0505, 0x9249,
                                           0x0077, 0x1357, 0x4141, 0x0303, 0x3B1D};
constexpr auto rhythmCount = static_cast<int>(rhythms.size());
static_assert(loopLength * LoopVoice::rate / loopFrameRate % (16 * stepSamples) == 0);
static_assert(pitches * rhythmCount == LoopVoice::patterns);
static_assert(LoopVoice::rate % loopFrameRate == 0);

/// How loud a note is at a sample of its step, 0 to 1.
float envelope(int sample) {
    const int edge = std::min(sample, noteSamples - sample);
    if (edge <= 0) {
        return 0;
    }
    const float part = std::min(1.0F, static_cast<float>(edge) / static_cast<float>(rampSamples));
    return 0.5F - 0.5F * std::cos(std::numbers::pi_v<float> * part);
}

} // namespace

LoopVoice::LoopVoice(int number, std::shared_ptr<const TalkLine> line)
    : talk_(std::move(line)) {
    const int own = (number % patterns + patterns) % patterns;
    // Neighbours are a fifth apart; those of one pitch have rhythms that differ.
    pitch_ = lowestPitch * std::exp2(static_cast<float>(own * 7 % pitches) / 12) / static_cast<float>(rate);
    rhythm_ = rhythms[static_cast<std::size_t>((own % pitches + own / pitches) % rhythmCount)];
}

SoundBlock LoopVoice::next(int frame) {
    // Whoever begins to listen in the middle of a tone hears it swell.
    const float before = frame == nextFrame_ ? gain_ : 0.0F;
    gain_ = isTalkedTo() ? 0.0F : 1.0F;
    nextFrame_ = (frame + 1) % loopLength;
    samples_.fill(0);
    addTones(frame, before, gain_);
    addTalk();
    return {samples_.data(), samples_.size(), rate, 1};
}

/// Adds the tones, whose loudness goes from one gain to the other.
void LoopVoice::addTones(int frame, float gain, float nextGain) {
    if (gain == 0 && nextGain == 0) {
        return;
    }
    const int first = frame * static_cast<int>(frameSamples);
    for (std::size_t index = 0; index < frameSamples; ++index) {
        const int sample = first + static_cast<int>(index);
        const int step = sample / stepSamples % 16;
        if ((rhythm_ >> step & 1U) == 0) {
            continue;
        }
        const int inStep = sample % stepSamples;
        // Each fourth step is a fourth higher.
        const float pitch = step % 4 == 3 ? pitch_ * 4 / 3 : pitch_;
        const float now = gain + (nextGain - gain) * static_cast<float>(index) / static_cast<float>(frameSamples);
        const float turn = 2 * std::numbers::pi_v<float> * pitch * static_cast<float>(inStep);
        samples_[index] = static_cast<std::int16_t>(32767 * level * now * envelope(inStep) * std::sin(turn));
    }
}

void LoopVoice::addTalk() {
    std::array<std::int16_t, frameSamples> said{};
    const std::size_t count = talk_.take(said);
    for (std::size_t index = 0; index < count; ++index) {
        samples_[index] = static_cast<std::int16_t>(std::clamp(samples_[index] + said[index], -32768, 32767));
    }
}

} // namespace ipncsdk::media
