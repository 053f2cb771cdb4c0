#pragma once

#include <QRegion>
#include <QSet>
#include <QWindow>

#include <functional>
#include <memory>
#include <vector>

class GLYuvWidget;
class QOpenGLContext;

/// Draws the pictures of a whole wall of tiles straight to the screen, in one go.
///
/// Widgets that draw with OpenGL are composed by their window: each is drawn into a texture of its own, all textures
/// are drawn into the window, and what the other widgets have painted is blended over all of it. Where no graphics
/// card does that work it costs more than the pictures. This is a window of its own instead, inside the wall and
/// above its tiles, cut to the places of the pictures: borders, texts and everything else are painted by the tiles as
/// ever, and are seen where this window is not. Input goes through it to the wall.
///
/// A renderer that is drawn here is never shown as a widget. GUI thread only.
class WallSurface final : public QWindow {
    Q_OBJECT
public:
    /// One picture: where (px, from the wall's top left corner) and by whom it is drawn.
    struct Picture {
        QRect place;
        GLYuvWidget* renderer = nullptr;
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

    /// Draws all pictures and shows them. Without any the surface is hidden.
    void present();

protected:
    bool event(QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;

private:
    bool makeCurrent();
    void cutTo(const Scene& scene);
    void draw(const Scene& scene);
    bool passOn(QEvent* event);

    std::function<Scene()> scene_;
    std::unique_ptr<QOpenGLContext> context_;
    QWidget* container_ = nullptr;
    QRegion shape_;            ///< the present one
    QSet<GLYuvWidget*> drawn_; ///< renderers that have something in the context
};
