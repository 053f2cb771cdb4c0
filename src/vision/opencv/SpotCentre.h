#pragma once

#include <opencv2/core/mat.hpp>

namespace corvanta::vision::opencv {

/// The centre of a spot of light to a fraction of a pixel; the upper-left pixel covers 0 to 1 in both directions.
/// `near` is a first guess within the spot, `diameter` is where it is half as bright as at its peak (px).
///
/// Looked for is the place where a bell of the spot's own width fits best: for a spot of that shape the most exact
/// there is, and blind to a core that is cut off at white, for what is cut is the same on all sides. What is round
/// the spot is taken away before as a plane, since a slope of light would pull the centre.
///
/// `reference` is empty or of the size of `light`; it is subtracted.
cv::Point2d spotCentre(const cv::Mat1b& light, const cv::Mat1b& reference, const cv::Point2d& near, double diameter);

} // namespace corvanta::vision::opencv
