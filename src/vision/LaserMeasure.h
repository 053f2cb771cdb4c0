#pragma once

#include "vision/LaserInfo.h"

#include <QImage>
#include <QStringList>
#include <QVariantList>

#include <functional>
#include <optional>

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

/// What is done with a picture; false: no more are wanted. May be called by several threads at a time.
using PictureTask = std::function<bool(const QImage& picture)>;
/// Hands every picture of a file (one of a picture file, all frames of a video) to a task and returns when all are
/// done. False where the file cannot be read.
using PictureReader = std::function<bool(const QString& path, const PictureTask& task)>;

/// Measures spots with one setup. A value; any number of threads.
class LaserMeter final {
public:
    /// `reference` may be null. Nothing where `LaserInfo::measureProblem` says why.
    static std::optional<LaserMeter> make(const LaserInfo& info, const QImage& reference);

    struct Measurement {
        std::optional<LaserPosition> position;
        Spot spot;                               ///< where `position` is
        SpotProblem problem = SpotProblem::None; ///< why not; `None` also for a spot beyond the plate's horizon
    };

    Measurement measure(const QImage& picture) const;

    /// The position that a file shows: the trimmed mean of all its pictures that show one (x and y apart; of more
    /// than two values without the lowest and the highest). Nothing where none does, where the file cannot be read,
    /// or once `interrupted`, which is asked between pictures by all threads, says so.
    std::optional<LaserPosition> measureFile(const QString& path, const PictureReader& reader,
                                             const std::function<bool()>& interrupted = {}) const;

private:
    LaserMeter(const SpotSettings& spot, const LaserScale& scale, const QImage& reference);

    SpotSettings spot_;
    LaserScale scale_;
    QImage reference_;
};

/// The inputs' values that a measurement gives, for "uploadinputs": "pid", "ifpid", "ifname", "type" and "data", the
/// way from the initial position to `position` in single precision with six significant digits. Inputs that are not
/// to be uploaded are left out. Empty without an initial position.
QVariantList laserUpload(const LaserInfo& info, const LaserPosition& position);

} // namespace corvanta::vision
