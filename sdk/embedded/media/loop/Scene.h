#pragma once

#include "media/loop/Canvas.h"

#include <memory>

namespace ipncsdk::media {

/// A moving scene, drawn anew for each frame. Its motion closes after one loop: the picture of `time` 1 would be
/// that of `time` 0. Objects hold no state that drawing changes, so one scene may serve many threads.
class Scene {
public:
    virtual ~Scene() = default;
    /// Everything that stands still; drawn once and then copied under every frame.
    virtual void paintBackground(Canvas& canvas) const = 0;
    /// What moves. `time` runs from 0 to just below 1 over the loop.
    virtual void paintFrame(Canvas& canvas, float time) const = 0;
};

/// How many scenes there are.
int sceneCount();

/// The scene of a number, taken modulo the number of scenes (negative ones too).
const Scene& sceneOf(int number);

} // namespace ipncsdk::media
