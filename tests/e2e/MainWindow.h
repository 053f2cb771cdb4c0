#pragma once

#include "e2e/Accessible.h"

#include <QPoint>
#include <QRect>
#include <QStringList>

/// The program's main window, by the names of its parts. All places are on the screen. Handles: what is asked is
/// answered as it is then.
class MainWindow final {
public:
    MainWindow() = default;
    /// Looks for its parts in a program; null while it is not built.
    explicit MainWindow(const Accessible& program);

    bool isNull() const { return grid_.isNull() || tree_.isNull(); }
    /// The window, in which all is.
    const Accessible& window() const { return frame_; }
    QString title() const { return frame_.name(); }
    QRect frame() const { return frame_.place(); }
    /// A free place of the title bar, by which the window is moved.
    QPoint handle() const;

    /// A button of the title bar or the message bar, or the one in the grid.
    Accessible button(const QString& name) const;
    /// What the message bar says.
    QString message() const;
    const Accessible& searchField() const { return search_; }

    /// The texts of the device tree's rows, from above, whether they fit in or not. Groups begin with their name.
    QStringList rows() const;
    /// A row by its text; a group also by its name.
    Accessible row(const QString& name) const;
    bool hasRow(const QString& name) const { return !row(name).isNull(); }
    /// The area in which rows are seen.
    QRect treeArea() const { return tree_.place(); }
    /// Whether this row is the current one, to which keys go when the tree has them.
    bool isCurrent(const QString& name) const { return row(name).has(Accessible::State::Focused); }

    /// The area of all tiles.
    QRect grid() const { return grid_.place(); }
    /// The tiles that are shown, from 0.
    QVector<int> shownTiles() const;
    /// The place of a tile, shown or not.
    QRect tile(int index) const { return tiles_.value(index).place(); }
    /// The name of the device that the tile belongs to.
    QString deviceOfTile(int index) const { return tiles_.value(index).description(); }
    /// The tile of a device; -1 when it has none.
    int tileOfDevice(const QString& name) const;
    /// What is written over the tile.
    QString textOfTile(int index) const;
    /// The tile that has the keyboard; -1 when none has.
    int focusedTile() const;

private:
    Accessible frame_;
    Accessible titleBar_;
    Accessible messageBar_;
    Accessible grid_;
    Accessible tree_;
    Accessible search_;
    QVector<Accessible> tiles_;
};
