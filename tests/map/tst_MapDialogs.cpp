#include "base/AppEvents.h"
#include "base/InputFields.h"
#include "map/MapTest.h"
#include "map/MarkerRules.h"
#include "map/ui/AddMapwidget.h"
#include "map/ui/ManageMapWidget.h"
#include "map/ui/MapIconDeleteDialog.h"
#include "map/ui/MapMangerMarkDialog.h"
#include "map/ui/MapMarkDataTabelDialog.h"
#include "map/ui/MapMarkVideoDiolag.h"
#include "map/ui/MapSetIocnDialog.h"
#include "map/ui/ReferencePointDialog.h"
#include "map/ui/SetElectronMapDialog.h"
#include "video/ui/ItemVideo.h"

#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTreeWidget>

#include <array>

using namespace corvanta::map;

/// The dialogs of maps against a service that answers by script.
class tst_MapDialogs : public MapTest {
    Q_OBJECT

private slots:
    void aMapIsAdded();
    void anUploadIsEnded();
    void anOnlineMapIsAdded();
    void aMapIsEdited();
    void theListOfMaps();
    void whatIsNotOnesOwn_data();
    void whatIsNotOnesOwn();
    void aMapIsDeleted();
    void aMapIsShared();
    void aMarkerIsSet();
    void aMarkerOfTheWorld();
    void theIconLibrary();
    void anIconIsUploaded();
    void markersAreDeleted();
    void referencePointsAreSet();
    void theVideoOfAMarker();
    void theTableOfAMarker();
    void controlsAreNamed();

private:
    QString picture(const char* name, const QSize& size = {64, 36}) {
        const QString path = dir_->filePath(QLatin1String(name));
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::red);
        return image.save(path) ? path : QString();
    }
    static void select(const QWidget& dialog, const QString& text) {
        auto* const list = find<QTreeWidget>(dialog, "list");
        list->clearSelection();
        const auto found = list->findItems(text, Qt::MatchExactly, 1);
        QCOMPARE(found.size(), 1);
        list->setCurrentItem(found[0]);
    }
    QVariantMap flow() { return flows("userupload").value(0); }
};

