#include "e2e/Desktop.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

// What is the same on every system.

const int Desktop::Patience = qEnvironmentVariableIsSet("CORVANTA_E2E_PATIENCE")
                                  ? qEnvironmentVariableIntValue("CORVANTA_E2E_PATIENCE")
                                  : 120000;

void Desktop::pull(const QPoint& from, const QPoint& to, int& steps) {
    constexpr int way = 8;
    const int left = qAbs(++steps % (2 * way) - way);
    moveMouse(from + (to - from) * (way - left) / way);
}

QRect Desktop::screen() {
    return QGuiApplication::primaryScreen()->geometry();
}

QImage Desktop::look(const QRect& area) {
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

QImage Desktop::look() {
    return look(screen());
}
