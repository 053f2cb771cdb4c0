#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "map/MapMarker.h"

class ItemVideo;
class QPushButton;

namespace corvanta::video {
class LivePane;
} // namespace corvanta::video

namespace corvanta::map {

/// The live video of a marker's camera. Opens the video at once and ends it when it closes.
class MapMarkVideoDiolag final : public FramedDialog {
    Q_OBJECT
public:
    MapMarkVideoDiolag(const AppContext& context, const MapMarker& marker, QWidget* parent);

    ItemVideo& tile() const;

public slots:
    void done(int result) override;

private:
    void setWords();

    video::LivePane* live_;
    QPushButton* toggle_;
};

} // namespace corvanta::map
