#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace corvanta {

/// What a key does in the main window.
enum class ShortcutId {
    Escape,        ///< leave full screen, or the zoomed tile
    ToggleVideo,   ///< open or end the video of the device chosen in the tree
    StopTile,      ///< end the video of the selected tile
    Layout,        ///< show a layout; the position of the key in `keys` is the layout's in `layouts()`
    MoveSelection, ///< select another tile; `keys` are left, right, up, down
    MoveCamera,    ///< move the camera of the tile shown alone; held, so the tile takes the keys by itself
    ZoomTile,      ///< show the selected tile alone, or all again
    FullScreen,
    DevicePanel, ///< show or hide the device tree
    SearchDevice,
    RefreshDevices,
    TogglePoll,
    StopAll,
    OpenSettings,
    Help,
};

/// One line of the table of keys.
struct Shortcut {
    ShortcutId id;
    QStringList keys;  ///< portable key sequences; any of them does it
    const char* shown; ///< the keys as the user reads them, UTF-8, to be translated in the context "Shortcuts"
    const char* text;  ///< what they do, UTF-8, to be translated in the context "Shortcuts"
    /// Fields and lists use such keys themselves, so they are not for the whole window: only while the grid has the
    /// focus. The device tree has its own Enter.
    bool isPlainKey;
};

/// In the order in which the help shows them.
const std::array<Shortcut, 15>& shortcuts();

} // namespace corvanta
