#pragma once

#include <QMetaType>

/// What a tile's menu can ask for, in the menu's order.
enum class TileAction {
    Open,        ///< open the video of the tile's device
    Record,      ///< start or stop recording
    Listen,      ///< audio on or off
    Talk,        ///< talk on or off
    Snapshot,    ///< take a photograph
    PanTiltZoom, ///< camera movement
    Stretch,     ///< picture over the whole tile; done by the tile itself
    KeepRatio,   ///< picture with its own ratio; done by the tile itself
    LeaveFullScreen,
    Stop,         ///< end the tile's stream
    PollPreviews, ///< screen polling with preview pictures
    PollVideos    ///< screen polling with live videos
};

Q_DECLARE_METATYPE(TileAction)
