#include "video/ui/GLYuvWidget.h"

#include <QDebug>
#include <QEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLShader>
#include <QOpenGLShaderProgram>

#include <cstring>
#include <new>

using corvanta::video::byteCount;
using corvanta::video::FrameSize;
using corvanta::video::isUsable;

namespace {

constexpr int vertexLocation = 3;
constexpr int textureLocation = 4;
constexpr int floatsPerVertex = 2;
constexpr int vertexCount = 4;

constexpr GLfloat vertices[] = {-1.0F, -1.0F, 1.0F, -1.0F, -1.0F, 1.0F, 1.0F, 1.0F};
/// Turned upside down against the vertices, so that the first row of a plane is drawn on top.
constexpr GLfloat textureCoordinates[] = {0.0F, 1.0F, 1.0F, 1.0F, 0.0F, 0.0F, 1.0F, 0.0F};

// The runs of blanks are part of the sources.
// clang-format off
const char* const vertexSource =
    "attribute vec4 vertexIn;     "
    "attribute vec2 textureIn;     "
    "varying vec2 textureOut;      "
    "void main(void)               {                                 "
    "gl_Position = vertexIn;         "
    "textureOut = textureIn;     "
    "}";

/// Full-range luma: R = Y + 1.13983 V', G = Y - 0.39465 U' - 0.58060 V', B = Y + 2.03211 U' (the matrix stands column
/// by column), with the chroma taken about 0.5.
const char* const fragmentSource =
    "varying vec2 textureOut;     "
    "uniform sampler2D tex_y;     "
    "uniform sampler2D tex_u;     "
    "uniform sampler2D tex_v;     "
    "void main(void)     {         "
    "vec3 yuv;         "
    "vec3 rgb;         "
    "yuv.x = texture2D(tex_y, textureOut).r;         "
    "yuv.y = texture2D(tex_u, textureOut).r - 0.5;         "
    "yuv.z = texture2D(tex_v, textureOut).r - 0.5;         "
    "rgb = mat3( 1,       1,         1,                     0,       -0.39465,  2.03211,                     1.13983, -0.58060,  0) * yuv;         "
    "gl_FragColor = vec4(rgb, 1);     "
    "}";
// clang-format on

bool tryContext() {
    QOpenGLContext context;
    if (!context.create()) {
        return false;
    }
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    const bool current = context.makeCurrent(&surface);
    context.doneCurrent();
    return current;
}

} // namespace

GLYuvWidget::GLYuvWidget(QWidget* parent)
    : QOpenGLWidget(parent) {
    setObjectName(QStringLiteral("videoRenderer"));
    sayName();
}

void GLYuvWidget::sayName() {
    setAccessibleName(tr("视频画面"));
}

void GLYuvWidget::changeEvent(QEvent* event) {
    QOpenGLWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        sayName();
}

GLYuvWidget::~GLYuvWidget() {
    if (context()) {
        // The base class destroys the context when this part of the object is gone already.
        disconnect(context(), nullptr, this, nullptr);
    }
    releaseOwnGl();
}

bool GLYuvWidget::isSupported() {
    static const bool supported = [] {
        const bool works = tryContext();
        if (!works) {
            qDebug("no OpenGL context can be made: live pictures are not shown");
        }
        return works;
    }();
    return supported;
}

void GLYuvWidget::clearFrame() {
    frame_.reset();
    frameSize_ = {};
    unpainted_ = false;
    update();
}

void GLYuvWidget::slotShowYuv(uchar* picture, uint width, uint height) {
    const FrameSize size{width, height};
    if (picture == nullptr || !isUsable(size)) {
        qDebug() << "renderer refuses a picture of" << width << "x" << height;
        return;
    }
    if (frameSize_ != size) {
        frameSize_ = {};
        tooLargeReported_ = false;
        frame_.reset();
        frame_.reset(new (std::nothrow) std::uint8_t[byteCount(size)]);
        if (!frame_) {
            qDebug() << "no memory for a picture of" << width << "x" << height;
            update();
            return;
        }
        frameSize_ = size;
    }
    std::memcpy(frame_.get(), picture, byteCount(size));
    collapsed_ += unpainted_ ? 1 : 0;
    unpainted_ = true;
    update();
}

