#pragma once

#include "monitor/ui/tour/AccountTour.h"
#include "monitor/ui/tour/FilesTour.h"
#include "monitor/ui/tour/LinkageTour.h"
#include "monitor/ui/tour/LogsTour.h"
#include "monitor/ui/tour/ManageTour.h"
#include "monitor/ui/tour/MapTour.h"
#include "monitor/ui/tour/PlaybackTour.h"
#include "monitor/ui/tour/SensorTour.h"
#include "monitor/ui/tour/SettingsTour.h"
#include "monitor/ui/tour/TourScript.h"
#include "monitor/ui/tour/UpdateTour.h"
#include "monitor/ui/tour/WallTour.h"

#include <QObject>

/// Walks through the program by itself and leaves pictures of what it shows, then ends the program: with 0 when
/// everything came in time, else with 1 and one line that says what did not.
///
/// The short walk signs in, opens cameras and takes pictures of them; the tour also opens every window, dialog and
/// menu. What is done in each module stands in a class of its own; here is the order.
class OperatorTour final : public QObject {
    Q_OBJECT
public:
    enum class Extent { Short, Everything };

    /// `window` outlives the tour. Pictures are written into `folder`, which is made.
    OperatorTour(MonitorMainUI& window, QString folder, Extent extent, QObject* parent = nullptr);

    /// Begins once the event loop runs.
    void start();

private:
    void largeWindow();
    void planShort();
    void planEverything();
    void planLayouts();
    void planSmallest();
    void planWindow();
    void tip();

    MonitorMainUI& window_;
    TourScript script_;
    WallTour wall_;
    SettingsTour settings_;
    FilesTour files_;
    LogsTour logs_;
    PlaybackTour playback_;
    AccountTour account_;
    ManageTour manage_;
    LinkageTour linkage_;
    SensorTour sensors_;
    MapTour maps_;
    UpdateTour update_;
};
