#include "peers/BarePicture.h"

namespace {

constexpr GLfloat vertices[] = {-1, -1, 1, -1, -1, 1, 1, 1};
constexpr GLfloat corners[] = {0, 1, 1, 1, 0, 0, 1, 0};

const char* const vertexSource = "attribute vec4 place; attribute vec2 corner; varying vec2 at;"
                                 "void main() { gl_Position = place; at = corner; }";
const char* const fragmentSource =
    "varying vec2 at; uniform sampler2D y; uniform sampler2D u; uniform sampler2D v;"
    "void main() {"
    "  vec3 yuv = vec3(texture2D(y, at).r, texture2D(u, at).r - 0.5, texture2D(v, at).r - 0.5);"
    "  gl_FragColor = vec4(mat3(1, 1, 1, 0, -0.39465, 2.03211, 1.13983, -0.58060, 0) * yuv, 1);"
    "}";

} // namespace

BarePicture::BarePicture(QSize picture, int seed, QWidget* parent)
    : QOpenGLWidget(parent)
    , size_(picture)
    , planes_(static_cast<std::size_t>(picture.width() * picture.height() * 3 / 2)) {
    unsigned value = static_cast<unsigned>(seed) * 2654435761U + 1;
    for (uchar& byte : planes_) {
        value = value * 1664525U + 1013904223U;
        byte = static_cast<uchar>(value >> 24U);
    }
}

BarePicture::~BarePicture() {
    makeCurrent();
    glDeleteTextures(3, textures_);
    program_.removeAllShaders();
    doneCurrent();
}

void BarePicture::initializeGL() {
    initializeOpenGLFunctions();
    program_.addShaderFromSourceCode(QOpenGLShader::Vertex, vertexSource);
    program_.addShaderFromSourceCode(QOpenGLShader::Fragment, fragmentSource);
    program_.link();
    program_.bind();
    const char* const names[] = {"y", "u", "v"};
    for (int unit = 0; unit < 3; ++unit)
        program_.setUniformValue(names[unit], unit);
    program_.setAttributeArray("place", vertices, 2);
    program_.enableAttributeArray("place");
    program_.setAttributeArray("corner", corners, 2);
    program_.enableAttributeArray("corner");
    glGenTextures(3, textures_);
}

void BarePicture::paintGL() {
    ++painted_;
    const QSize chroma = size_ / 2;
    const uchar* const luma = planes_.data();
    const int lumaBytes = size_.width() * size_.height();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    program_.bind();
    upload(0, size_, luma);
    upload(1, chroma, luma + lumaBytes);
    upload(2, chroma, luma + lumaBytes + lumaBytes / 4);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}

void BarePicture::upload(int unit, QSize size, const uchar* plane) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, textures_[unit]);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RED, size.width(), size.height(), 0, GL_RED, GL_UNSIGNED_BYTE, plane);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}
