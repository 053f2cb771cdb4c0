#include "video/ui/WallSurface.h"

#include <QCoreApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QWheelEvent>
#include <QWidget>

#include <utility>

namespace {
constexpr int SliceTime = 4;        // ms
constexpr std::size_t Together = 4; // pictures
} // namespace

WallSurface::WallSurface(std::function<Scene()> scene)
    : scene_(std::move(scene)) {
    setObjectName(QStringLiteral("wallSurface"));
    setSurfaceType(QWindow::OpenGLSurface);
    setFlag(Qt::WindowDoesNotAcceptFocus);
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    // Pictures lie side by side, never over one another, and are brought in a beat of their own.
    format.setDepthBufferSize(0);
    format.setStencilBufferSize(0);
    format.setSwapInterval(0);
    setFormat(format);
}

WallSurface::~WallSurface() {
    if (context_ == nullptr)
        return;
    // The window may have lost its place in the system already.
    QOffscreenSurface nowhere;
    nowhere.setFormat(context_->format());
    nowhere.create();
    context_->makeCurrent(&nowhere);
    for (GLYuvWidget* renderer : qAsConst(drawn_))
        renderer->releaseGl();
    context_->doneCurrent();
}

QWidget* WallSurface::embed(QWidget& wall) {
    container_ = QWidget::createWindowContainer(this, &wall);
    container_->setObjectName(QStringLiteral("wallSurfaceContainer"));
    container_->setFocusPolicy(Qt::NoFocus);
    container_->setAttribute(Qt::WA_TransparentForMouseEvents); // where it is cut away
    container_->setGeometry(wall.rect());
    container_->hide();
    return container_;
}

bool WallSurface::makeCurrent() {
    if (context_ == nullptr) {
        auto context = std::make_unique<QOpenGLContext>();
        context->setFormat(requestedFormat());
        if (!context->create()) {
            qDebug("the wall has no OpenGL context");
            return false;
        }
        context_ = std::move(context);
    }
    return handle() != nullptr && context_->makeCurrent(this);
}

void WallSurface::cutTo(const Scene& scene) {
    QRegion shape;
    for (const Picture& picture : scene.pictures)
        shape += picture.place;
    shape -= scene.covers;
    if (shape == shape_)
        return;
    shape_ = shape;
    setMask(shape);
    container_->setVisible(!shape.isEmpty());
}

void WallSurface::present() {
    again_ = isDrawing_;
    if (isDrawing_)
        return;
    drawing_ = scene_();
    cutTo(drawing_);
    next_ = 0;
    isDrawing_ = !shape_.isEmpty();
    drawSlice();
}

void WallSurface::drawSlice() {
    if (!isDrawing_)
        return;
    isDrawing_ = isExposed() && makeCurrent();
    QElapsedTimer time;
    time.start();
    while (isDrawing_ && next_ < drawing_.pictures.size()) {
        drawPicture(drawing_.pictures[next_++]);
        // A driver that draws in software begins when it has to, and then draws all that it was given. Told to draw a
        // few at a time, it finds them in the caches still, and the time of a slice is what it says.
        if (next_ % Together != 0)
            continue;
        context_->functions()->glFinish();
        if (time.elapsed() < SliceTime)
            continue;
        QMetaObject::invokeMethod(this, &WallSurface::drawSlice, Qt::QueuedConnection);
        return;
    }
    if (std::exchange(isDrawing_, false))
        context_->swapBuffers(this);
    if (again_)
        QMetaObject::invokeMethod(this, &WallSurface::present, Qt::QueuedConnection);
}

void WallSurface::drawPicture(const Picture& picture) {
    if (picture.renderer == nullptr)
        return;
    QOpenGLFunctions* const gl = context_->functions();
    const qreal ratio = devicePixelRatio();
    const int width = qRound(picture.place.width() * ratio);
    const int rows = qRound(picture.place.height() * ratio);
    const int left = qRound(picture.place.left() * ratio);
    const int bottom = qRound(height() * ratio) - qRound(picture.place.top() * ratio) - rows;
    gl->glEnable(GL_SCISSOR_TEST);
    gl->glScissor(left, bottom, width, rows);
    picture.renderer->drawInto(QRect(left, bottom, width, rows));
    drawn_.insert(picture.renderer);
}

void WallSurface::exposeEvent(QExposeEvent*) {
    requestUpdate();
}

bool WallSurface::event(QEvent* event) {
    if (event->type() == QEvent::UpdateRequest)
        present();
    return passOn(event) || QWindow::event(event);
}

/// Input comes to the window above; what it means is decided where it would have come to without that.
bool WallSurface::passOn(QEvent* event) {
    QWidget* const top = container_ == nullptr ? nullptr : container_->window();
    if (top == nullptr || top->windowHandle() == nullptr)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto* const mouse = static_cast<const QMouseEvent*>(event);
        const QPointF place = container_->mapTo(top, mouse->pos());
        QMouseEvent passed(mouse->type(), place, place, mouse->screenPos(), mouse->button(), mouse->buttons(),
                           mouse->modifiers(), mouse->source());
        QCoreApplication::sendEvent(top->windowHandle(), &passed);
        return true;
    }
    case QEvent::Wheel: {
        const auto* const wheel = static_cast<const QWheelEvent*>(event);
        const QPointF place = container_->mapTo(top, wheel->position().toPoint());
        QWheelEvent passed(place, wheel->globalPosition(), wheel->pixelDelta(), wheel->angleDelta(), wheel->buttons(),
                           wheel->modifiers(), wheel->phase(), wheel->inverted(), wheel->source());
        QCoreApplication::sendEvent(top->windowHandle(), &passed);
        return true;
    }
    default:
        return false;
    }
}
