#pragma once

#include <QObject>

#include <vector>

class Fwidget;
class ItemVideo;

/// What became of the pictures of all tiles since the start.
struct PictureCounts {
    quint64 received = 0;    ///< reached a visible tile
    quint64 overwritten = 0; ///< gave way to a newer one before they were painted
    quint64 painted = 0;
};

/// Counts the pictures of a grid's tiles, at the places where the client itself knows. GUI thread.
class TileCounts final : public QObject {
    Q_OBJECT
public:
    /// The grid outlives the counts.
    explicit TileCounts(const Fwidget& grid);

    PictureCounts ofTile(int index) const;
    PictureCounts total() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(const ItemVideo& tile);

    const Fwidget& grid_;
    std::vector<PictureCounts> counted_; ///< by tile
};
