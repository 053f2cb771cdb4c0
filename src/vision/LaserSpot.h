#pragma once

#include <QImage>
#include <QPointF>
#include <QString>

#include <optional>

namespace corvanta::vision {

/// Which light a spot is looked for in.
enum class SpotColour { Any, Red, Green, Blue };

/// What counts as the spot of a laser. A value.
struct SpotSettings {
    SpotColour colour = SpotColour::Any;
    /// Grey levels, 1 to 255: the least by which the spot's brightest part stands out from what is round it, in the
    /// light that `colour` names.
    double threshold = 40;
    double smallestDiameter = 3; ///< px, 1 or more; of where the spot is at least half as bright as at its peak
    double largestDiameter = 150;
    double roundness = 0.4; ///< 0 to 1: the least of the spot's shorter axis divided by its longer one

    static constexpr double GreatestDiameter = 2000; ///< px
};

/// A spot that was found. Positions are those in which pictures are painted: the upper-left pixel covers 0 to 1 in
/// both directions, its middle is (0.5, 0.5).
struct Spot {
    QPointF centre;       ///< px; x to the right, y downwards
    double diameter = 0;  ///< px, see `SpotSettings`
    double roundness = 0; ///< 1: a circle
    double contrast = 0;  ///< grey levels, how far its peak stands out
};

/// Why no spot was found. Of several reasons the one that holds for the candidate that came furthest.
enum class SpotProblem {
    None,
    NoPicture,        ///< null, smaller than 3 x 3 px or larger than 64 million px
    ReferenceDiffers, ///< the reference picture is of another size
    NothingBright,    ///< nothing stands out by the threshold
    WrongColour,
    TooSmall,
    TooLarge,
    NotRound,
    CutByBorder, ///< it touches the border, so its centre cannot be told
    Several,     ///< two or more that are about equally good
    NoBackend    ///< nothing that looks at pictures is installed
};

/// For the user; empty for `None`.
QString problemText(SpotProblem problem);

struct SpotSearch {
    std::optional<Spot> spot;
    SpotProblem problem = SpotProblem::None; ///< `None` when there is a spot
};

/// Looks for the one spot of a laser in a picture of any format. `reference` is a picture of the same scene and size
/// without the laser: what is as bright in it is no spot. It may be null. Spots much weaker than the best one count
/// as its reflections. Any thread; never throws.
SpotSearch findSpot(const QImage& picture, const QImage& reference, const SpotSettings& settings);

} // namespace corvanta::vision
