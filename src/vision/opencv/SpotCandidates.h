#pragma once

#include <opencv2/core/mat.hpp>

#include <vector>

namespace corvanta::vision::opencv {

/// Something bright that may be a spot. Positions and diameters are in px; the upper-left pixel covers 0 to 1.
struct SpotCandidate {
    cv::Rect box;         ///< in the picture; of what is at least half as bright as the peak
    cv::Point2d middle;   ///< of the light there
    double diameter = 0;  ///< of the circle of the same area, without what `StandingOut::blur` adds
    double roundness = 0; ///< shorter axis / longer axis, less where there are holes and notches
    double peak = 0;      ///< grey levels, likewise
    double mass = 0;      ///< the light there, grey levels * px
    bool isCut = false;   ///< touches the picture's border
};

/// How far each pixel stands out from what is round it.
struct StandingOut {
    cv::Mat1b levels;
    double blur = 0; ///< px, standard deviation of the blur that was put over it against noise

    /// Of light without (`reference` not empty) the light that is there anyway, and without everything wider than
    /// `largest`; `smallest`, `largest`: diameters of spots in px.
    static StandingOut of(const cv::Mat1b& light, const cv::Mat1b& reference, double smallest, double largest);
};

/// What stands out by about `threshold` or more and is no foot of something twice as bright, the brightest first.
/// Where there is very much, no more than the brightest.
std::vector<SpotCandidate> findCandidates(const StandingOut& picture, double threshold);

} // namespace corvanta::vision::opencv
