#pragma once

#include "video/ui/GLYuvWidget.h"

#include <QPointer>
#include <QRegion>
#include <QSet>
#include <QWindow>

#include <functional>
#include <memory>
#include <vector>

class QOpenGLContext;

/// Draws the pictures of a whole wall of tiles straight to the screen, in one go.
///
/// Widgets that draw with OpenGL are composed by their window: each is drawn into a texture of its own, all textures
/// are drawn into the window, and what the other widgets have painted is blended over all of it. Where no graphics
/// card does that work it costs more than the pictures. This is a window of its own instead, inside the wall and
/// above its tiles, cut to the places of the pictures: borders, texts and everything else are painted by the tiles as
/// ever, and are seen where this window is not. Input goes through it to the wall.
///
/// Drawing 64 pictures without a graphics card takes most of the time from one picture to the next. It goes on in
/// slices, between which the thread does what else is to be done: an alarm or a key does not wait for the wall.
///
/// A renderer that is drawn here is never shown as a widget. GUI thread only.
class WallSurface final : public QWindow {
    Q_OBJECT
public:
    /// One picture: where (px, from the wall's top left corner) and by whom it is drawn.
    struct Picture {
        QRect place;
        QPointer<GLYuvWidget> renderer; ///< may go between two slices
    };
    /// What is to be seen: pictures, and what lies over them.
    struct Scene {
        std::vector<Picture> pictures;
        QRegion covers;
    };

    /// `scene` is asked at each drawing. The surface belongs to the container that `embed` makes.
    explicit WallSurface(std::function<Scene()> scene);
    ~WallSurface() override;

    /// Puts the surface into `wall`, which it covers from then on; the container, a child of the wall that the caller
    /// keeps at the wall's size and deletes before the renderers.
    QWidget* embed(QWidget& wall);

    /// Draws all pictures and shows them, begins to do so at least; what is asked for meanwhile follows. Without any
    /// picture the surface is hidden.
    void present();

protected:
    bool event(QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;

private:
    bool makeCurrent();
    void cutTo(const Scene& scene);
    void drawSlice();
    void drawPicture(const Picture& picture);
    bool passOn(QEvent* event);

    std::function<Scene()> scene_;
    std::unique_ptr<QOpenGLContext> context_;
    QWidget* container_ = nullptr;
    QRegion shape_;            ///< the present one
    QSet<GLYuvWidget*> drawn_; ///< renderers that have something in the context
    Scene drawing_;            ///< what is being drawn
    std::size_t next_ = 0;     ///< the picture of it that comes next
    bool isDrawing_ = false;   ///< a slice is on its way
    bool again_ = false;       ///< asked for while it was drawing
};
