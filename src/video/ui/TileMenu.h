#pragma once

#include "video/Placement.h"
#include "video/ui/TileAction.h"

#include <QHash>
#include <QMenu>

#include <optional>

/// The menu of a video tile. Entries whose feature is not there are present and disabled.
class TileMenu final : public QMenu {
    Q_OBJECT
public:
    explicit TileMenu(QWidget* parent = nullptr);

    /// What an action of this menu stands for, or nothing for an action that is not one of its own.
    static std::optional<TileAction> actionOf(const QAction* action);

    void setActionEnabled(TileAction action, bool enabled);
    /// For the kinds of polling: ticks the one that runs.
    void setActionChecked(TileAction action, bool checked);
    /// For recording, listening and talking: whether it runs, which turns the entry's text into the one that stops
    /// it.
    void setActionRunning(TileAction action, bool running);
    /// Ticks the entry of the tile's placement.
    void setAspectMode(corvanta::video::AspectMode mode);

private:
    QAction* add(QMenu& menu, TileAction action);

    QHash<int, QAction*> actions_; ///< by TileAction
};
