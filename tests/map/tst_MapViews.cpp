#include "base/AppEvents.h"
#include "base/AppPaths.h"
#include "base/DeviceModel.h"
#include "base/InputFields.h"
#include "base/Settings.h"
#include "database/SqlHelp.h"
#include "map/MapTest.h"
#include "map/MarkerRules.h"
#include "map/ui/ElectronMapwidget.h"
#include "map/ui/FwidgetElectronMap.h"
#include "map/ui/ItemMapWidget.h"
#include "map/ui/MapAlarmlabel.h"
#include "map/ui/MapCanvas.h"
#include "map/ui/MapLabel.h"
#include "map/ui/MapSession.h"
#include "map/ui/SensorMimeData.h"

#include <QDropEvent>
#include <QLabel>
#include <QSignalSpy>
#include <QWheelEvent>

#include <cmath>

using namespace corvanta::map;

/// Maps on pictures, in cells, by mouse and keyboard.
class tst_MapViews : public MapTest {
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
    void whatIsFittedStaysFitted();
    void referencePoints();
    void filesAreFetchedOnce();
    void iconsOfFriends();
    void aPictureThatIsMissing();
    void brokenDocuments();
    void theServiceTellsOfChanges();
    void sensorsThatAreGone();
    void hints();
    void layouts();
    void openMapsComeBack();
    void theWayFromAnAlarm();
    void hostileNames();

private:
    struct Open {
        std::unique_ptr<FwidgetElectronMap> page;
        ItemMapWidget* cell = nullptr;
        ElectronMapwidget* view = nullptr;
        MapCanvas& canvas() const { return view->canvas(); }
        QPoint placeOf(int index) const { return canvas().mapFromScene(view->label(index)->pos()); }
    };
    /// A page whose first cell shows the first map, with its picture.
    Open open(const QJsonArray& markers, bool shared = false);
    static QPoint middle(const MapCanvas& canvas) { return canvas.viewport()->rect().center(); }
    static void drop(MapCanvas& canvas, const QPoint& place, const QString& ipncId, const QString& pid);
    static void openMenu(MapCanvas& canvas, const QPoint& place);
    static void wheel(MapCanvas& canvas, const QPoint& place, int eighths);
};

tst_MapViews::Open tst_MapViews::open(const QJsonArray& markers, bool shared) {
    giveDevices();
    const QJsonArray maps{mapOf("m1", QStringLiteral("一层"), markers)};
    giveMaps(shared ? QJsonArray() : maps, shared ? maps : QJsonArray());
    serveFiles();
    Open result{std::make_unique<FwidgetElectronMap>(context()), nullptr, nullptr};
    result.page->resize(900, 600);
    show(*result.page);
    result.cell = result.page->cell(0);
    result.cell->openMap(QStringLiteral("m1"));
    result.view = dynamic_cast<ElectronMapwidget*>(result.cell->view());
    if (result.view == nullptr || !QTest::qWaitFor([&result] { return result.view->hasPicture(); }))
        qFatal("no picture");
    return result;
}

void tst_MapViews::drop(MapCanvas& canvas, const QPoint& place, const QString& ipncId, const QString& pid) {
    const SensorMimeData data(ipncId, pid);
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas.viewport(), &enter);
    QDropEvent event(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas.viewport(), &event);
}

void tst_MapViews::openMenu(MapCanvas& canvas, const QPoint& place) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, canvas.viewport()->mapToGlobal(place));
    QApplication::sendEvent(canvas.viewport(), &event);
}

