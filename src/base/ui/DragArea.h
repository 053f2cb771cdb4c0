#pragma once

#include <QPoint>
#include <QWidget>

/// A strip by which its window is moved; a double click asks for the maximised window or back.
class DragArea : public QWidget {
    Q_OBJECT
public:
    explicit DragArea(QWidget* parent = nullptr);

signals:
    void sigDoubleClick();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QPoint grip_; ///< where the window was taken, from its top left corner
    bool moving_ = false;
};