void tst_MapDialogs::aMapIsAdded() {
    answerFlow({}); // answered below
    AddMapwidget dialog(context(), nullptr);
    QSignalSpy added(&dialog, &AddMapwidget::sigAdded);
    QSignalSpy lists(&context().events, &AppEvents::sig_updateMapList);
    show(dialog);
    const auto refused = [&dialog] {
        click(dialog, "mapSave");
        return tip();
    };
    QCOMPARE(find<QLabel>(dialog, "mapRatioHint")->text(), QStringLiteral("导入图片长宽比参考：16：9"));
    QCOMPARE(refused(), QStringLiteral("请输入地图名称!"));
    type(dialog, "mapName", QStringLiteral("一'层\"%1"));
    QCOMPARE(refused(), QStringLiteral("请选择地图!"));
    find<QLineEdit>(dialog, "mapPicture")->setText(dir_->filePath("none.png"));
    QCOMPARE(refused(), QStringLiteral("请输入实际距离!"));
    type(dialog, "mapDistanceX", "40");
    QCOMPARE(refused(), QStringLiteral("请输入实际距离!"));
    type(dialog, "mapDistanceY", "22.5");
    QCOMPARE(refused(), QStringLiteral("文件无法读取!"));
    QFile text(dir_->filePath("text.png"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no picture") > 0);
    text.close();
    find<QLineEdit>(dialog, "mapPicture")->setText(text.fileName());
    QCOMPARE(refused(), QStringLiteral("请选择png或jpg格式的图片!"));
    QCOMPARE(sentCount(), 0);

    const QString path = picture("plan.jpg");
    find<QLineEdit>(dialog, "mapPicture")->setText(path);
    click(dialog, "mapSave");
    QTRY_COMPARE(flows("userupload").size(), 1);
    QCOMPARE(flow().value("type").toString(), QString("maps"));
    QCOMPARE(flow().value("mimetype").toString(), QString("image/jpeg"));
    QCOMPARE(flow().value("uploadpath").toString(), path);
    const QVariantMap distance{{"w", "40"}, {"h", "22.5"}};
    QCOMPARE(flow().value("mapinfo").toMap(), (QVariantMap{{"name", QStringLiteral("一'层\"%1")},
                                                           {"type", "local"},
                                                           {"range", QVariantMap{{"distance", distance}}}}));
    QVERIFY(!find<QAbstractButton>(dialog, "mapSave")->isEnabled());
    sdk_.respond(idOfLast(), R"({"type":"userupload","retcode":0,"state":"progress","done":5,"total":10})");
    auto* const bar = find<QProgressBar>(dialog, "uploadBar");
    QTRY_COMPARE(bar->value(), 500);
    QVERIFY(bar->isVisible());
    // A refusal leaves everything as it was entered.
    sdk_.respond(idOfLast(), error("(file error)").toStdString());
    QCOMPARE(tip(), QStringLiteral("文件无法读取或格式不正确!"));
    QVERIFY(!bar->isVisible() && dialog.isVisible());
    answerFlow(ok(R"("mapid":"m7","filename":"x.jpg")"));
    click(dialog, "mapSave");
    QCOMPARE(tip(), QStringLiteral("上传地图成功!"));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(added.value(0).value(0).toString(), QString("m7"));
    QCOMPARE(lists.size(), 1);
    QCOMPARE(log(), QStringList(QStringLiteral("电子地图|添加地图|一'层\"%1")));
}

void tst_MapDialogs::anUploadIsEnded() {
    answerFlow({});
    AddMapwidget dialog(context(), nullptr);
    show(dialog);
    type(dialog, "mapName", "n");
    type(dialog, "mapDistanceX", "1");
    type(dialog, "mapDistanceY", "1");
    find<QLineEdit>(dialog, "mapPicture")->setText(picture("p.png"));
    click(dialog, "mapSave");
    QTRY_COMPARE(flows("userupload").size(), 1);
    const int id = idOfLast();
    click(dialog, "uploadCancel");
    QVERIFY(sdk_.stopped() == std::vector<int>{id});
    sdk_.respond(id, ok().toStdString()); // too late
    QTest::qWait(30);
    QVERIFY(dialog.isVisible() && !isTipOpen() && find<QAbstractButton>(dialog, "mapSave")->isEnabled());
}

void tst_MapDialogs::anOnlineMapIsAdded() {
    answer("submitmap", ok(R"("mapid":"9")"));
    AddMapwidget dialog(context(), nullptr);
    show(dialog);
    QTest::mouseClick(find<QRadioButton>(dialog, "mapOnline"), Qt::LeftButton, {}, {8, 8});
    QVERIFY(!find<QLineEdit>(dialog, "mapDistanceX")->isVisible());
    type(dialog, "mapName", QStringLiteral(" 世界 "));
    click(dialog, "mapSave");
    QCOMPARE(tip(), QStringLiteral("保存成功!"));
    QCOMPARE(sent("submitmap")[0].value("mapinfo").toMap(),
             (QVariantMap{{"name", QStringLiteral("世界")}, {"type", "online"}}));
}

void tst_MapDialogs::aMapIsEdited() {
    answer("submitmap", error("(not main account)"));
    const MapRecord map = MapRecord::fromMap(mapOf("m1", hostile()).toVariantMap(), false);
    SetElectronMapDialog dialog(context(), map, nullptr);
    show(dialog);
    QCOMPARE(find<QLineEdit>(dialog, "mapName")->text().size(), hostile().size()); // nothing of it is cut
    QCOMPARE(find<QLineEdit>(dialog, "mapDistanceX")->text(), QString("40"));
    type(dialog, "mapName", " ");
    click(dialog, "mapSave");
    QCOMPARE(tip(), QStringLiteral("请输入地图名称!"));
    type(dialog, "mapName", "n");
    type(dialog, "mapDistanceY", "");
    click(dialog, "mapSave");
    QCOMPARE(tip(), QStringLiteral("请输入实际距离!"));
    type(dialog, "mapDistanceY", "30");
    click(dialog, "mapSave");
    QCOMPARE(tip(), QStringLiteral("非主账号无操作权限!"));
    QVERIFY(dialog.isVisible());
    answer("submitmap", ok());
    click(dialog, "mapSave");
    QCOMPARE(tip(), QStringLiteral("保存成功!"));
    const QVariantMap distance{{"w", "40"}, {"h", "30"}};
    QCOMPARE(sent("submitmap")[1].value("mapinfo").toMap(),
             (QVariantMap{
                 {"mapid", "m1"}, {"name", "n"}, {"type", "local"}, {"range", QVariantMap{{"distance", distance}}}}));
}

void tst_MapDialogs::theListOfMaps() {
    giveMaps({mapOf("1", "own"), mapOf("2", "web", {}, "online"), mapOf("4", "odd", {}, "<i>")},
             {mapOf("3", "shared")});
    MapDocument document(context());
    ManageMapWidget dialog(
        context(), document, [](const QString&) { return false; }, nullptr);
    show(dialog);
    auto* const list = find<QTreeWidget>(dialog, "list");
    QStringList rows;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < list->columnCount(); ++column)
            texts += list->topLevelItem(row)->text(column);
        rows += texts.join('|');
    }
    QCOMPARE(rows, (QStringList{"1|own|自定义地图|本账号", "2|web|在线地图|本账号", "3|odd|未知|本账号",
                                "4|shared|自定义地图|其他账号"}));
    QStringList headers;
    for (int column = 0; column < list->columnCount(); ++column)
        headers += list->headerItem()->text(column);
    QCOMPARE(headers, (QStringList{"编号", "地图名称", "地图模式", "归属"}));
    giveMaps({});
    emit context().events.sig_updateMapList();
    QCOMPARE(list->topLevelItemCount(), 0);
}

