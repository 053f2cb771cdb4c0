#pragma once

#include "media/loop/LoopFormat.h"
#include "media/loop/Scene.h"
#include "media/loop/TextPainter.h"
#include "media/loop/View.h"

#include <array>
#include <memory>

namespace ipncsdk::media {

class MeasuringPainter;

/// Paints the pictures of one loop: the scene, the camera's title, and a clock with the time within the loop.
/// One object belongs to one thread.
class LoopPainter final {
public:
    /// `background` is what `paintBackdrop` made for the same scene and size, the whole scene; null for a measuring
    /// one.
    LoopPainter(const LoopKey& key, std::shared_ptr<const Picture> background);
    ~LoopPainter();
    LoopPainter(const LoopPainter&) = delete;
    LoopPainter& operator=(const LoopPainter&) = delete;

    /// The still part of a scene.
    static Picture paintBackdrop(int scene, int width, int height, const Window& window = {});

    /// Paints frame `index` (0 to the key's length - 1) into `picture`, which gets the loop's size, as the camera
    /// sees it from `view`. Title and clock stay where they are. A view that differs from the one before costs its
    /// backdrop.
    void paint(int index, Picture& picture, const View& view = {});

private:
    void paintScene(int frame, Picture& picture, const Window& window);
    void paintClock(Canvas& canvas, int frame) const;
    void paintBar(Canvas& canvas, int frame) const;

    LoopKey key_;
    const Scene& scene_;
    std::unique_ptr<MeasuringPainter> measuring_; ///< null: `scene_` is painted
    std::shared_ptr<const Picture> background_;
    Window window_; ///< what `background_` shows
    Mask title_;
    std::array<Mask, 12> clockGlyphs_; ///< 0 to 9, ':' and '.'
    int clockCell_ = 0;                ///< pixels from one digit of the clock to the next
};

} // namespace ipncsdk::media
