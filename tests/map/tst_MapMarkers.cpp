#include "base/AppEvents.h"
#include "base/InputFields.h"
#include "map/MapViewTest.h"
#include "map/MarkerRules.h"
#include "map/ui/MapAlarmlabel.h"
#include "map/ui/MapSession.h"

#include <QSignalSpy>

#include <cmath>

using namespace corvanta::map;

/// Markers and their labels on the picture of a map, by mouse and keyboard.
class tst_MapMarkers : public MapViewTest {
    Q_OBJECT

private slots:
    void theCentreStaysTheCentre_data();
    void theCentreStaysTheCentre();
    void theWheelZoomsAboutTheCursor();
    void markersAreFitted();
    void aDropIsSubmitted();
    void aDropThatIsRefused_data();
    void aDropThatIsRefused();
    void aMoveIsSubmitted();
    void aRefusedMoveIsUndone();
    void theKeyboardMovesToo();
    void alarmsOfEveryLevel_data();
    void alarmsOfEveryLevel();
    void anAlarmIsCleared();
    void alarmsStayWithTheirMarkers();
    void valuesArrive();
    void labelsUnderTheMouse();
    void crowdedLabelsFold();
    void labelsAtTheEdges();
    void whatIsFittedStaysFitted();
    void referencePoints();
};

void tst_MapMarkers::theCentreStaysTheCentre_data() {
    QTest::addColumn<int>("notches");
    for (const int notches : {-40, -3, -1, 0, 1, 2, 7, 100})
        QTest::addRow("%d", notches) << notches;
}

void tst_MapMarkers::theCentreStaysTheCentre() {
    QFETCH(int, notches);
    const Open map = open({markerOf("1", "10", "m")});
    MapCanvas& canvas = map.canvas();
    QVERIFY((map.placeOf(0) - middle(canvas)).manhattanLength() <= 2);
    for (int i = 0; i < std::abs(notches); ++i)
        wheel(canvas, {70 + i, 40}, notches < 0 ? -120 : 120);
    const QRectF picture(canvas.mapFromScene(QPointF(0, 0)), canvas.mapFromScene(QPointF(400, 200)));
    QVERIFY((map.placeOf(0) - picture.center().toPoint()).manhattanLength() <= 2);
    QVERIFY(picture.width() > 100 && canvas.scale() <= 16.001);
    map.page->resize(500, 700);
    QCOMPARE(map.view->label(0)->pos(), QPointF(200, 100)); // exactly, whatever is shown
}

void tst_MapMarkers::theWheelZoomsAboutTheCursor() {
    const Open map = open({});
    MapCanvas& canvas = map.canvas();
    for (const QPoint place : {QPoint(10, 10), QPoint(700, 500), QPoint(450, 300)}) {
        for (const int eighths : {120, 15, 120, -30, 240, -120}) {
            const QPointF before = canvas.mapToScene(place);
            wheel(canvas, place, eighths);
            const QPointF after = canvas.mapToScene(place);
            const double pixel = 1 / canvas.scale();
            QVERIFY(std::hypot(after.x() - before.x(), after.y() - before.y()) <= 2 * pixel + 1e-6);
        }
    }
    QTest::keyClick(&canvas, Qt::Key_0);
    QVERIFY(std::abs(canvas.scale() * 400 - canvas.viewport()->width()) < 2); // all of it, once more
}

void tst_MapMarkers::markersAreFitted() {
    const Open map = open({markerOf("1", "10", "a", 0.1, 0.2), markerOf("2", "12", "b", 0.3, 0.25)});
    openMenu(map.canvas(), {5, 5});
    choose("mapCellMenu", "mapMenuFit");
    const QRect room = map.canvas().viewport()->rect();
    QVERIFY(room.contains(map.placeOf(0)) && room.contains(map.placeOf(1)));
    QVERIFY(map.placeOf(1).x() - map.placeOf(0).x() > room.width() / 3);
    QVERIFY(std::abs((map.placeOf(0) + map.placeOf(1)).x() / 2 - room.center().x()) <= 2);
}

