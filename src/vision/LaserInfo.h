#pragma once

#include "vision/LaserScale.h"
#include "vision/LaserSpot.h"

#include <QList>
#include <QVariantMap>
#include <QVector>

#include <limits>
#include <optional>

namespace corvanta::vision {

/// An input that a measurement is reported as.
struct LaserInput {
    enum class Axis { X, Y };

    QVariant pid;   ///< of the input, as the device's record has it
    QVariant ifpid; ///< of its board
    QString ifname; ///< of its board
    Axis axis = Axis::X;
    bool isUpload = true;
    QVariantMap rest; ///< keys that this program does not know

    /// "laser_x" or "laser_y".
    QString typeText() const;
    /// Nothing for an input of another type.
    static std::optional<LaserInput> fromMap(const QVariantMap& map);
    QVariantMap toMap() const;
};

/// How a laser spot is measured, as the device's record keeps it in "Laserinfo" / "info". A value. Numbers are texts
/// there; one that is missing or none is NaN here, and `validate` tells of it. Unknown keys are kept in `rest`.
struct LaserInfo {
    enum class Mode { Scale, Points };
    static constexpr double NotSet = std::numeric_limits<double>::quiet_NaN();

    Mode mode = Mode::Scale; ///< "mode": "scale" or "points"
    double scale = NotSet;   ///< "scale": mm per px, used in mode `Scale`
    /// "points": {"px", "py", "x", "y"} each, used in mode `Points`; always four once they are set, else empty.
    QVector<ScalePoint> points;
    /// "colour": "any", "red", "green", "blue"; "threshold", "mindiameter", "maxdiameter", "roundness". Those that
    /// are missing are as in a new one.
    SpotSettings spot;
    /// "reference": the picture without the laser, as a path below the program's data folder; empty: none.
    QString reference;
    /// "inintDataList": {"laser_inint_x", "laser_inint_y"}: where the spot is at rest, mm.
    std::optional<QPointF> initial;
    QList<LaserInput> inputs; ///< "input"
    QVariantMap rest;

    static LaserInfo fromMap(const QVariantMap& map);
    QVariantMap toMap() const;

    /// Why it cannot measure, for the user; nothing when it can. The initial position is not asked for.
    std::optional<QString> measureProblem() const;
    /// Why it must not be saved: what cannot measure, or has no initial position; nothing when it may.
    std::optional<QString> validate() const;

    /// Nothing where `measureProblem` says why.
    std::optional<LaserScale> makeScale() const;

    /// The reference picture's file below `root`, the absolute data folder. Empty for none, and for a name that would
    /// lead out of it or can be no file's.
    QString referencePath(const QString& root) const;
};

} // namespace corvanta::vision
