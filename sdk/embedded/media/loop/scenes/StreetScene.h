#pragma once

#include "media/loop/Scene.h"

namespace ipncsdk::media {

/// A street at dusk: cars with headlights and tail lights, lamps, lit windows.
class StreetScene final : public Scene {
public:
    void paintBackground(Canvas& canvas) const override;
    void paintFrame(Canvas& canvas, float time) const override;
};

} // namespace ipncsdk::media
