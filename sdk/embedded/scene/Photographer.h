#pragma once

#include "scene/Lens.h"
#include "scene/Print.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ipncsdk::scene {

/// What a real camera adds to a picture. All zero is a perfect one.
struct Flaws {
    double blur = 0;        ///< of a lens out of focus: sigma of a Gaussian, pixels
    cv::Point2d motion;     ///< how far everything moves while the picture is taken, pixels
    double noise = 0;       ///< of the sensor: sigma of a Gaussian, grey levels
    double gradient = 0;    ///< 0 to 1: how much darker the right edge is than the left one
    double vignetting = 0;  ///< 0 to 1: how much darker the corners are than the middle
    double contrast = 1;    ///< 0 to 1: round a middle grey
    double brightness = 0;  ///< grey levels more
    std::uint64_t seed = 1; ///< equal seeds give equal noise
};

/// Brings the flaws into a picture of bytes with any number of channels: light and contrast, blur, motion, noise.
void spoil(cv::Mat& picture, const Flaws& flaws);

/// How bright each pixel is lit, 0 to 1; `CV_32F`.
cv::Mat1f lightOf(const cv::Size& size, const Flaws& flaws);

/// A laser's spot on a plate: a core that is brighter than the sensor can tell, and a halo of its colour round it.
struct Spot {
    cv::Point2d at;                       ///< millimetres on the plate
    double radius = 1.6;                  ///< sigma of the core, millimetres
    double power = 2000;                  ///< grey levels in the middle, had the sensor no end
    cv::Vec3d colour = {0.13, 0.10, 1.0}; ///< share of the power in blue, green and red
};

/// Takes pictures of flat targets through a lens. Each pixel is the mean of several samples of the print, so edges
/// are as soft as a sensor's. Immutable; threads may share one.
class Photographer final {
public:
    /// `samples`: how many in each pixel that sees more than one colour.
    explicit Photographer(const Lens& lens, int samples = 64);

    [[nodiscard]] const Lens& lens() const { return lens_; }

    /// The part of a picture that a print covers; where it only touches a pixel, `coverage` says by how much. The
    /// area is empty when the print is not seen.
    struct Patch {
        cv::Rect area;
        cv::Mat1b grey;
        cv::Mat1b coverage; ///< 0 to 255
    };
    [[nodiscard]] Patch patch(const Print& print, const Pose& pose) const;

    /// A whole picture of a print in front of a wall of one grey level.
    [[nodiscard]] cv::Mat1b photograph(const Print& print, const Pose& pose, const Flaws& flaws = {},
                                       int wall = 120) const;

    /// Adds the light of a spot on a plate to a picture (blue, green, red; of the lens' size) and returns where.
    cv::Rect shine(cv::Mat3b& picture, const Pose& plate, const Spot& spot) const;

private:
    /// From directions to places on a print.
    struct Tracer {
        cv::Matx33f plane;
        float scale = 1;
        cv::Point2f origin;
    };
    struct Sample {
        uchar grey = 0;
        uchar coverage = 0;
    };
    void traceRow(const Tracer& tracer, int row, const cv::Rect& area, std::vector<cv::Point2f>& places) const;
    [[nodiscard]] Sample sampleOf(const cv::Mat1b& print, const std::array<cv::Point2f, 4>& corners) const;
    void enterRow(float y, std::vector<cv::Point2f>& columns) const;
    static cv::Point2f directionAt(const std::vector<cv::Point2f>& columns, float x);
    /// The pixels round places of the plane.
    [[nodiscard]] cv::Rect boundsOf(const std::vector<cv::Point2d>& outline, const Pose& pose) const;

    const Lens lens_;
    const std::vector<cv::Point2f> samples_; ///< places in a pixel, 0 to 1
    cv::Mat_<cv::Point2f> directions_;       ///< of every eighth pixel, from 8 pixels left of and above the picture
};

} // namespace ipncsdk::scene
