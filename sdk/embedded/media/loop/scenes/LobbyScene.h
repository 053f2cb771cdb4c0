#pragma once

#include "media/loop/Scene.h"

namespace ipncsdk::media {

/// A lobby: people walking to and fro past glass doors and a lift.
class LobbyScene final : public Scene {
public:
    void paintBackground(Canvas& canvas) const override;
    void paintFrame(Canvas& canvas, float time) const override;
};

} // namespace ipncsdk::media