void tst_MapMarkers::aDropIsSubmitted() {
    const Open map = open({});
    answer("submitmapsensor", ok(R"("mapsensorid":"77")"));
    MapCanvas& canvas = map.canvas();
    const QPoint place = canvas.mapFromScene(QPointF(100, 150));
    drop(canvas, place, "B", "20");
    QTRY_COMPARE(map.canvas().count(), 1);
    const QVariantMap asked = sent("submitmapsensor").value(0);
    QCOMPARE(asked.value("mapid").toString(), QString("m1"));
    QCOMPARE(asked.value("ipncid").toString(), QString("B"));
    const MapMarker marker = MapMarker::fromMap(asked.value("sensorinfo").toMap());
    QVERIFY(std::abs(marker.x - 0.25) < 0.005 && std::abs(marker.y - 0.75) < 0.005);
    QCOMPARE(marker.pid, QString("20"));
    QCOMPARE(marker.name, QString("<b>P"));
    QVERIFY(!asked.value("sensorinfo").toMap().contains("lat"));
    QVERIFY((map.placeOf(0) - place).manhattanLength() <= 2);
    QCOMPARE(map.page->document().map("m1")->markers.value(0).id, QString("77"));
    QCOMPARE(log().value(0), QStringLiteral("电子地图|添加标记|<b>P"));
    // Nothing is asked for what cannot be placed.
    drop(canvas, {2, canvas.viewport()->height() - 2}, "B", ""); // beside the picture
    drop(canvas, place, "unknown", "");
    drop(canvas, place, "B", "999");
    drop(canvas, place, "", "20");
    QTest::qWait(50);
    QCOMPARE(sent("submitmapsensor").size(), 1);
}

void tst_MapMarkers::aDropThatIsRefused_data() {
    QTest::addColumn<bool>("shared");
    QTest::addColumn<QString>("text");
    QTest::newRow("a friend's map") << true << QStringLiteral("无操作权限!");
    QTest::newRow("not the main account") << false << QStringLiteral("非主账号无操作权限!");
}

void tst_MapMarkers::aDropThatIsRefused() {
    QFETCH(bool, shared);
    const Open map = open({}, shared);
    answer("submitmapsensor", error("(not main account)"));
    drop(map.canvas(), middle(map.canvas()), "A", "");
    QTEST(tip(), "text");
    QCOMPARE(map.canvas().count(), 0);
    QCOMPARE(sent("submitmapsensor").size(), shared ? 0 : 1);
}

void tst_MapMarkers::aMoveIsSubmitted() {
    const Open map = open({markerOf("1", "10", "a", 0.5, 0.5), markerOf("2", "12", "b", 0.9, 0.9)});
    answer("submitmapsensor", ok());
    MapCanvas& canvas = map.canvas();
    QTest::mouseMove(canvas.viewport(), middle(canvas));
    openMenu(canvas, map.placeOf(0));
    choose("markerMenu", "markerDrag");
    const QPoint target = canvas.mapFromScene(QPointF(80, 50));
    QTest::mousePress(canvas.viewport(), Qt::LeftButton, {}, map.placeOf(0));
    QTest::mouseMove(canvas.viewport(), target);
    QTest::mouseRelease(canvas.viewport(), Qt::LeftButton, {}, target);
    QTRY_COMPARE(sent("submitmapsensor").size(), 1);
    const QVariantMap info = sent("submitmapsensor")[0].value("sensorinfo").toMap();
    QCOMPARE(info.value("sensorid").toString(), QString("1"));
    const MapMarker moved = MapMarker::fromMap(info);
    QVERIFY(std::abs(moved.x - 0.2) < 0.005 && std::abs(moved.y - 0.25) < 0.005);
    QTRY_COMPARE(map.page->document().map("m1")->markers[0].x, moved.x);
    QVERIFY((map.placeOf(0) - target).manhattanLength() <= 2);
    // Beyond the edge it stays on the picture; Escape takes a move back.
    openMenu(canvas, map.placeOf(1));
    choose("markerMenu", "markerDrag");
    QTest::mouseMove(canvas.viewport(), {1, canvas.viewport()->height() - 1});
    QTRY_COMPARE(map.view->label(1)->pos().y(), 200.0);
    QTest::keyClick(&canvas, Qt::Key_Escape);
    QCOMPARE(map.view->label(1)->pos(), QPointF(360, 180));
    QCOMPARE(sent("submitmapsensor").size(), 1);
}

