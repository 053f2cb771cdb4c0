#pragma once

#include "media/loop/Scene.h"

namespace ipncsdk::media {

/// A car park seen from above: a barrier lets a car in and another one out.
class CarParkScene final : public Scene {
public:
    void paintBackground(Canvas& canvas) const override;
    void paintFrame(Canvas& canvas, float time) const override;
};

} // namespace ipncsdk::media
