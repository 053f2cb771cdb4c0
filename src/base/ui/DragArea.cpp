#include "base/ui/DragArea.h"

#include <QMouseEvent>
#include <QWindow>

DragArea::DragArea(QWidget* parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_StyledBackground);
}

void DragArea::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || window()->isFullScreen()) {
        QWidget::mousePressEvent(event);
        return;
    }
    grip_ = event->globalPos() - window()->frameGeometry().topLeft();
    moving_ = true;
}

void DragArea::mouseMoveEvent(QMouseEvent* event) {
    if (!moving_ || window()->isMaximized())
        return;
    // The window manager moves it best (snapping, several screens); where it cannot, we do.
    QWindow* const handle = window()->windowHandle();
    if (handle != nullptr && handle->startSystemMove()) {
        moving_ = false;
        return;
    }
    window()->move(event->globalPos() - grip_);
}

void DragArea::mouseReleaseEvent(QMouseEvent*) {
    moving_ = false;
}

void DragArea::mouseDoubleClickEvent(QMouseEvent* event) {
    moving_ = false;
    if (event->button() == Qt::LeftButton)
        emit sigDoubleClick();
}