void tst_MapDialogs::whatIsNotOnesOwn_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("none");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("edit") << "mapListEdit"
                          << "请选择要编辑的地图!"
                          << "无编辑地图权限!";
    QTest::newRow("markers") << "mapListMarkers"
                             << "请选择要管理标记的地图!"
                             << "无操作权限!";
    QTest::newRow("share") << "mapListShare"
                           << "请选择要分享的地图!"
                           << "无操作权限!";
    QTest::newRow("delete") << "mapListDelete"
                            << "请选择要删除的地图!"
                            << "无删除地图权限!";
}

void tst_MapDialogs::whatIsNotOnesOwn() {
    QFETCH(QString, button);
    giveMaps({}, {mapOf("3", "shared", {markerOf("1", "10", "m")})});
    MapDocument document(context());
    ManageMapWidget dialog(
        context(), document, [](const QString&) { return true; }, nullptr);
    show(dialog);
    const int before = sentCount();
    click(dialog, button.toLatin1());
    QTEST(tip(), "none");
    select(dialog, "shared");
    click(dialog, button.toLatin1());
    QTEST(tip(), "refusal");
    QCOMPARE(sentCount(), before);
}

void tst_MapDialogs::aMapIsDeleted() {
    giveMaps({mapOf("open", "open"), mapOf("full", "full", {markerOf("1", "10", "m")}), mapOf("free", "free")});
    answer("delmap", ok());
    MapDocument document(context());
    ManageMapWidget dialog(
        context(), document, [](const QString& id) { return id == "open"; }, nullptr);
    show(dialog);
    select(dialog, "open");
    click(dialog, "mapListDelete");
    QCOMPARE(tip(), QStringLiteral("当前地图已经打开,无法删除!"));
    select(dialog, "full");
    click(dialog, "mapListDelete");
    QCOMPARE(tip(), QStringLiteral("请先删除该地图上的所有标记点!"));
    select(dialog, "free");
    click(dialog, "mapListDelete");
    QCOMPARE(tip(false), QStringLiteral("确认要删除该地图吗？"));
    QVERIFY(sent("delmap").isEmpty());
    click(dialog, "mapListDelete");
    tip();
    QCOMPARE(tip(), QStringLiteral("删除地图成功!"));
    QCOMPARE(sent("delmap"), (QList<QVariantMap>{{{"mapid", "free"}}}));
    QCOMPARE(log(), QStringList(QStringLiteral("电子地图|删除地图|free")));
}

