#pragma once

#include "media/loop/Scene.h"

namespace ipncsdk::media {

/// A pump room: a water tank that rises and falls, gauges, a turning pump, status lights.
class PumpRoomScene final : public Scene {
public:
    void paintBackground(Canvas& canvas) const override;
    void paintFrame(Canvas& canvas, float time) const override;
};

} // namespace ipncsdk::media
