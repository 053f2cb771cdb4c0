#pragma once

#include "scene/Photographer.h"

#include <optional>

namespace ipncsdk::scene {

/// The pictures of a camera that measures, in colour, with the light and grain of a workshop. One thread.
class MeasuringScene final {
public:
    enum class Kind { Code, Laser };
    /// What the camera is shown: what it measures, or what it is set up with (a chessboard; the plate without the
    /// laser).
    enum class Exhibit { Usual, Setup };

    /// The part of the camera's picture that is shown.
    struct Cutout {
        cv::Point2d corner;       ///< left top, as a share of the picture's width and height
        double magnification = 1; ///< how much larger than the whole it is shown
    };

    /// Shows the whole picture.
    MeasuringScene(Kind kind, Exhibit exhibit, const cv::Size& size);

    /// Shows another part from now on.
    void aim(const Cutout& cutout);

    /// Seconds after which everything is as it was.
    static int periodOf(Kind kind, Exhibit exhibit);

    /// What stands still.
    [[nodiscard]] const cv::Mat3b& backdrop() const { return backdrop_; }
    /// True when nothing moves between two times.
    [[nodiscard]] bool isSameAt(double seconds, double other) const;
    /// Paints what moves onto a copy of the backdrop and returns where; even numbers of pixels, from an even one on.
    cv::Rect paint(double seconds, cv::Mat3b& picture) const;

private:
    void paintWall(const Cutout& cutout);
    /// The grey of a print in the light of the place.
    cv::Rect lay(const Print& print, const Pose& pose, cv::Mat3b& picture) const;

    const Kind kind_;
    const Exhibit exhibit_;
    const cv::Size size_;
    std::optional<Photographer> photographer_; ///< always there
    Print print_;                              ///< what moves
    cv::Mat1f light_;
    cv::Mat1f grain_; ///< grey levels more
    cv::Mat3b backdrop_;
};

} // namespace ipncsdk::scene
