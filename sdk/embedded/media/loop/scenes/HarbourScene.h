#pragma once

#include "media/loop/Scene.h"

namespace ipncsdk::media {

/// A harbour in the morning: waves, a ship passing, a crane that turns its load.
class HarbourScene final : public Scene {
public:
    void paintBackground(Canvas& canvas) const override;
    void paintFrame(Canvas& canvas, float time) const override;
};

} // namespace ipncsdk::media
