#pragma once

#include "media/Picture.h"
#include "media/loop/Canvas.h"
#include "media/loop/LoopFormat.h"
#include "scene/MeasuringScene.h"

#include <optional>

namespace ipncsdk::media {

/// What a camera that measures sees, as pictures of a loop. One thread.
class MeasuringPainter final {
public:
    /// The key is of a measuring scene.
    explicit MeasuringPainter(const LoopKey& key);

    /// Paints a frame of the loop. A window that differs from the one before costs its backdrop.
    void paint(int frame, const Window& window, Picture& picture);

    /// Frames of a loop of this scene.
    static int lengthOf(int scene, int exhibit);

private:
    void enter(const Window& window);
    /// Brings a part of a picture into the form of video; the part begins and ends at even pixels.
    static void convert(const cv::Mat3b& from, const cv::Rect& area, Picture& to);

    scene::MeasuringScene scene_;
    Window window_; ///< what the scene shows
    Picture backdrop_;
    Picture last_;                      ///< painted last
    std::optional<double> lastSeconds_; ///< when that was
    cv::Mat3b canvas_;
};

} // namespace ipncsdk::media
