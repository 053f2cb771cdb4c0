/// A step of the wheel on a map of 12,000 x 8,000 with 500 markers: ours, which draws the picture from halves of
/// itself, against the toolkit's picture item with text items. Median time until the step is drawn.
#include "base/ui/Style.h"
#include "map/ui/ElectronMapwidget.h"
#include "map/ui/MapCanvas.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QGraphicsPixmapItem>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsView>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

namespace map = corvanta::map;

namespace {

constexpr int Markers = 500;
const QSize Picture(12000, 8000);
const QSize Window(1280, 720); // px

QImage plan() {
    QImage image(Picture, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int x = 0; x < Picture.width(); x += 400) {
        painter.fillRect(x, 0, 12, Picture.height(), QColor(90, 90, 90));
        painter.drawText(x + 40, 200 + x % 3000, QStringLiteral("%1").arg(x));
    }
    for (int y = 0; y < Picture.height(); y += 400)
        painter.fillRect(0, y, Picture.width(), 12, QColor(60, 90, 160));
    return image;
}

double placeOf(int i, int prime) {
    return (i * prime % 997) / 997.0;
}

QStringList linesOf(int i) {
    return {QStringLiteral("标记 %1").arg(i), QStringLiteral("温度: %1 ℃").arg(20 + i % 9),
            QStringLiteral("时间:2024-11-22 00:00:00")};
}

/// In and out again, about places of the window.
double median(const std::function<void(const QPoint& place, bool in)>& step) {
    std::vector<double> milliseconds;
    for (int i = 0; i < 60; ++i) {
        const QPoint place(200 + i * 37 % 800, 100 + i * 53 % 500);
        QElapsedTimer timer;
        timer.start();
        step(place, i % 20 < 10);
        milliseconds.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    return milliseconds[milliseconds.size() / 2];
}

double ours(const QImage& image) {
    map::ElectronMapwidget view;
    view.resize(Window);
    view.setPicture(map::PicturePyramid::of(image));
    QList<map::MapMarker> markers;
    for (int i = 0; i < Markers; ++i) {
        map::MapMarker marker;
        marker.x = placeOf(i, 7919);
        marker.y = placeOf(i, 104729);
        marker.pid = i % 2 == 0 ? QString() : QStringLiteral("1");
        markers += marker;
    }
    view.setMarkers(markers);
    for (int i = 0; i < Markers; ++i)
        view.setMarkerText(i, linesOf(i));
    view.show();
    QApplication::processEvents();
    QWidget* const viewport = view.canvas().viewport();
    return median([viewport](const QPoint& place, bool in) {
        QWheelEvent event(place, place, QPoint(), QPoint(0, in ? 120 : -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(viewport, &event);
        viewport->repaint();
    });
}

double theirs(const QImage& image) {
    QGraphicsScene scene;
    auto* const picture = scene.addPixmap(QPixmap::fromImage(image));
    picture->setTransformationMode(Qt::SmoothTransformation);
    for (int i = 0; i < Markers; ++i) {
        auto* const text = scene.addSimpleText(linesOf(i).join(QLatin1Char('\n')));
        text->setFlag(QGraphicsItem::ItemIgnoresTransformations);
        text->setPos(placeOf(i, 7919) * Picture.width(), placeOf(i, 104729) * Picture.height());
    }
    QGraphicsView view(&scene);
    view.resize(Window);
    view.setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
    view.fitInView(picture, Qt::KeepAspectRatio);
    view.show();
    QApplication::processEvents();
    return median([&view](const QPoint&, bool in) {
        view.scale(in ? 1.25 : 0.8, in ? 1.25 : 0.8);
        view.viewport()->repaint();
    });
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    corvanta::applyStyle(); // with it come the drawings
    const QImage image = plan();
    const double own = ours(image);
    const double plain = theirs(image);
    std::printf("map_zoom %.1f ms vs picture_item %.1f ratio %.3f\n", own, plain, own / plain);
    return 0;
}
