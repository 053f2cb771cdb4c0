#pragma once

#include "monitor/TileGrid.h"
#include "video/ui/PictureBeat.h"
#include "video/ui/WallSurface.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

class ItemVideo;
class QAction;
class QGridLayout;
class QMenu;
class QPushButton;
class Settings;

/// The video area: a pool of tiles made once, of which the layout shows some. Changing the layout only hides,
/// places and shows tiles, so a stream in a hidden tile goes on.
///
/// GUI thread, except `showFrame`.
class Fwidget final : public QWidget {
    Q_OBJECT
public:
    /// A pool of `rows` x `columns` tiles, all of them shown. `settings` keeps the layout and outlives the widget.
    Fwidget(int rows, int columns, Settings& settings, QWidget* parent = nullptr);
    ~Fwidget() override;

    const TileGrid& grid() const { return grid_; }
    int selectedIndex() const { return selected_; }
    /// Null for an index outside the pool.
    ItemVideo* tile(int index) const;

    /// Shows a layout and leaves the zoom; a layout larger than the pool is ignored. `save` keeps it for the next
    /// start.
    void setLayout(int rows, int columns, bool save);
    /// Shows one tile alone; an index without a tile shows none.
    void setZoom(int index);
    /// Shows a tile alone, or leaves the zoom if any tile is shown alone; the settings keep which.
    void toggleZoom(int index);
    bool isIndexShown(int index) const { return grid_.isIndexShown(index); }

    /// The request id of the stream in a tile, -1 for an index without a tile.
    int tileRequest(int index) const;
    /// Hands a decoded picture to a tile, which takes it only when it is visible. Any thread; the widget must not be
    /// destroyed meanwhile.
    void showFrame(int index, const uchar* picture, uint width, uint height) const;
    void setTileText(int index, const QString& text);
    void clearAllTexts();
    /// Something that lies over a part of the grid when it is visible, and must be seen there; it outlives the grid
    /// or is a child of the same window.
    void addCover(QWidget& cover);
    /// Forgets the tile's stream and empties its picture. The stream's request is the caller's to stop.
    void closeTile(int index);

signals:
    /// Another tile is selected.
    void sigSelected(int index);
    /// The layout or the zoom changed.
    void sigLayoutChanged();

public slots:
    void onMenu();
    void onPopMenuTriggered(QAction* action);
    void onDoubleClickEvent();
    void on_setfocus(int index);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeTiles();
    void makeMenu();
    void placeTiles();
    void saveZoom();
    void makeSurface();
    WallSurface::Scene scene() const;

    Settings& settings_;
    TileGrid grid_;
    PictureBeat beat_; ///< of all tiles; outlives them
    int selected_ = 0;
    QGridLayout* gridLayout_;
    QPushButton* menuButton_;
    std::unique_ptr<QMenu> layoutMenu_;
    /// By tile index, children of this widget. Never changed after the construction, so that any thread may look a
    /// tile up.
    std::vector<ItemVideo*> tiles_;
    WallSurface* surface_ = nullptr; ///< belongs to its container; null until there is a picture to draw
    QWidget* surfaceContainer_ = nullptr;
    QList<QPointer<QWidget>> covers_;
    QTimer sceneChanged_; ///< what lies over the pictures, or where they are, has changed
};
