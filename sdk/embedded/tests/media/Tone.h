#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

namespace ipncsdk::media {

/// How much of the energy of `samples` (one channel, `rate` a second) lies at one frequency: 1 for a pure tone of it,
/// about 0 for silence and for anything else.
inline double shareOf(double frequency, std::span<const std::int16_t> samples, int rate) {
    double cosine = 0;
    double sine = 0;
    double energy = 0;
    double turn = 0;
    for (const std::int16_t sample : samples) {
        cosine += sample * std::cos(turn);
        sine += sample * std::sin(turn);
        energy += static_cast<double>(sample) * sample;
        turn += 2 * std::numbers::pi * frequency / rate;
    }
    return energy == 0 ? 0 : 2 * (cosine * cosine + sine * sine) / (energy * static_cast<double>(samples.size()));
}

/// One channel of interleaved samples.
inline std::vector<std::int16_t> channelOf(std::span<const std::int16_t> samples, int channels, int channel) {
    std::vector<std::int16_t> one;
    for (auto index = static_cast<std::size_t>(channel); index < samples.size();
         index += static_cast<std::size_t>(channels)) {
        one.push_back(samples[index]);
    }
    return one;
}

/// A tone of half the full scale.
inline std::vector<std::int16_t> tone(double frequency, int rate, std::size_t frames, int channels = 1) {
    std::vector<std::int16_t> samples;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double turn = 2 * std::numbers::pi * frequency * static_cast<double>(frame) / rate;
        const auto sample = static_cast<std::int16_t>(16384 * std::sin(turn));
        samples.insert(samples.end(), static_cast<std::size_t>(channels), sample);
    }
    return samples;
}

} // namespace ipncsdk::media
