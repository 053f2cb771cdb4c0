#pragma once

#include <QMap>
#include <QRect>
#include <QString>
#include <QVariant>
#include <QVector>

#include <optional>

class Settings;

/// What of the window's state outlives the program, as values: read from the settings with distrust, as the file may
/// have been edited or come from another machine. What cannot be used is left out with one debug line.
namespace corvanta::workspace {

/// Open live videos by tile.
QMap<int, QString> readOpenVideos(const QVariant& stored);
QVariant storedOpenVideos(const QMap<int, QString>& videos);

struct GridShape {
    int rows = 0;
    int columns = 0;
};
/// The layout that was chosen last; nothing when there is none among the layouts offered.
std::optional<GridShape> readLayout(const Settings& settings);
/// The tile that was shown alone; -1 for none, and for what is no tile of a pool of `poolSize`.
int readZoom(const Settings& settings, int poolSize);

/// A main window's place on the screen.
struct WindowPlace {
    QRect normal; ///< px; where it is when it is neither maximised nor full screen
    bool maximized = false;
    bool fullScreen = false;
};
std::optional<WindowPlace> readWindowPlace(const QVariant& stored);
QVariant storedWindowPlace(const WindowPlace& place);

/// Where a window can be put so that it is reached: at least `smallest`, no larger than its screen, inside the screen
/// that it overlaps most; the first screen when it is outside of all. `screens` are the areas that windows may use.
QRect placeOnScreens(const QRect& wanted, const QSize& smallest, const QVector<QRect>& screens);

/// The place of a first start: large enough to work with, in the middle of the screen.
QRect firstPlace(const QSize& smallest, const QRect& screen);

} // namespace corvanta::workspace
