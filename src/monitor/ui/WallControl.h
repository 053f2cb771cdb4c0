#pragma once

#include "base/AppContext.h"

#include <QObject>

class DeviceTree;
class Fwidget;
class LiveVideo;
class PollRunner;
class QWidget;
enum class TileAction;

/// What the operator does to the wall by tree, tile menus and keys, brought to live videos, grid and polling.
/// Whatever the polling would undo is asked about first. GUI thread.
class WallControl final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Fwidget& grid;
        LiveVideo& live;
        PollRunner& poll;
        DeviceTree& tree;
    };

    /// The parts outlive this object; questions are asked over `window`.
    WallControl(const AppContext& context, const Parts& parts, QWidget* window);

    /// Opens or ends a device's video.
    void toggle(const QString& ipncId);
    void stopAll();
    /// Opens the video of a tile's device unless it is open.
    void openTile(int tileIndex);
    void stopTile(int tileIndex);
    void openGroup(const QString& groupId, bool open);
    void preview(const QString& ipncId);
    /// Leaves the zoom; false when no tile is zoomed.
    bool leaveZoom();
    /// Moves the selection among the tiles shown.
    void moveSelection(int rows, int columns);

signals:
    void sigLeaveFullScreen();

private:
    void connectTiles();
    void prepareMenu(int tileIndex);
    void onTileAction(int tileIndex, TileAction action);
    bool mayChange();

    AppContext context_;
    Parts parts_;
    QWidget* window_;
};