void tst_MapDialogs::aMapIsShared() {
    QJsonObject map = mapOf("1", "own");
    map.insert("friends", QJsonArray{"13900000002"});
    giveMaps({map});
    answer("getfriends",
           ok(R"("friendlist":[{"friendphone":"13900000001","name":"a"},{"friendphone":"13900000002"}])"));
    answer("setmapshare", ok());
    MapDocument document(context());
    ManageMapWidget dialog(
        context(), document, [](const QString&) { return false; }, nullptr);
    show(dialog);
    select(dialog, "own");
    click(dialog, "mapListShare");
    QDialog* picker = nullptr;
    QTRY_VERIFY((picker = dialog.findChild<QDialog*>("CheckPicker")) != nullptr);
    auto* const list = find<QTreeWidget>(*picker, "pickList");
    QCOMPARE(list->topLevelItem(0)->checkState(0), Qt::Unchecked);
    QCOMPARE(list->topLevelItem(1)->checkState(0), Qt::Checked);
    list->topLevelItem(0)->setCheckState(0, Qt::Checked);
    list->topLevelItem(1)->setCheckState(0, Qt::Unchecked);
    click(*picker, "pickOk");
    QCOMPARE(tip(), QStringLiteral("保存成功!"));
    QCOMPARE(sent("setmapshare"),
             (QList<QVariantMap>{{{"mapid", "1"}, {"friendphones", QStringList("13900000001")}}}));
}

void tst_MapDialogs::aMarkerIsSet() {
    giveDevices();
    giveMaps({mapOf("m1", "m", {markerOf("1", "10", "old", 0.123456789012345, 0.5)})});
    answer("submitmapsensor", error("(not marker)"));
    MapDocument document(context());
    const MapRecord map = *document.map("m1");
    MapMangerMarkDialog dialog(context(), document, map, map.markers[0], nullptr);
    show(dialog);
    auto* const inputs = find<QTreeWidget>(dialog, "markInputs");
    QStringList headers;
    for (int column = 0; column < inputs->columnCount(); ++column)
        headers += inputs->headerItem()->text(column);
    QCOMPARE(headers, (QStringList{"编号", "设备", "传感器", "采集输入", "是否显示"}));
    QCOMPARE(inputs->topLevelItemCount(), 2);
    type(dialog, "markName", " ");
    click(dialog, "markSave");
    QCOMPARE(tip(), QStringLiteral("请输入显示名称!"));
    type(dialog, "markName", hostile());
    type(dialog, "markSecond", "1.5");
    click(dialog, "markSave");
    QCOMPARE(tip(), QStringLiteral("Y坐标应在0到1之间!"));
    type(dialog, "markSecond", "0.75");
    inputs->topLevelItem(0)->setCheckState(4, Qt::Unchecked);
    QTest::mouseClick(find<QRadioButton>(dialog, "markMouseIn"), Qt::LeftButton, {}, {8, 8});
    QTest::mouseClick(find<QCheckBox>(dialog, "markIsUpdate"), Qt::LeftButton, {}, {8, 8});
    click(dialog, "markSave");
    tip();
    QVERIFY(dialog.isVisible());
    answer("submitmapsensor", ok());
    click(dialog, "markSave");
    QCOMPARE(tip(), QStringLiteral("保存成功!"));
    const MapMarker saved = MapMarker::fromMap(sent("submitmapsensor")[1].value("sensorinfo").toMap());
    QCOMPARE(saved.name, hostile().left(64));
    QCOMPARE(saved.x, 0.123456789012345); // what was not touched keeps all its digits
    QCOMPARE(saved.y, 0.75);
    QCOMPARE(saved.inputs.value_or(QList<int>()), QList<int>{102});
    QVERIFY(saved.showMode == ShowMode::MouseIn && !saved.isUpdate && saved.showDatas && saved.id == "1");
    QCOMPARE(document.map("m1")->markers[0].y, 0.75);
}

