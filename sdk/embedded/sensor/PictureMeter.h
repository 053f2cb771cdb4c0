#pragma once

#include "media/Picture.h"
#include "sensor/Board.h"

#include <opencv2/core.hpp>

#include <optional>

namespace ipncsdk::sensor {

/// Measures a part of pictures that come one after another.
class PictureMeter final {
public:
    /// Takes the parameters of an input: "measure" and the part as fractions of the picture.
    explicit PictureMeter(const Json& params);

    /// Brightness: the mean of the luma, in percent. Motion: the share of points, in percent, that differ from the
    /// picture measured before by more than noise does; nothing for the first one.
    std::optional<double> measure(const media::Picture& picture);

private:
    const bool motion_;
    const cv::Rect2d part_; ///< fractions
    cv::Mat before_;        ///< the last picture's part, small and smoothed
};

} // namespace ipncsdk::sensor
