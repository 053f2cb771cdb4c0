#pragma once

#include "playback/PlaybackCamera.h"

#include <QStringList>
#include <QVector>

class MonitorMainUI;
class TourScript;

/// The wall: layouts, menus, polling, recordings.
class WallTour final {
public:
    /// Both outlive it, and it outlives the walk.
    WallTour(MonitorMainUI& window, TourScript& script)
        : window_(window)
        , script_(script) {}

    /// Shows a layout, opens what is online in it, waits until all of it runs.
    void layout(int rows, int columns, const QString& name);
    void menus();
    void treeMenus();
    void polling();
    /// Records the first devices for some seconds; `recorded` has the files after `endRecording`.
    void record(int devices);
    void endRecording();
    const QVector<corvanta::playback::PlaybackCamera>& recorded() const { return recorded_; }
    /// Those that the layout shows.
    QStringList onlineDevices() const;

private:
    int runningStreams() const;
    void openShown() const;

    MonitorMainUI& window_;
    TourScript& script_;
    QVector<corvanta::playback::PlaybackCamera> recorded_;
};
