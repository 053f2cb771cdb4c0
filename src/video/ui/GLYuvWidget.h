#pragma once

#include "video/FrameSize.h"

#include <QOpenGLFunctions>
#include <QOpenGLTexture>
#include <QOpenGLWidget>

#include <cstdint>
#include <memory>

class QOpenGLShader;
class QOpenGLShaderProgram;

/// Paints one planar YUV 4:2:0 picture (I420, rows tightly packed, first row on top) over its whole area; a fragment
/// shader converts it to RGB. Black while it holds no picture. GUI thread only.
class GLYuvWidget final : public QOpenGLWidget, private QOpenGLFunctions {
    Q_OBJECT
public:
    explicit GLYuvWidget(QWidget* parent = nullptr);
    ~GLYuvWidget() override;

    /// Whether this process can have a GL context at all; tried once, at the first call.
    static bool isSupported();

    /// Drops the picture and its buffer.
    void clearFrame();

    /// Size of the held picture; a default one when there is none.
    corvanta::video::FrameSize frameSize() const { return frameSize_; }

    /// Pictures that were painted, and those that were never because a newer one came first. Both wrap.
    std::uint32_t paintedPictures() const { return painted_; }
    std::uint32_t collapsedPictures() const { return collapsed_; }

    /// Draws the picture into a part of the surface that is current (GL coordinates, px), instead of being shown as a
    /// widget. The context is the same for all calls, until `releaseGl` is called with it current.
    void drawInto(const QRect& place);
    /// Frees what was made in the current context.
    void releaseGl();

public slots:
    /// Copies a picture of width * height * 3 / 2 bytes and asks for a repaint, so several pictures between two
    /// repaints become one. A size that cannot be used leaves the present picture.
    void slotShowYuv(uchar* picture, uint width, uint height);

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void changeEvent(QEvent* event) override;

private:
    void sayName();
    bool buildProgram();
    void releaseOwnGl();
    void uploadPlane(GLenum unit, GLuint texture, unsigned width, unsigned height, const std::uint8_t* plane);
    bool fitsTheDriver();

    GLint uniformY_ = -1;
    GLint uniformU_ = -1;
    GLint uniformV_ = -1;
    GLuint idY_ = 0;
    GLuint idU_ = 0;
    GLuint idV_ = 0;
    std::unique_ptr<QOpenGLTexture> textureY_;
    std::unique_ptr<QOpenGLTexture> textureU_;
    std::unique_ptr<QOpenGLTexture> textureV_;
    std::unique_ptr<QOpenGLShader> vertexShader_;
    std::unique_ptr<QOpenGLShader> fragmentShader_;
    std::unique_ptr<QOpenGLShaderProgram> program_; ///< null while there is nothing to draw with
    bool glIsReady_ = false;                        ///< `initializeGL` has run in the context that is used
    GLint maxTextureSide_ = 0;                      ///< pixels, what the driver takes
    bool tooLargeReported_ = false;                 ///< the present size is above that, and the debug stream says so

    corvanta::video::FrameSize frameSize_;  ///< default while frame_ is null
    std::unique_ptr<std::uint8_t[]> frame_; ///< byteCount(frameSize_) bytes
    bool unpainted_ = false;                ///< frame_ holds a picture that was not painted yet
    std::uint32_t painted_ = 0;
    std::uint32_t collapsed_ = 0;
};