void tst_MapViews::wheel(MapCanvas& canvas, const QPoint& place, int eighths) {
    QWheelEvent event(place, canvas.viewport()->mapToGlobal(place), QPoint(), QPoint(0, eighths), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(canvas.viewport(), &event);
}

void tst_MapViews::theCentreStaysTheCentre_data() {
    QTest::addColumn<int>("notches");
    for (const int notches : {-40, -3, -1, 0, 1, 2, 7, 100})
        QTest::addRow("%d", notches) << notches;
}

void tst_MapViews::theCentreStaysTheCentre() {
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

void tst_MapViews::theWheelZoomsAboutTheCursor() {
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

void tst_MapViews::markersAreFitted() {
    const Open map = open({markerOf("1", "10", "a", 0.1, 0.2), markerOf("2", "12", "b", 0.3, 0.25)});
    openMenu(map.canvas(), {5, 5});
    choose("mapCellMenu", "mapMenuFit");
    const QRect room = map.canvas().viewport()->rect();
    QVERIFY(room.contains(map.placeOf(0)) && room.contains(map.placeOf(1)));
    QVERIFY(map.placeOf(1).x() - map.placeOf(0).x() > room.width() / 3);
    QVERIFY(std::abs((map.placeOf(0) + map.placeOf(1)).x() / 2 - room.center().x()) <= 2);
}

void tst_MapViews::aDropIsSubmitted() {
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

void tst_MapViews::aDropThatIsRefused_data() {
    QTest::addColumn<bool>("shared");
    QTest::addColumn<QString>("text");
    QTest::newRow("a friend's map") << true << QStringLiteral("无操作权限!");
    QTest::newRow("not the main account") << false << QStringLiteral("非主账号无操作权限!");
}

void tst_MapViews::aDropThatIsRefused() {
    QFETCH(bool, shared);
    const Open map = open({}, shared);
    answer("submitmapsensor", error("(not main account)"));
    drop(map.canvas(), middle(map.canvas()), "A", "");
    QTEST(tip(), "text");
    QCOMPARE(map.canvas().count(), 0);
    QCOMPARE(sent("submitmapsensor").size(), shared ? 0 : 1);
}

void tst_MapViews::aMoveIsSubmitted() {
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
    QCOMPARE(map.view->label(1)->pos().y(), 200.0);
    QTest::keyClick(&canvas, Qt::Key_Escape);
    QCOMPARE(map.view->label(1)->pos(), QPointF(360, 180));
    QCOMPARE(sent("submitmapsensor").size(), 1);
}

void tst_MapViews::aRefusedMoveIsUndone() {
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

void tst_MapViews::theKeyboardMovesToo() {
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

void tst_MapViews::alarmsOfEveryLevel_data() {
    QTest::addColumn<int>("level");
    for (const int level : {0, 1, 2, 3, 4, 5})
        QTest::addRow("%d", level) << level;
}

void tst_MapViews::alarmsOfEveryLevel() {
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

void tst_MapViews::anAlarmIsCleared() {
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

void tst_MapViews::alarmsStayWithTheirMarkers() {
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

void tst_MapViews::valuesArrive() {
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

void tst_MapViews::labelsUnderTheMouse() {
    QJsonObject marker = markerOf("1", "10", "a");
    marker.insert("showmode", "mousein");
    const Open map = open({marker});
    const MapLabel& label = *map.view->label(0);
    QTest::mouseMove(map.canvas().viewport(), {3, 3});
    QVERIFY(!label.isLabelShown());
    QTest::mouseMove(map.canvas().viewport(), map.placeOf(0));
    QTRY_VERIFY(label.isLabelShown());
    QTest::mouseMove(map.canvas().viewport(), {3, 3});
    QTRY_VERIFY(!label.isLabelShown());
}

// Values that would lie over another marker are folded away until there is room, or somebody looks.
void tst_MapViews::crowdedLabelsFold() {
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

void tst_MapViews::whatIsFittedStaysFitted() {
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

void tst_MapViews::referencePoints() {
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

void tst_MapViews::filesAreFetchedOnce() {
    const QString hash(64, 'c');
    const QJsonObject icons{{"public", QJsonArray{QJsonObject{{"filename", "p.png"}, {"hash", hash}}}},
                            {"user", QJsonArray{QJsonObject{{"filename", "../u.png"}}}}};
    QJsonObject marker = markerOf("1", "10", "a");
    marker.insert("icon", "p.png");
    marker.insert("iconpublic", true);
    giveMaps({mapOf("a", "a", {marker}), mapOf("b", "b"), mapOf("w", "w", {}, "online")}, {}, icons);
    serveFiles();
    MapDocument document(context());
    QTRY_COMPARE(filesAsked(), (QStringList{"a.png", "b.png", "p.png"})); // a name that is a path is no name
    QTRY_VERIFY(!document.map("a")->markers[0].iconPath.isEmpty());
    QVERIFY(document.icon("p.png", true)->filePath.endsWith("/icons/" + hash + ".png"));
    QVERIFY(document.map("a")->filePath.startsWith(context().paths.userInfo() + "maps/"));
    QVERIFY(sent("userdown")
                .contains(QVariantMap{{"type", "icons"},
                                      {"filename", "p.png"},
                                      {"public", true},
                                      {"savepath", document.icon("p.png", true)->filePath}}));
    emit context().events.sig_updateIconlist();
    const MapDocument other(context()); // everything is here
    QTest::qWait(50);
    QCOMPARE(filesAsked().size(), 3);
}

void tst_MapViews::iconsOfFriends() {
    QJsonObject marker = markerOf("1", "10", "a");
    marker.insert("icon", "theirs.png");
    QJsonObject map = mapOf("s", "s", {marker, marker});
    map.insert("userid", "13900139000");
    giveMaps({}, {map});
    serveFiles();
    MapDocument document(context());
    QTRY_VERIFY(document.map("s")->markers[1].iconPath.endsWith("/icons/13900139000/theirs.png"));
    QCOMPARE(filesAsked(), (QStringList{"s.png", "theirs.png"}));
    for (const QVariantMap& asked : sent("userdown"))
        QCOMPARE(asked.value("userid").toString(), QString("13900139000"));
}

void tst_MapViews::aPictureThatIsMissing() {
    giveMaps({mapOf("m1", "m")});
    serveFiles(false);
    FwidgetElectronMap page(context());
    show(page);
    ItemMapWidget* const cell = page.cell(0);
    cell->openMap("m1");
    auto* const failure = find<QLabel>(*cell, "mapFailure");
    QTRY_VERIFY(failure->isVisible());
    QVERIFY(failure->text().contains(QStringLiteral("地图图片下载失败!")));
    const int asked = filesAsked().size();
    emit context().events.sig_updateMapList();
    QTest::qWait(50);
    QCOMPARE(filesAsked().size(), asked); // once each
    serveFiles();
    click(*cell, "mapReload");
    auto* const view = dynamic_cast<ElectronMapwidget*>(cell->view());
    QTRY_VERIFY(view->hasPicture());
    QVERIFY(view->isVisible());
    // One that is no picture.
    QFile file(page.document().map("m1")->filePath);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("nothing");
    file.close();
    cell->closeMap();
    cell->openMap("m1");
    QTRY_VERIFY(failure->isVisible());
    QCOMPARE(failure->text(), QStringLiteral("地图图片无法读取!"));
}

void tst_MapViews::brokenDocuments() {
    giveDevices();
    QJsonObject odd = mapOf("odd", "odd", {17, QJsonObject{{"point", "x"}}, markerOf("1", "10", "a")});
    odd.insert("range", "none");
    giveMaps({odd, mapOf("odd", "twice"), QJsonObject{{"name", "no id"}}, 5, mapOf("x", "x", {}, "hologram"),
              mapOf("w", "w", {}, "online")});
    serveFiles();
    FwidgetElectronMap page(context());
    show(page);
    QCOMPARE(page.document().maps().size(), 3);
    ItemMapWidget* const cell = page.cell(0);
    cell->openMap("odd");
    auto* const view = dynamic_cast<ElectronMapwidget*>(cell->view());
    QTRY_VERIFY(view->hasPicture());
    QCOMPARE(view->canvas().count(), 3);
    cell->openMap("x");
    QCOMPARE(find<QLabel>(*cell, "mapHint")->text(), QStringLiteral("当前版本不支持该类型的地图!"));
    cell->openMap("unknown");
    QCOMPARE(cell->mapId(), QString());
    sdk_.setDocument(R"({"type":"userinfo"})", "[not json");
    emit context().events.sig_updateMapList();
    QVERIFY(page.document().maps().isEmpty());
}

void tst_MapViews::theServiceTellsOfChanges() {
    QSignalSpy maps(&context().events, &AppEvents::sig_updateMapList);
    QSignalSpy icons(&context().events, &AppEvents::sig_updateIconlist);
    const auto tell = [this](const char* type) {
        sdk_.sendToClient(std::string(R"({"type":")") + type + "\"}");
    };
    giveMaps({mapOf("m1", "m")});
    tell("freshlist");
    QTRY_COMPARE(maps.size(), 1);
    tell("freshuserinfo"); // the same
    giveMaps({mapOf("m1", "renamed")});
    tell("freshuserinfo");
    QTRY_COMPARE(maps.size(), 2);
    giveMaps({mapOf("m1", "renamed")}, {}, {{"user", QJsonArray{QJsonObject{{"filename", "i.png"}}}}});
    tell("freshuserinfo");
    QTRY_VERIFY(icons.size() >= 1);
    QCOMPARE(maps.size(), 2);
}

void tst_MapViews::sensorsThatAreGone() {
    QJsonObject gone = markerOf("3", "10", "c");
    gone.insert("ipncid", "vanished");
    const Open map = open({markerOf("1", "10", "a"), markerOf("2", "12", "b", 0.2), gone});
    QVERIFY(map.view->label(2)->lines().contains(QStringLiteral("设备不存在")));
    emit map.view->sigMarkerActivated(2);
    QCOMPARE(tip(), QStringLiteral("设备不存在!"));
    emit context().events.sig_DeleteMapIcon(QString());
    QCOMPARE(map.canvas().count(), 3);
    emit context().events.sig_DeleteMapIcon("10");
    QCOMPARE(map.canvas().count(), 1);
    QCOMPARE(map.view->label(0)->lines().value(0), QString("b"));
    // The map itself.
    giveMaps({});
    emit context().events.sig_updateMapList();
    QTRY_COMPARE(map.cell->mapId(), QString());
}

void tst_MapViews::hints() {
    giveMaps({});
    FwidgetElectronMap page(context());
    page.resize(800, 500);
    show(page);
    auto* const hint = find<QLabel>(*page.cell(0), "mapHint");
    QCOMPARE(hint->text(), QStringLiteral("未添加地图，请点击鼠标右键开始添加地图!"));
    giveMaps({mapOf("m1", hostile())});
    emit context().events.sig_updateMapList();
    QCOMPARE(hint->text(), QStringLiteral("请右键打开地图!"));
    QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 50}, page.cell(0)->mapToGlobal({50, 50}));
    QApplication::sendEvent(page.cell(0), &event);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu != nullptr);
    QStringList texts;
    for (const QAction* const action : menu->actions())
        texts += action->text();
    QCOMPARE(texts, (QStringList{"添加地图", "打开地图", "关闭地图", "管理地图", "自适应标记点"}));
    menu->findChild<QMenu*>("mapMenuOpen")->actions().constFirst()->trigger();
    menu->close();
    QCOMPARE(page.cell(0)->mapId(), QString("m1"));
}

void tst_MapViews::layouts() {
    Settings& settings = context().settings;
    {
        FwidgetElectronMap page(context());
        page.resize(800, 500);
        show(page);
        const QList<QPair<const char*, QSize>> shapes{
            {"mapLayout1", {1, 1}}, {"mapLayout2", {2, 1}}, {"mapLayout4", {2, 2}}, {"mapLayout9", {3, 3}}};
        for (const auto& [name, shape] : shapes) {
            click(page, name);
            int seen = 0;
            for (int i = 0; i < MostCells; ++i)
                seen += page.cell(i) != nullptr && page.cell(i)->isVisible() ? 1 : 0;
            QCOMPARE(seen, shape.width() * shape.height());
            QCOMPARE(settings.get("FwidgetElectronMap_row").toInt(), shape.height());
            QCOMPARE(settings.get("FwidgetElectronMap_col").toInt(), shape.width());
        }
        QCOMPARE(settings.get("MapZoomDisplayIndex").toInt(), 3);
        QTest::mouseDClick(page.cell(4), Qt::LeftButton);
        QCOMPARE(page.zoomed(), 4);
        QVERIFY(page.cell(4)->isVisible() && !page.cell(0)->isVisible());
        QTest::mouseDClick(page.cell(4), Qt::LeftButton);
        QVERIFY(page.cell(0)->isVisible());
    }
    QCOMPARE(FwidgetElectronMap(context()).layoutNumber(), 3);
    QCOMPARE(mapLayout({}, 1, 2), 1);
    QCOMPARE(mapLayout("x", 7, 2), 0);
    QCOMPARE(mapLayout(9, {}, {}), 0);
}

void tst_MapViews::openMapsComeBack() {
    giveMaps({mapOf("a", "名称"), mapOf("b", "b")});
    serveFiles();
    FwidgetElectronMap page(context());
    show(page);
    page.showLayout(2, true);
    page.cell(3)->openMap("a");
    QCOMPARE(context().database.getElectronMap(3).mappid, QString("a"));
    QCOMPARE(context().database.getElectronMap(3).mapname, QStringLiteral("名称"));
    page.showLayout(0, true); // a smaller layout hides it, no more
    QCOMPARE(page.cell(3)->mapId(), QString("a"));
    page.cell(3)->openMap("b");
    QCOMPARE(context().database.getElectronMap(3).mappid, QString("b"));
    // Signed out and in again.
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":""})");
    emit context().events.sig_updateMapList();
    QTRY_COMPARE(page.cell(3)->mapId(), QString());
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    emit context().events.sig_updateMapList();
    QCOMPARE(page.cell(3)->mapId(), QString("b"));
    manager_->onAppClosed();
    QCOMPARE(context().database.getElectronMap(3).mappid, QString());
}

void tst_MapViews::theWayFromAnAlarm() {
    giveDevices();
    QJsonObject other = markerOf("5", "20", "p", 0.9, 0.9);
    other.insert("ipncid", "B");
    giveMaps({mapOf("cam", "cam", {markerOf("1", "", "camera")}), mapOf("own", "own", {markerOf("2", "10", "t")}),
              mapOf("b", "b", {other})});
    serveFiles();
    FwidgetElectronMap page(context());
    page.resize(800, 500);
    show(page);
    page.showAlarm("A", {{"input", 101}, {"threshold", 1}});
    QCOMPARE(page.cell(0)->mapId(), QString("own")); // the one that has the sensor itself
    QCOMPARE(page.cell(0)->session()->alarmOf(0).value_or(0), 1);
    page.showAlarm("B", {{"input", 201}, {"threshold", 3}});
    QCOMPARE(page.cell(0)->mapId(), QString("b"));
    page.showAlarm("A", {}); // about no input: anything of the device
    QCOMPARE(page.cell(0)->mapId(), QString("cam"));
    page.showAlarm("C", {});
    QCOMPARE(tip(), QStringLiteral("该报警的设备未放置在地图上!"));
}

void tst_MapViews::hostileNames() {
    const Open map = open({markerOf("1", "10", hostile()), markerOf("2", "", "%1%2%n")});
    const QString first = map.view->label(0)->lines().value(0);
    QVERIFY(first.startsWith("</script>'\"\\&<img src=x onerror=alert(1)>%1 %2") && first.size() <= 200);
    QVERIFY(map.view->label(0)->boundingRect().width() < 400);
    QCOMPARE(map.view->label(1)->lines().value(0), QString("%1%2%n"));
    map.view->grab(); // draws them
}

QTEST_MAIN(tst_MapViews)
#include "tst_MapViews.moc"
