#include "base/AppEvents.h"
#include "base/AppPaths.h"
#include "base/DeviceModel.h"
#include "base/Settings.h"
#include "database/SqlHelp.h"
#include "map/MapViewTest.h"
#include "map/ui/MapSession.h"
#include "support/OtherLanguage.h"

#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>

#include <cmath>

using namespace corvanta::map;

/// The module of maps: its files, cells and layouts, what the service tells, and the way from an alarm.
class tst_MapPage : public MapViewTest {
    Q_OBJECT

private slots:
    void filesAreFetchedOnce();
    void iconsOfFriends();
    void aPictureThatIsMissing();
    void brokenDocuments();
    void theServiceTellsOfChanges();
    void sensorsThatAreGone();
    void hints();
    void theLanguageChanges();
    void layouts();
    void openMapsComeBack();
    void theWayFromAnAlarm();
    void hostileNames();
};

void tst_MapPage::filesAreFetchedOnce() {
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

void tst_MapPage::iconsOfFriends() {
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

void tst_MapPage::aPictureThatIsMissing() {
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

void tst_MapPage::brokenDocuments() {
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

void tst_MapPage::theServiceTellsOfChanges() {
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

void tst_MapPage::sensorsThatAreGone() {
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

void tst_MapPage::hints() {
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

void tst_MapPage::theLanguageChanges() {
    QJsonObject gone = markerOf("1", "10", "a");
    gone.insert("ipncid", "vanished");
    const Open map = open({gone});
    auto* const failure = find<QLabel>(*map.page->cell(0), "mapFailure");
    map.page->showLayout(1, false);
    auto* const hint = find<QLabel>(*map.page->cell(1), "mapHint");
    QCOMPARE(hint->text(), QStringLiteral("请右键打开地图!"));
    emit map.view->sigFailed(QString());
    {
        const OtherLanguage other;
        QVERIFY(map.view->label(0)->lines().contains(QStringLiteral("*设备不存在")));
        QCOMPARE(hint->text(), QStringLiteral("*请右键打开地图!"));
        QCOMPARE(failure->text(), QStringLiteral("*地图图片无法读取!"));
        QCOMPARE(find<QToolButton>(*map.page, "mapManage")->toolTip(), QStringLiteral("*管理地图"));
        QCOMPARE(find<QToolButton>(*map.page, "mapLayout4")->accessibleName(), QStringLiteral("*四地图"));
    }
    QCOMPARE(failure->text(), QStringLiteral("地图图片无法读取!"));
}

void tst_MapPage::layouts() {
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

void tst_MapPage::openMapsComeBack() {
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

void tst_MapPage::theWayFromAnAlarm() {
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

void tst_MapPage::hostileNames() {
    const Open map = open({markerOf("1", "10", hostile()), markerOf("2", "", "%1%2%n")});
    const QString first = map.view->label(0)->lines().value(0);
    QVERIFY(first.startsWith("</script>'\"\\&<img src=x onerror=alert(1)>%1 %2") && first.size() <= 200);
    QVERIFY(map.view->label(0)->boundingRect().width() < 400);
    QCOMPARE(map.view->label(1)->lines().value(0), QString("%1%2%n"));
    map.view->grab(); // draws them
}

QTEST_MAIN(tst_MapPage)
#include "tst_MapPage.moc"