void GLYuvWidget::initializeGL() {
    initializeOpenGLFunctions();
    // Moving to another top-level window replaces the context; what lives in the old one goes with it.
    if (context() != nullptr) {
        connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &GLYuvWidget::releaseOwnGl,
                Qt::UniqueConnection);
    }
    glIsReady_ = true;
    glEnable(GL_DEPTH_TEST);
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxTextureSide_);
    if (!buildProgram()) {
        qDebug() << "the picture's shaders do not build:" << program_->log();
        program_.reset();
        return;
    }
    uniformY_ = program_->uniformLocation("tex_y");
    uniformU_ = program_->uniformLocation("tex_u");
    uniformV_ = program_->uniformLocation("tex_v");

    glVertexAttribPointer(vertexLocation, floatsPerVertex, GL_FLOAT, GL_FALSE, 0, vertices);
    glEnableVertexAttribArray(vertexLocation);
    glVertexAttribPointer(textureLocation, floatsPerVertex, GL_FLOAT, GL_FALSE, 0, textureCoordinates);
    glEnableVertexAttribArray(textureLocation);

    const auto makeTexture = [](std::unique_ptr<QOpenGLTexture>& texture) {
        texture = std::make_unique<QOpenGLTexture>(QOpenGLTexture::Target2D);
        texture->create();
        return texture->textureId();
    };
    idY_ = makeTexture(textureY_);
    idU_ = makeTexture(textureU_);
    idV_ = makeTexture(textureV_);

    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
}

bool GLYuvWidget::buildProgram() {
    program_ = std::make_unique<QOpenGLShaderProgram>();
    vertexShader_ = std::make_unique<QOpenGLShader>(QOpenGLShader::Vertex);
    fragmentShader_ = std::make_unique<QOpenGLShader>(QOpenGLShader::Fragment);
    if (!vertexShader_->compileSourceCode(vertexSource) || !fragmentShader_->compileSourceCode(fragmentSource)) {
        return false;
    }
    program_->addShader(vertexShader_.get());
    program_->addShader(fragmentShader_.get());
    program_->bindAttributeLocation("vertexIn", vertexLocation);
    program_->bindAttributeLocation("textureIn", textureLocation);
    return program_->link() && program_->bind();
}

void GLYuvWidget::releaseOwnGl() {
    if (!context()) {
        return;
    }
    makeCurrent();
    releaseGl();
    doneCurrent();
}

void GLYuvWidget::releaseGl() {
    textureY_.reset();
    textureU_.reset();
    textureV_.reset();
    idY_ = idU_ = idV_ = 0;
    program_.reset();
    vertexShader_.reset();
    fragmentShader_.reset();
    glIsReady_ = false;
}

void GLYuvWidget::drawInto(const QRect& place) {
    if (!glIsReady_) {
        initializeGL();
    }
    glViewport(place.x(), place.y(), place.width(), place.height());
    paintGL();
}

void GLYuvWidget::resizeGL(int width, int height) {
    glViewport(0, 0, width, height == 0 ? 1 : height);
}

bool GLYuvWidget::fitsTheDriver() {
    const auto limit = static_cast<unsigned>(maxTextureSide_);
    const bool fits = frameSize_.width <= limit && frameSize_.height <= limit;
    if (!fits && !tooLargeReported_) {
        qDebug() << "a picture of" << frameSize_.width << "x" << frameSize_.height << "is above the driver's"
                 << limit;
        tooLargeReported_ = true;
    }
    return fits;
}

void GLYuvWidget::paintGL() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (!frame_ || !program_ || !fitsTheDriver()) {
        return;
    }
    program_->bind(); // others draw in the same context where a whole wall is drawn at once
    const auto [width, height] = frameSize_;
    const std::size_t lumaBytes = static_cast<std::size_t>(width) * height;
    // Rows are tightly packed, and half a width need not be a multiple of the 4 bytes that GL assumes.
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    uploadPlane(GL_TEXTURE0, idY_, width, height, frame_.get());
    uploadPlane(GL_TEXTURE1, idU_, width / 2, height / 2, frame_.get() + lumaBytes);
    uploadPlane(GL_TEXTURE2, idV_, width / 2, height / 2, frame_.get() + lumaBytes * 5 / 4);
    glUniform1i(uniformY_, 0);
    glUniform1i(uniformU_, 1);
    glUniform1i(uniformV_, 2);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, vertexCount);
    painted_ += unpainted_ ? 1 : 0;
    unpainted_ = false;
}

void GLYuvWidget::uploadPlane(GLenum unit, GLuint texture, unsigned width, unsigned height,
                              const std::uint8_t* plane) {
    glActiveTexture(unit);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RED, static_cast<GLsizei>(width), static_cast<GLsizei>(height), 0, GL_RED,
                 GL_UNSIGNED_BYTE, plane);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}
