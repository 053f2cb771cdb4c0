#pragma once

#include "vision/LaserInfo.h"

#include <QImage>
#include <QStringList>
#include <QVariantList>

#include <optional>
#include <vector>

namespace corvanta::vision {

/// Where a spot is on the plate; mm.
struct LaserPosition {
    float x = 0;
    float y = 0;

    /// x and y, each with six significant digits.
    QStringList texts() const;
    /// From such texts; nothing for others.
    static std::optional<LaserPosition> fromTexts(const QStringList& texts);
};

/// Measures spots with one setup. A value; any number of threads.
class LaserMeter final {
public:
    struct Measurement {
        std::optional<LaserPosition> position;
        std::optional<Spot> spot;
        SpotProblem problem = SpotProblem::None; ///< why there is no spot
        bool isBeyond = false;                   ///< there is a spot, but beyond the plate's horizon

        /// Why there is no position, for the user; empty when there is one.
        QString problemText() const;
    };

    /// `reference` may be null. Nothing where `LaserInfo::measureProblem` says why.
    static std::optional<LaserMeter> make(const LaserInfo& info, const QImage& reference);

    Measurement measure(const QImage& picture) const;

private:
    LaserMeter(const SpotSettings& spot, const LaserScale& scale, const QImage& reference);

    SpotSettings spot_;
    LaserScale scale_;
    QImage reference_;
};

/// Of each axis the mean of all values, without the lowest and the highest where there are more than two. Nothing for
/// none.
std::optional<LaserPosition> trimmedMean(const std::vector<LaserPosition>& positions);

/// The inputs' values that a measurement (`LaserPosition::texts`) gives, for "uploadinputs": "pid", "ifpid",
/// "ifname", "type" and "data", the way from the initial position to the measured one in single precision with six
/// significant digits. Inputs that are not to be uploaded are left out. Empty without an initial position, and for
/// texts that are no position.
QVariantList laserUpload(const LaserInfo& info, const QStringList& position);

} // namespace corvanta::vision
