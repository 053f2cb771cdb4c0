#pragma once

#include "vision/QrPose.h"

#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

namespace corvanta::vision {

struct Calibration;

/// What is set up of a camera that measures a code, while it is edited. A value.
///
/// An initial position counts for the camera and the width that it was measured with: with others it stands for
/// another place. It counts again when those are as they were.
class QrDraft final {
public:
    /// From the object that a device's record keeps; what this program does not know is kept.
    static QrDraft fromInfo(const QVariantMap& info);

    const QrSetup& setup() const { return setup_; }
    void setWidth(const QString& text) { setup_.codeWidth = text.trimmed(); }
    void setCalibration(const Calibration& calibration);
    bool isCalibrated() const;

    /// x, y and z as texts; empty when there is none that counts.
    QStringList initial() const;
    /// There is one, though it does not count.
    bool hasOldInitial() const { return !initial_.isEmpty() && initial().isEmpty(); }
    void setInitial(const QStringList& position, const QrSetup& measuredWith);

    /// Why nothing can be measured, for the user; nothing when it can.
    std::optional<QString> measureProblem() const;
    /// Why it must not be saved; nothing when it may.
    std::optional<QString> saveProblem() const;

    /// The object for the device's record; call it where `saveProblem` says nothing.
    QVariantMap toInfo(const QVariantList& inputs) const;

private:
    bool isWidthRight() const;

    QrSetup setup_;
    QStringList initial_;
    QrSetup initialSetup_; ///< what `initial_` was measured with
    QVariantMap rest_;
};

} // namespace corvanta::vision
