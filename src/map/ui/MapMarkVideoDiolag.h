#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "map/MapMarker.h"
#include "video/LiveSessions.h"

#include <memory>

class CallbackGate;
class ItemVideo;
class QLabel;
class QPushButton;

namespace corvanta::map {

/// The live video of a marker's camera: one tile, with the tables and texts of those of the wall, and a request of
/// its own, so that the wall's stays as it is. Opens the video at once and ends it when it closes.
class MapMarkVideoDiolag final : public FramedDialog {
    Q_OBJECT
public:
    MapMarkVideoDiolag(const AppContext& context, const MapMarker& marker, QWidget* parent);
    ~MapMarkVideoDiolag() override;

    ItemVideo& tile() const { return *tile_; }

public slots:
    void done(int result) override;

private:
    void toggle();
    void onReport(const QVariantMap& report);
    void showText(const QString& text);
    void apply(const video::SessionActions& actions);
    void carryOut(const video::StopRequest& action);
    void carryOut(const video::SendOpenRequest& action);
    void carryOut(const video::ShowTileText& action);
    void carryOut(const video::ClearAllTexts& action);
    void carryOut(const video::StreamOpened& action);
    void carryOut(const video::CloseTile& action);
    void carryOut(const video::StreamEnded& action);
    void carryOut(const video::PreviewEnded& action);

    AppContext context_;
    const QString ipncId_;
    ItemVideo* tile_;
    QLabel* state_;
    QPushButton* toggle_;
    video::LiveSessions sessions_;
    std::shared_ptr<CallbackGate> gate_; ///< of the request that runs; null without one
};

} // namespace corvanta::map
