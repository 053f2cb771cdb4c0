#pragma once

#include "playback/PlaybackSession.h"
#include "video/ui/WallSurface.h"

#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QWidget>

class QGridLayout;

namespace corvanta::playback {

class PlaybackTile;

/// The pictures of a playback, in as few rows and columns as they need; one of them is selected and may be shown
/// alone. GUI thread.
class PlaybackWall final : public QWidget {
    Q_OBJECT
public:
    explicit PlaybackWall(QWidget* parent = nullptr);
    ~PlaybackWall() override;

    /// A tile for each name; the first one is selected.
    void setCameras(const QStringList& names);
    int cameraCount() const { return tiles_.size(); }
    PlaybackTile& tile(int number) const { return *tiles_[number]; }

    int selected() const { return selected_; }
    void select(int number);
    /// Shows the selected one alone, or all again.
    void toggleZoom();
    bool isZoomed() const { return zoomed_; }

    /// Brings what the tiles have been handed to the screen, soon.
    void present() { presenting_.start(); }
    /// What lies over the pictures is seen there while it is visible.
    void addCover(QWidget& cover);

signals:
    void sigSelected(int number);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeTiles();
    void presentNow();
    WallSurface::Scene scene() const;

    QGridLayout* grid_;
    QVector<PlaybackTile*> tiles_;
    int selected_ = 0;
    bool zoomed_ = false;
    QTimer presenting_; ///< many pictures come at once
    QVector<QPointer<QWidget>> covers_;
    WallSurface* surface_ = nullptr; ///< belongs to its container; null until there is a picture
    QWidget* surfaceContainer_ = nullptr;
};

} // namespace corvanta::playback