void tst_MapDialogs::aMarkerOfTheWorld() {
    giveDevices();
    giveMaps({mapOf("w", "w", {markerOf("1", "", "c")}, "online")});
    answer("submitmapsensor", ok());
    MapDocument document(context());
    const MapRecord map = *document.map("w");
    MapMangerMarkDialog dialog(context(), document, map, map.markers[0], nullptr);
    show(dialog);
    QCOMPARE(find<QTreeWidget>(dialog, "markInputs")->topLevelItemCount(),
             3); // of all sensors of the camera's device
    QCOMPARE(find<QLineEdit>(dialog, "markFirst")->accessibleName(), QStringLiteral("经度"));
    type(dialog, "markFirst", "-200");
    click(dialog, "markSave");
    QCOMPARE(tip(), QStringLiteral("经度应在-180到180之间!"));
    type(dialog, "markFirst", "116.4");
    type(dialog, "markSecond", "39.9");
    click(dialog, "markSave");
    tip();
    const QVariantMap info = sent("submitmapsensor")[0].value("sensorinfo").toMap();
    QCOMPARE(info.value("lng").toDouble(), 116.4);
    QCOMPARE(info.value("lat").toDouble(), 39.9);
    QVERIFY(!info.contains("point"));
}

void tst_MapDialogs::theIconLibrary() {
    giveMaps({}, {},
             {{"public", QJsonArray{QJsonObject{{"filename", "door.png"}}}},
              {"user", QJsonArray{QJsonObject{{"filename", hostile().left(60).remove('/')}},
                                  QJsonObject{{"filename", "mine.png"}}}}});
    serveFiles();
    answer("deluserfile", ok());
    MapDocument document(context());
    MapSetIocnDialog dialog(context(), document, nullptr);
    QSignalSpy chosen(&dialog, &MapSetIocnDialog::sigChosen);
    show(dialog);
    auto* const list = find<QListWidget>(dialog, "iconList");
    QCOMPARE(list->count(), 3);
    QTRY_VERIFY(!document.icon("mine.png", false)->filePath.isEmpty());
    click(dialog, "iconSet");
    QCOMPARE(tip(), QStringLiteral("请选择要设置的图标!"));
    click(dialog, "iconDelete");
    QCOMPARE(tip(), QStringLiteral("请选择要删除的图标!"));
    list->setCurrentRow(0);
    click(dialog, "iconDelete");
    QCOMPARE(tip(), QStringLiteral("公共图标无法删除!"));
    list->setCurrentRow(2);
    click(dialog, "iconDelete");
    tip();
    QCOMPARE(tip(), QStringLiteral("删除图标成功!"));
    QCOMPARE(sent("deluserfile"), (QList<QVariantMap>{{{"type", "icons"}, {"filename", "mine.png"}}}));
    list->setCurrentRow(0);
    click(dialog, "iconSet");
    QCOMPARE(chosen.size(), 1);
    const auto icon = chosen[0][0].value<MapIcon>();
    QVERIFY(icon.fileName == "door.png" && icon.isPublic);
}

void tst_MapDialogs::anIconIsUploaded() {
    giveMaps({}, {}, {{"user", QJsonArray{QJsonObject{{"filename", "mine.png"}}}}});
    answerFlow(ok(R"("filename":"new.png")"));
    MapDocument document(context());
    MapSetIocnDialog dialog(context(), document, nullptr);
    QSignalSpy lists(&context().events, &AppEvents::sig_updateIconlist);
    show(dialog);
    find<QTabWidget>(dialog, "iconTabs")->setCurrentIndex(1);
    auto* const path = find<QLineEdit>(dialog, "iconPath");
    const auto upload = [&](const QString& file) {
        path->setText(file);
        click(dialog, "iconUpload");
        return tip();
    };
    QCOMPARE(upload({}), QStringLiteral("请先选择要添加的图标!"));
    QCOMPARE(upload(picture("mine.png")), QStringLiteral("已经添加该图标!"));
    QCOMPARE(upload(picture("large.png", {1025, 1025})), QStringLiteral("图片过大!"));
    QVERIFY(flows("userupload").isEmpty());
    QCOMPARE(upload(picture("new.png")), QStringLiteral("上传图标成功!"));
    QCOMPARE(flow().value("type").toString(), QString("icons"));
    QCOMPARE(flow().value("mimetype").toString(), QString("image/png"));
    QCOMPARE(lists.size(), 1);
}

