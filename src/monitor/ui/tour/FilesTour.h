#pragma once

#include "base/CallbackGate.h"

#include <QString>

#include <memory>
#include <string>

class MonitorMainUI;
class QDateTime;
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
    ~FilesTour();

    /// As a list and as a timeline. `pictures` begins their names.
    void page(const QString& pictures);
    void viewer();

private:
    void storePictures();
    void storePicture(const std::string& jpeg, const QString& folder, const QDateTime& time);

    MonitorMainUI& window_;
    TourScript& script_;
    const WallTour& wall_;
    std::shared_ptr<CallbackGate> gate_ = std::make_shared<CallbackGate>();
    int awaited_ = 0; ///< pictures that devices have not sent yet
};
