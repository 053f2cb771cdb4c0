#pragma once

#include <QLabel>

/// The status text of a video tile: one line on a dark plate, in the tile's middle, over the picture. In a tile too
/// small for it the letters shrink, and what still does not fit is elided. As large as its plate, so that it covers
/// no more of the picture than it must; hidden while there is no text.
class TileTextLine final : public QLabel {
    Q_OBJECT
public:
    explicit TileTextLine(QWidget* parent);

    /// Shows `line` as large as `area` (parent's coordinates) allows.
    void showIn(const QRect& area, const QString& line);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QFont fittedFont_;
    QString fittedText_; ///< text(), elided where needed
};