void tst_MapDialogs::markersAreDeleted() {
    giveMaps({mapOf("m1", "m", {markerOf("1", "10", "a"), markerOf("2", "", hostile())})});
    answer("delmapsensor", ok());
    MapDocument document(context());
    MapIconDeleteDialog dialog(context(), document, "m1", nullptr);
    show(dialog);
    auto* const list = find<QTreeWidget>(dialog, "list");
    QCOMPARE(list->headerItem()->text(1), QStringLiteral("标记点名称"));
    click(dialog, "markerListDelete");
    QCOMPARE(tip(), QStringLiteral("请选择要删除的标记点!"));
    select(dialog, "a");
    click(dialog, "markerListDelete");
    QCOMPARE(tip(), QStringLiteral("确定删除标记?"));
    QCOMPARE(tip(), QStringLiteral("删除成功!"));
    QCOMPARE(sent("delmapsensor"), (QList<QVariantMap>{{{"mapid", "m1"}, {"ipncid", "A"}, {"mapsensorid", "1"}}}));
    QCOMPARE(list->topLevelItemCount(), 1);
}

void tst_MapDialogs::referencePointsAreSet() {
    giveDevices();
    QJsonObject marker = markerOf("1", "12", "p");
    marker.insert("protocol", "4353");
    marker.insert("info", QJsonObject{{"locations", QJsonArray{QJsonObject{{"x", "10"}, {"y", "5"}}}}});
    giveMaps({mapOf("m1", "m", {marker})});
    answer("submitsensorinfo", ok(R"("pid":12)"));
    MapDocument document(context());
    ReferencePointDialog dialog(context(), document, "m1", document.map("m1")->markers[0], nullptr);
    show(dialog);
    auto* const list = find<QTreeWidget>(dialog, "pointList");
    click(dialog, "pointAdd");
    list->topLevelItem(1)->setText(1, "3.5");
    list->topLevelItem(1)->setText(2, "here");
    click(dialog, "pointSave");
    QCOMPARE(tip(), QStringLiteral("坐标应为数字!"));
    list->topLevelItem(1)->setText(2, "4");
    click(dialog, "pointSave");
    QCOMPARE(tip(), QStringLiteral("保存成功!"));
    const QVariantMap asked = sent("submitsensorinfo")[0];
    const QVariantMap board = asked.value("sensorinfo").toMap();
    QCOMPARE(asked.value("ipncid").toString(), QString("A"));
    QCOMPARE(board.value("input").toList().size(), 1); // the record goes back whole
    QCOMPARE(board.value("info").toMap(),
             (QVariantMap{{"keep", 1},
                          {"locations", QVariantList{QVariantMap{{"x", "10"}, {"y", "5"}},
                                                     QVariantMap{{"x", "3.5"}, {"y", "4"}}}}}));
    QCOMPARE(document.map("m1")->markers[0].locations.size(), 2);
}