void tst_MapMarkers::aRefusedMoveIsUndone() {
    const Open map = open({markerOf("1", "10", "a")});
    MapCanvas& canvas = map.canvas();
    answer("submitmapsensor", {}); // no answer yet
    const auto moveTo = [&map, &canvas](const QPointF& place) {
        const QPoint target = canvas.mapFromScene(place);
        map.view->beginDrag(0);
        QTest::mouseMove(canvas.viewport(), target);
        QTest::mouseClick(canvas.viewport(), Qt::LeftButton, {}, target);
    };
    moveTo({100, 50});
    QTRY_COMPARE(sent("submitmapsensor").size(), 1);
    const int first = idOfLast();
    // What the service tells meanwhile does not move it.
    giveMaps({mapOf("m1", "new name", {markerOf("1", "10", "other")})});
    emit context().events.sig_updateMapList();
    QVERIFY(map.view->label(0)->pos() != QPointF(200, 100));
    moveTo({300, 150});
    QTRY_COMPARE(sent("submitmapsensor").size(), 2);
    // The first one's refusal is told, but the second is where it is until its own comes.
    sdk_.respond(first, error("(store error)").toStdString());
    QCOMPARE(tip(), QStringLiteral("移动失败!"));
    QVERIFY(map.view->label(0)->pos().x() > 250);
    sdk_.respond(idOfLast(), error("(store error)").toStdString());
    QCOMPARE(tip(), QStringLiteral("移动失败!"));
    QTRY_COMPARE(map.view->label(0)->pos(), QPointF(200, 100));
}

void tst_MapMarkers::theKeyboardMovesToo() {
    const Open map = open({markerOf("1", "10", "a"), markerOf("2", "12", "b", 0.1, 0.1)});
    answer("submitmapsensor", ok());
    MapCanvas& canvas = map.canvas();
    QSignalSpy activated(map.view, &MapView::sigMarkerActivated);
    QTest::keyClick(&canvas, Qt::Key_PageDown);
    QCOMPARE(canvas.current(), 0);
    QVERIFY(canvas.accessibleDescription().startsWith("a"));
    QTest::keyClick(&canvas, Qt::Key_PageUp);
    QCOMPARE(canvas.current(), 1);
    map.view->beginDrag(1);
    QTest::keyClick(&canvas, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&canvas, Qt::Key_Return);
    QTRY_COMPARE(sent("submitmapsensor").size(), 1);
    QVERIFY(map.view->label(1)->pos().x() > 40);
    QCOMPARE(activated.size(), 0);
    answer("delmapsensor", ok());
    QTest::keyClick(&canvas, Qt::Key_Delete);
    QCOMPARE(tip(), QStringLiteral("确定删除标记?"));
    QCOMPARE(tip(), QStringLiteral("删除成功!"));
    QTRY_COMPARE(canvas.count(), 1);
    QCOMPARE(sent("delmapsensor")[0].value("mapsensorid").toString(), QString("2"));
}

void tst_MapMarkers::alarmsOfEveryLevel_data() {
    QTest::addColumn<int>("level");
    for (const int level : {0, 1, 2, 3, 4, 5})
        QTest::addRow("%d", level) << level;
}

void tst_MapMarkers::alarmsOfEveryLevel() {
    QFETCH(int, level);
    const Open map = open({markerOf("1", "12", "a"), markerOf("2", "10", "b")});
    emit context().events.sig_triggerAlarm({{"input", 101}, {"threshold", level}});
    QVERIFY(map.view->label(0)->alarm() == nullptr);
    const MapAlarmlabel* const alarm = map.view->label(1)->alarm();
    QVERIFY(alarm != nullptr);
    QCOMPARE(alarm->picture(), alarmPicture(level));
    QCOMPARE(alarm->isRunning(), level >= 1 && level <= 4);
    // Another one replaces it.
    emit context().events.sig_triggerAlarm({{"input", 102}, {"threshold", 3}});
    QCOMPARE(map.view->label(1)->alarm()->level(), 3);
    QCOMPARE(map.view->label(1)->alarm()->picture(), alarmPicture(3));
}

