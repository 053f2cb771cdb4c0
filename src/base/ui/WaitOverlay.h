#pragma once

#include <QTimer>
#include <QWidget>

/// A veil over a part of the window while something is awaited: it takes the clicks and shows a turning ring.
class WaitOverlay final : public QWidget {
    Q_OBJECT
public:
    /// Covers `parent` or a part of it.
    explicit WaitOverlay(QWidget* parent);

    /// Shows the veil over `area` (in the parent's coordinates; empty: all of it), for `milliseconds` or, with 0,
    /// until `hide`.
    void start(const QRect& area, int milliseconds);

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QTimer turn_;
    QTimer limit_;
    int angle_ = 0; ///< degrees
};
