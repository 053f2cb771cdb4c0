#include "map/MapViewTest.h"

#include "map/ui/SensorMimeData.h"

#include <QDropEvent>
#include <QScreen>
#include <QTest>
#include <QWheelEvent>

using namespace corvanta::map;

MapViewTest::Open MapViewTest::open(const QJsonArray& markers, bool shared) {
    giveDevices();
    const QJsonArray maps{mapOf("m1", QStringLiteral("一层"), markers)};
    giveMaps(shared ? QJsonArray() : maps, shared ? maps : QJsonArray());
    serveFiles();
    Open result{std::make_unique<FwidgetElectronMap>(context()), nullptr, nullptr};
    result.page->resize(900, 600);
    // What the pointer did in the test before may be told late, and would move what is dragged in this one.
    const QPoint corner = QGuiApplication::primaryScreen()->geometry().bottomRight();
    QCursor::setPos(corner);
    if (!QTest::qWaitFor([&corner] { return QCursor::pos() == corner; }))
        qFatal("no pointer");
    show(*result.page);
    QCoreApplication::processEvents();
    result.cell = result.page->cell(0);
    result.cell->openMap(QStringLiteral("m1"));
    result.view = dynamic_cast<ElectronMapwidget*>(result.cell->view());
    if (result.view == nullptr || !QTest::qWaitFor([&result] { return result.view->hasPicture(); }))
        qFatal("no picture");
    return result;
}

void MapViewTest::drop(MapCanvas& canvas, const QPoint& place, const QString& ipncId, const QString& pid) {
    const SensorMimeData data(ipncId, pid);
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas.viewport(), &enter);
    QDropEvent event(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas.viewport(), &event);
}

void MapViewTest::openMenu(MapCanvas& canvas, const QPoint& place) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, canvas.viewport()->mapToGlobal(place));
    QApplication::sendEvent(canvas.viewport(), &event);
}

void MapViewTest::wheel(MapCanvas& canvas, const QPoint& place, int eighths) {
    QWheelEvent event(place, canvas.viewport()->mapToGlobal(place), QPoint(), QPoint(0, eighths), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(canvas.viewport(), &event);
}
