#pragma once

#include "media/loop/Scene.h"

namespace ipncsdk::media {

/// A warehouse: boxes on a conveyor, a scanner gate, a fork lift in the aisle.
class WarehouseScene final : public Scene {
public:
    void paintBackground(Canvas& canvas) const override;
    void paintFrame(Canvas& canvas, float time) const override;
};

} // namespace ipncsdk::media
