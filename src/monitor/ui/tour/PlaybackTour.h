#pragma once

class MonitorMainUI;
class TourScript;
class WallTour;

/// The page that plays recordings.
class PlaybackTour final {
public:
    /// All outlive it, and it outlives the walk. What `wall` has recorded is played.
    PlaybackTour(MonitorMainUI& window, TourScript& script, const WallTour& wall)
        : window_(window)
        , script_(script)
        , wall_(wall) {}

    void page();

private:
    MonitorMainUI& window_;
    TourScript& script_;
    const WallTour& wall_;
};
