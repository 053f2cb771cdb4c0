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
    corvanta::video::FrameSize frameSize() const { return m_frameSize; }

public slots:
    /// Copies a picture of width * height * 3 / 2 bytes and asks for a repaint, so several pictures between two
    /// repaints become one. A size that cannot be used leaves the present picture.
    void slotShowYuv(uchar* picture, uint width, uint height);

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;

private:
    bool buildProgram();
    void releaseGl();
    void uploadPlane(GLenum unit, GLuint texture, unsigned width, unsigned height, const std::uint8_t* plane);
    bool fitsTheDriver();

    GLint m_uniformY = -1;
    GLint m_uniformU = -1;
    GLint m_uniformV = -1;
    GLuint m_idY = 0;
    GLuint m_idU = 0;
    GLuint m_idV = 0;
    std::unique_ptr<QOpenGLTexture> m_textureY;
    std::unique_ptr<QOpenGLTexture> m_textureU;
    std::unique_ptr<QOpenGLTexture> m_textureV;
    std::unique_ptr<QOpenGLShader> m_vertexShader;
    std::unique_ptr<QOpenGLShader> m_fragmentShader;
    std::unique_ptr<QOpenGLShaderProgram> m_program; ///< null while there is nothing to draw with
    GLint m_maxTextureSide = 0;                      ///< pixels, what the driver takes
    bool m_tooLargeReported = false;                 ///< the present size is above that, and the debug stream says so

    corvanta::video::FrameSize m_frameSize;  ///< default while m_frame is null
    std::unique_ptr<std::uint8_t[]> m_frame; ///< byteCount(m_frameSize) bytes
};
