#pragma once

#include <QWidget>

class QLabel;
class QVBoxLayout;

/// The outer frame of the program: no system decoration, moved by its content's drag areas, resized at its edges.
class MoveWidget final : public QWidget {
    Q_OBJECT
public:
    explicit MoveWidget(QWidget* parent = nullptr);

    /// Takes `content` (and its ownership) as the inside. `size` is its smallest and its first size; a title that is
    /// not empty adds a title strip.
    void setContent(QWidget* content, const QSize& size, const QString& title);

    /// Covers the screen, or goes back to where the window was. A window manager does it; where there is none the
    /// window does it by itself.
    void setFullScreen(bool on);

    /// Width of the edge that takes hold of the frame, px.
    static constexpr int Edge = 4;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    Qt::Edges edgesAt(const QPoint& position) const;
    void resizeTo(const QPoint& globalPosition);

    QVBoxLayout* layout_;
    QWidget* content_ = nullptr;
    Qt::Edges held_;
    QRect startGeometry_;
    QPoint startPosition_;
    QRect beforeFullScreen_;        ///< empty while it is not full screen
    bool fullScreenByHand_ = false; ///< nobody else did it
};
