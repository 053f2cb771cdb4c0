#pragma once

#include "vision/setup/LaserDraft.h"
#include "vision/ui/MeasureDialog.h"

#include <functional>
#include <optional>

namespace corvanta::vision {

class LaserScalePage;
class LaserSpotPage;
class PositionPage;

/// Sets up a camera that measures where the spot of a laser is on a plate: what counts as the spot, how pixels become
/// millimetres, the initial position, the inputs that are reported.
class LaserSetDialog final : public MeasureDialog {
    Q_OBJECT
public:
    LaserSetDialog(const AppContext& context, const QString& ipncId, QWidget* parent);

private:
    LaserSetDialog(const AppContext& context, const QString& ipncId, const QVariantMap& info, QWidget* parent);
    void makePages();
    /// Captures for one of the pages; a picture that comes is shown, and becomes the one that is looked at.
    void take(const std::function<void()>& then);
    void takeReference();
    void find();
    void measure(bool isInitial);
    /// Takes over what the pages say.
    void enter();
    void onSpotEdited();
    void onScaleEdited();
    void showMarks();
    void showInitial();
    void setBusy(bool isBusy);
    QString makeReady() override;
    QVariantMap info(const QVariantList& inputs) override;

    LaserDraft draft_;
    LaserSpotPage* spotPage_ = nullptr;
    LaserScalePage* scalePage_ = nullptr;
    PositionPage* position_ = nullptr;
    QImage taken_;             ///< the picture that is looked at
    std::optional<Spot> spot_; ///< in `taken_`
};

} // namespace corvanta::vision