void tst_MapDialogs::theVideoOfAMarker() {
    giveDevices();
    answerFlow({});
    const MapMarker marker = MapMarker::fromMap(markerOf("1", "", hostile()).toVariantMap());
    int second = 0;
    {
        MapMarkVideoDiolag dialog(context(), marker, nullptr);
        show(dialog);
        QTRY_COMPARE(flows("avreq").size(), 1);
        const QVariantMap request = flows("avreq")[0].value("avreq").toMap();
        QCOMPARE(request.value("ipncid").toString(), QString("A"));
        QVERIFY(request.value("recvdecodeavdata").toBool());
        const int id = idOfLast();
        auto* const state = find<QLabel>(dialog, "liveState");
        const auto report = [this](int to, const char* json) {
            sdk_.respond(to, QByteArray(json).replace("ID", QByteArray::number(to)).toStdString());
        };
        report(id, R"({"type":"avstate","reqid":ID,"state":1})");
        QTRY_COMPARE(state->text(), QStringLiteral("正在建立视频连接..."));
        report(id, R"({"type":"avstate","reqid":ID,"state":0})");
        QTRY_COMPARE(state->text(), QStringLiteral("正在获取视频信息..."));
        report(id, R"({"type":"avstate","reqid":ID,"state":2})");
        QTRY_COMPARE(state->text(), QStringLiteral("正在加载视频数据..."));
        report(id, R"({"type":"avopen","reqid":ID,"retcode":0,"avparam":{}})");
        QTRY_COMPARE(state->text(), QStringLiteral("打开成功"));
        std::array<uchar, 64 * 32 * 3 / 2> pixels{};
        const QByteArray frame = R"({"type":"decodevideodata","w":64,"h":32,"data":)" +
                                 QByteArray::number(reinterpret_cast<qintptr>(pixels.data())) + "}";
        sdk_.respond(id, frame.toStdString());
        QTRY_COMPARE(dialog.tile().frameSize().width, 64U);
        report(id, R"({"type":"avclose","reqid":ID,"retcode":7})");
        QTRY_VERIFY(state->text().startsWith(QStringLiteral("打开失败")));
        QCOMPARE(dialog.tile().frameSize().width, 0U);
        click(dialog, "mapVideoToggle"); // once more
        QTRY_COMPARE(flows("avreq").size(), 2);
        second = idOfLast();
        QVERIFY(sdk_.stopped().empty());
    }
    QVERIFY(sdk_.stopped() == std::vector<int>{second}); // with the dialog
    sdk_.respond(second, R"({"type":"avstate","state":1})");
}

void tst_MapDialogs::theTableOfAMarker() {
    giveDevices();
    const MapMarker marker = MapMarker::fromMap(markerOf("1", "10", "m").toVariantMap());
    MapMarkDataTabelDialog dialog(context(), marker, nullptr);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("表格数据"));
    show(dialog);
    auto* const list = find<QTreeWidget>(dialog, "mapData");
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(0)->text(3), QString("21.5"));
    context().inputFields.set("value", 102, 33);
    context().inputFields.set("state", 102, 0);
    context().inputFields.set("latesttime", 102, qint64(1732233600));
    emit context().events.sig_UpdateSensorInputData({}, {QVariantMap{{"pid", 102}}});
    QTRY_COMPARE(list->topLevelItem(1)->text(3), QString("33"));
    QCOMPARE(list->topLevelItem(1)->text(5), QStringLiteral("异常"));
}

void tst_MapDialogs::controlsAreNamed() {
    giveDevices();
    giveMaps({mapOf("m1", "m", {markerOf("1", "10", "a")})});
    answerFlow({});
    MapDocument document(context());
    const MapRecord map = *document.map("m1");
    const std::array<QWidget*, 8> dialogs{new AddMapwidget(context(), nullptr),
                                          new SetElectronMapDialog(context(), map, nullptr),
                                          new ManageMapWidget(
                                              context(), document, [](const QString&) { return false; }, nullptr),
                                          new MapMangerMarkDialog(context(), document, map, map.markers[0], nullptr),
                                          new MapSetIocnDialog(context(), document, nullptr),
                                          new MapIconDeleteDialog(context(), document, "m1", nullptr),
                                          new MapMarkDataTabelDialog(context(), map.markers[0], nullptr),
                                          new MapMarkVideoDiolag(context(), map.markers[0], nullptr)};
    for (QWidget* const dialog : dialogs) {
        checkNames(*dialog);
        const int height = dialog->minimumSizeHint().height();
        QVERIFY2(height <= 384, qPrintable(QStringLiteral("%1 %2").arg(dialog->objectName()).arg(height)));
        delete dialog;
    }
}

QTEST_MAIN(tst_MapDialogs)
#include "tst_MapDialogs.moc"
