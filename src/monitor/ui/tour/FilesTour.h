#pragma once

#include <QString>

class MonitorMainUI;
class TourScript;
class WallTour;

/// The page of stored files, with pictures that the walk stores itself.
class FilesTour final {
public:
    /// All outlive it, and it outlives the walk.
    FilesTour(MonitorMainUI& window, TourScript& script, const WallTour& wall)
        : window_(window)
        , script_(script)
        , wall_(wall) {}

    /// As a list and as a timeline. `pictures` begins their names.
    void page(const QString& pictures);
    void viewer();

private:
    void storePictures() const;

    MonitorMainUI& window_;
    TourScript& script_;
    const WallTour& wall_;
};