void tst_MapMarkers::anAlarmIsCleared() {
    const Open map = open({markerOf("1", "10", "a")});
    openMenu(map.canvas(), map.placeOf(0));
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu != nullptr && !menu->findChild<QAction*>("markerClearAlarm")->isEnabled());
    menu->close();
    emit context().events.sig_triggerAlarm({{"input", 101}, {"threshold", 1}});
    QVERIFY(map.view->label(0)->alarm() != nullptr);
    openMenu(map.canvas(), map.placeOf(0));
    choose("markerMenu", "markerClearAlarm");
    QTRY_VERIFY(map.view->label(0)->alarm() == nullptr);
    QVERIFY(!map.cell->session()->alarmOf(0));
}

void tst_MapMarkers::alarmsStayWithTheirMarkers() {
    const Open map = open({markerOf("1", "12", "a"), markerOf("2", "10", "b")});
    emit context().events.sig_triggerAlarm({{"input", 101}, {"threshold", 2}});
    // One more before it; and the one before it gone.
    giveMaps({mapOf("m1", "m", {markerOf("9", "12", "new"), markerOf("1", "12", "a"), markerOf("2", "10", "b")})});
    emit context().events.sig_updateMapList();
    QCOMPARE(map.canvas().count(), 3);
    QVERIFY(map.view->label(1)->alarm() == nullptr && map.view->label(2)->alarm() != nullptr);
    giveMaps({mapOf("m1", "m", {markerOf("2", "10", "b", 0.25)})});
    emit context().events.sig_updateMapList();
    QCOMPARE(map.canvas().count(), 1);
    QVERIFY(map.view->label(0)->alarm() != nullptr);
    QCOMPARE(map.view->label(0)->pos(), QPointF(100, 100));
    // A map that is closed forgets.
    map.cell->closeMap();
    map.cell->openMap("m1");
    QVERIFY(!map.cell->session()->alarmOf(0));
}

void tst_MapMarkers::valuesArrive() {
    QJsonObject fixed = markerOf("2", "10", "b", 0.1);
    fixed.insert("isupdate", false);
    QJsonObject bare = markerOf("3", "10", "c", 0.2);
    bare.insert("showdatas", false);
    const Open map = open({markerOf("1", "10", "a"), fixed, bare});
    QCOMPARE(map.view->label(0)->lines().value(1), QStringLiteral("T: 21.5 ℃"));
    const QStringList before = map.view->label(1)->lines();
    InputFields& fields = context().inputFields;
    fields.set("value", 101, 30);
    fields.set("state", 101, 1);
    fields.set("latesttime", 101, qint64(1732233600));
    emit context().events.sig_UpdateSensorInputData({}, {QVariantMap{{"pid", 101}}, 7, QVariantMap{{"pid", "x"}}});
    QTRY_COMPARE(map.view->label(0)->lines().value(1), QStringLiteral("T: 30 ℃"));
    QVERIFY(map.view->label(0)->lines().constLast().startsWith(QStringLiteral("时间:2024-11-2")));
    QCOMPARE(map.view->label(1)->lines(), before);
    QCOMPARE(map.view->label(2)->lines(), QStringList("c"));
}

void tst_MapMarkers::labelsUnderTheMouse() {
    QJsonObject marker = markerOf("1", "10", "a");
    marker.insert("showmode", "mousein");
    const Open map = open({marker});
    const MapLabel& label = *map.view->label(0);
    QTest::mouseMove(map.canvas().viewport(), {3, 3});
    QTRY_VERIFY(!label.isLabelShown());
    QTest::mouseMove(map.canvas().viewport(), map.placeOf(0));
    QTRY_VERIFY(label.isLabelShown());
    QTest::mouseMove(map.canvas().viewport(), {3, 3});
    QTRY_VERIFY(!label.isLabelShown());
}

