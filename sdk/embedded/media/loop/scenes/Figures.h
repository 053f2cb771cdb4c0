#pragma once

#include "media/loop/Canvas.h"

#include <cmath>
#include <numbers>

namespace ipncsdk::media {

/// A sine that closes after a loop when `cycles` is whole; -1 to 1.
inline float swing(float time, float cycles, float offset = 0) {
    return std::sin(2 * std::numbers::pi_v<float> * (time * cycles + offset));
}

/// How far something has come that runs its way `laps` times a loop; 0 to below 1.
inline float travel(float time, float laps, float offset = 0) {
    const float way = time * laps + offset;
    return way - std::floor(way);
}

/// 0 below `from`, 1 above `to`, a smooth way between.
inline float ease(float value, float from, float to) {
    const float part = std::fmin(1.0F, std::fmax(0.0F, (value - from) / (to - from)));
    return part * part * (3 - 2 * part);
}

/// Repeatable pseudo-random number from 0 to below 1 for things that are strewn about.
float strewn(unsigned index, unsigned salt);

/// A person seen from the side. `feet` is the ground under the middle, `height` in scene units, `stride` the place
/// in the walking cycle (0 to 1), `direction` 1 for walking to the right and -1 to the left.
void paintWalker(Canvas& canvas, Point feet, float height, float stride, float direction, Colour coat, Colour legs);

/// A car seen from the side on the ground line `ground`, `length` long, driving to `direction` 1 or -1.
void paintCar(Canvas& canvas, float x, float ground, float length, float direction, Colour body, bool lights);

} // namespace ipncsdk::media
