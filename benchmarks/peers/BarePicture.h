#pragma once

#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QOpenGLWidget>

#include <vector>

/// The least that a widget can do to show a picture by OpenGL: uploads the three planes of a ready picture and draws
/// them through the conversion to RGB, at every repaint.
class BarePicture final : public QOpenGLWidget, private QOpenGLFunctions {
    Q_OBJECT
public:
    /// `seed` makes one picture unlike another.
    BarePicture(QSize picture, int seed, QWidget* parent);
    ~BarePicture() override;

    quint64 painted() const { return painted_; }

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    void upload(int unit, QSize size, const uchar* plane);

    QSize size_;                ///< pixels
    std::vector<uchar> planes_; ///< I420, tightly packed
    GLuint textures_[3] = {};
    QOpenGLShaderProgram program_;
    quint64 painted_ = 0;
};
