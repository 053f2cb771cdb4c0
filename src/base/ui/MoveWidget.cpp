#include "base/ui/MoveWidget.h"

#include "base/ui/DragArea.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <utility>

namespace {

// Wider than the edge itself, so that corners are easy to take.
constexpr int Corner = 12;
/// A window manager has made the window cover the screen by then, if there is one, ms.
constexpr int WindowManagerTime = 250;

Qt::CursorShape cursorFor(Qt::Edges edges) {
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge))
        return Qt::SizeBDiagCursor;
    if (edges & (Qt::LeftEdge | Qt::RightEdge))
        return Qt::SizeHorCursor;
    return edges != Qt::Edges() ? Qt::SizeVerCursor : Qt::ArrowCursor;
}

} // namespace

MoveWidget::MoveWidget(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowMinMaxButtonsHint)
    , layout_(std::make_unique<QVBoxLayout>(this).release()) {
    setAttribute(Qt::WA_StyledBackground);
    setMouseTracking(true);
    layout_->setContentsMargins(Edge, Edge, Edge, Edge);
    layout_->setSpacing(0);
}

void MoveWidget::setContent(QWidget* content, const QSize& size, const QString& title) {
    content_ = content;
    content_->setParent(this);
    content_->setMinimumSize(size);
    content_->setCursor(Qt::ArrowCursor);
    if (!title.isEmpty()) {
        auto* strip = new DragArea(this);
        auto* row = new QHBoxLayout(strip);
        auto* label = new QLabel(title, strip);
        label->setTextFormat(Qt::PlainText);
        row->addWidget(label);
        layout_->addWidget(strip);
    }
    layout_->addWidget(content_, 1);
    setWindowTitle(content_->windowTitle()); // for the desktop's list of windows
    connect(content_, &QWidget::windowTitleChanged, this, &QWidget::setWindowTitle);
    resize(size + QSize(2 * Edge, 2 * Edge));
}

Qt::Edges MoveWidget::edgesAt(const QPoint& position) const {
    Qt::Edges edges;
    if (isMaximized() || isFullScreen())
        return edges;
    const bool onEdge = !rect().adjusted(Edge, Edge, -Edge, -Edge).contains(position);
    if (!onEdge)
        return edges;
    edges.setFlag(Qt::LeftEdge, position.x() < Corner);
    edges.setFlag(Qt::RightEdge, position.x() >= width() - Corner);
    edges.setFlag(Qt::TopEdge, position.y() < Corner);
    edges.setFlag(Qt::BottomEdge, position.y() >= height() - Corner);
    return edges;
}

void MoveWidget::mousePressEvent(QMouseEvent* event) {
    held_ = event->button() == Qt::LeftButton ? edgesAt(event->pos()) : Qt::Edges();
    if (held_ == Qt::Edges())
        return;
    startGeometry_ = geometry();
    startPosition_ = event->globalPos();
    QWindow* const handle = windowHandle();
    if (handle != nullptr && handle->startSystemResize(held_))
        held_ = Qt::Edges();
}

void MoveWidget::mouseMoveEvent(QMouseEvent* event) {
    if (held_ == Qt::Edges())
        setCursor(cursorFor(edgesAt(event->pos())));
    else
        resizeTo(event->globalPos());
}

void MoveWidget::mouseReleaseEvent(QMouseEvent*) {
    held_ = Qt::Edges();
}

void MoveWidget::resizeTo(const QPoint& globalPosition) {
    const QPoint moved = globalPosition - startPosition_;
    const QSize smallest = minimumSizeHint().expandedTo(minimumSize());
    QRect wanted = startGeometry_;
    if (held_ & Qt::LeftEdge)
        wanted.setLeft(qMin(wanted.left() + moved.x(), wanted.right() - smallest.width() + 1));
    if (held_ & Qt::TopEdge)
        wanted.setTop(qMin(wanted.top() + moved.y(), wanted.bottom() - smallest.height() + 1));
    if (held_ & Qt::RightEdge)
        wanted.setRight(qMax(wanted.right() + moved.x(), wanted.left() + smallest.width() - 1));
    if (held_ & Qt::BottomEdge)
        wanted.setBottom(qMax(wanted.bottom() + moved.y(), wanted.top() + smallest.height() - 1));
    setGeometry(wanted);
}

void MoveWidget::setFullScreen(bool on) {
    if (on == isFullScreen())
        return;
    if (on)
        beforeFullScreen_ = isMaximized() ? normalGeometry() : geometry();
    setWindowState(windowState() ^ Qt::WindowFullScreen);
    if (on) {
        QTimer::singleShot(WindowManagerTime, this, [this] {
            const QRect whole = screen()->geometry();
            fullScreenByHand_ = isFullScreen() && geometry() != whole;
            if (fullScreenByHand_)
                setGeometry(whole);
        });
    } else if (std::exchange(fullScreenByHand_, false)) {
        setGeometry(beforeFullScreen_);
    }
}

void MoveWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange)
        return;
    // Nothing to take hold of then, and nothing round the picture.
    const int edge = isMaximized() || isFullScreen() ? 0 : Edge;
    layout_->setContentsMargins(edge, edge, edge, edge);
}

void MoveWidget::closeEvent(QCloseEvent* event) {
    // The content knows what is to be asked and done before the program ends.
    if (content_ != nullptr && !content_->close())
        event->ignore();
}
