// One empty window, 1280x720.

#include <QApplication>
#include <QWidget>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QWidget window;
    window.resize(1280, 720);
    window.show();
    return QApplication::exec();
}