// Values that would lie over another marker are folded away until there is room, or somebody looks.
void tst_MapMarkers::crowdedLabelsFold() {
    const Open map =
        open({markerOf("1", "10", "a", 0.45), markerOf("2", "10", "b", 0.47), markerOf("3", "10", "c", 0.9)});
    const auto folded = [&map] {
        QString result;
        for (int i = 0; i < 3; ++i)
            result += map.view->label(i)->isFolded() ? 'f' : '-';
        return result;
    };
    QTRY_COMPARE(folded(), QStringLiteral("ff-"));
    MapLabel& first = *map.view->label(0);
    const QRectF small = first.boundingRect();
    QTest::mouseMove(map.canvas().viewport(), map.placeOf(0));
    QTRY_VERIFY(first.boundingRect().height() > small.height());
    QTest::mouseMove(map.canvas().viewport(), QPoint(2, 2));
    QTRY_COMPARE(first.boundingRect(), small);
    map.canvas().zoomStep(12);
    QTRY_COMPARE(folded(), QStringLiteral("---"));
    map.canvas().fitPicture();
    QTRY_COMPARE(folded(), QStringLiteral("ff-"));
    map.view->removeMarker(0);
    QTRY_VERIFY(!map.view->label(0)->isFolded());
}

// At the edges of what is seen a label stays in view: above its marker, or moved to the side.
void tst_MapMarkers::labelsAtTheEdges() {
    const Open map = open({markerOf("1", "10", "a name of some length", 0.5, 0.5)});
    MapCanvas& canvas = map.canvas();
    canvas.zoomStep(12);
    MapLabel& label = *map.view->label(0);
    const QRectF seen = canvas.viewport()->rect();
    /// Scrolls until the marker is seen at a place of the view.
    const auto show = [&](const QPointF& place) {
        canvas.centerOn(label.pos() + (seen.center() - place) / canvas.scale());
    };
    const auto room = [&] {
        return label.nameRoom().translated(map.placeOf(0));
    };
    show({seen.center().x(), seen.bottom() - 20});
    QTRY_VERIFY(room().bottom() < map.placeOf(0).y());
    QVERIFY(seen.contains(room()));
    show({seen.left() + 5, seen.center().y()});
    QTRY_VERIFY(room().top() > map.placeOf(0).y() && seen.contains(room()));
    show({seen.right() - 5, seen.center().y()});
    QTRY_VERIFY(label.nameRoom().center().x() < 0 && seen.contains(room()));
    show(seen.center());
    QTRY_COMPARE(label.nameRoom().center().x(), 0.0);
}

void tst_MapMarkers::whatIsFittedStaysFitted() {
    const Open map = open({markerOf("1", "10", "a", 0.4), markerOf("2", "", "b", 0.6)});
    map.view->fitMarkers();
    for (const QSize& size : {QSize(500, 400), QSize(1100, 700)}) {
        const double before = map.canvas().scale();
        map.page->resize(size);
        QTRY_VERIFY(map.canvas().scale() != before);
        const QPoint centre = (map.placeOf(0) + map.placeOf(1)) / 2;
        QVERIFY((centre - middle(map.canvas())).manhattanLength() <= 4);
        QVERIFY(map.canvas().viewport()->rect().contains(map.placeOf(1)));
    }
    map.canvas().zoomStep(1); // from now on it is the user's
    const double chosen = map.canvas().scale();
    map.page->resize(900, 600);
    QCOMPARE(map.canvas().scale(), chosen);
}

void tst_MapMarkers::referencePoints() {
    QJsonObject marker = markerOf("1", "12", "a");
    marker.insert("protocol", "4353");
    const auto at = [](const char* x, const char* y) {
        return QJsonObject{{"x", x}, {"y", y}};
    };
    marker.insert("info", QJsonObject{{"locations", QJsonArray{at("10", "5"), at("900", "5"), at("40", "20")}}});
    const Open map = open({marker});
    QMap<QString, QPointF> shown;
    for (const QGraphicsItem* const item : map.canvas().scene()->items()) {
        if (const auto* const label = dynamic_cast<const MapLabel*>(item))
            shown.insert(label->lines().value(0), label->pos());
    }
    QCOMPARE(shown.size(), 3); // the second lies beside the picture
    QCOMPARE(shown.value(QStringLiteral("参考点1")), QPointF(100, 50));
    QCOMPARE(shown.value(QStringLiteral("参考点3")), QPointF(400, 200));
}

QTEST_MAIN(tst_MapMarkers)
#include "tst_MapMarkers.moc"
