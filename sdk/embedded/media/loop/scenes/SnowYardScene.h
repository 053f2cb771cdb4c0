#pragma once

#include "media/loop/Scene.h"

namespace ipncsdk::media {

/// A yard in snowfall: flakes in three depths, a flag, a person with a lantern.
class SnowYardScene final : public Scene {
public:
    void paintBackground(Canvas& canvas) const override;
    void paintFrame(Canvas& canvas, float time) const override;
};

} // namespace ipncsdk::media
