// One empty OpenGL widget in a window, 1280x720: what the toolkit and the driver take before a program does anything.

#include <QApplication>
#include <QMainWindow>
#include <QOpenGLFunctions>
#include <QOpenGLWidget>

#include <cstdio>

namespace {

class Picture final : public QOpenGLWidget {
    void paintGL() override {
        QOpenGLFunctions* const gl = context()->functions();
        gl->glClearColor(0.1F, 0.2F, 0.3F, 1.0F);
        gl->glClear(GL_COLOR_BUFFER_BIT);
        if (!told_) {
            std::puts("shown");
            std::fflush(stdout);
        }
        told_ = true;
    }

    bool told_ = false;
};

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new Picture);
    window.resize(1280, 720);
    window.show();
    return QApplication::exec();
}
