#pragma once

#include "vision/LaserInfo.h"
#include "vision/LaserMeasure.h"

#include <QImage>
#include <QVariantMap>

#include <optional>

namespace corvanta::vision {

/// What is set up of a camera that measures a laser spot, while it is edited. A value.
///
/// An initial position counts for the scale that it was measured with, see `QrDraft`.
class LaserDraft final {
public:
    static LaserDraft fromInfo(const QVariantMap& info);

    /// Its initial position is not looked at.
    const LaserInfo& info() const { return info_; }
    /// Takes over what is measured with; initial position, inputs, reference and unknown keys stay.
    void setMeasuring(const LaserInfo& entered);

    const QImage& reference() const { return reference_; }
    /// A null picture for none. Whoever saves writes the file, and names it by `setReferenceName`.
    void setReference(const QImage& picture) { reference_ = picture; }
    void setReferenceName(const QString& name) { info_.reference = name; }

    std::optional<LaserPosition> initial() const;
    bool hasOldInitial() const { return initial_ && !initial(); }
    void setInitial(const LaserPosition& position);

    std::optional<QString> saveProblem() const;
    QVariantMap toInfo(const QVariantList& inputs) const;

private:
    /// `info_` with the initial position that counts.
    LaserInfo complete() const;

    LaserInfo info_;
    QImage reference_;
    std::optional<LaserPosition> initial_;
    QVariantMap initialScale_; ///< see `scaleOf`
};

} // namespace corvanta::vision
