#include "base/AppEvents.h"
#include "base/InputFields.h"
#include "map/MapTest.h"
#include "map/MarkerRules.h"
#include "map/ui/MapIconDeleteDialog.h"
#include "map/ui/MapMangerMarkDialog.h"
#include "map/ui/MapMarkDataTabelDialog.h"
#include "map/ui/MapMarkVideoDiolag.h"
#include "map/ui/MapSetIocnDialog.h"
#include "map/ui/ReferencePointDialog.h"
#include "video/ui/ItemVideo.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTreeWidget>

#include <array>

using namespace corvanta::map;

/// The dialogs of markers and icons against a service that answers by script.
class tst_MarkerDialogs final : public MapTest {
    Q_OBJECT

private slots:
    void aMarkerIsSet();
    void aMarkerOfTheWorld();
    void theIconLibrary();
    void anIconIsUploaded();
    void markersAreDeleted();
    void referencePointsAreSet();
    void theVideoOfAMarker();
    void theTableOfAMarker();
    void controlsAreNamed();
};

void tst_MarkerDialogs::aMarkerIsSet() {
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

void tst_MarkerDialogs::aMarkerOfTheWorld() {
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

void tst_MarkerDialogs::theIconLibrary() {
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

void tst_MarkerDialogs::anIconIsUploaded() {
    giveMaps({}, {}, {{"user", QJsonArray{QJsonObject{{"filename", "mine.png"}}}}});
    answerFlow(ok(R"("filename":"new.png")"));
    MapDocument document(context());
    MapSetIocnDialog dialog(context(), document, nullptr);
    QSignalSpy lists(&context().events, &AppEvents::sig_updateIconlist);
    show(dialog);
    find<QTabWidget>(dialog, "iconTabs")->setCurrentIndex(1);
    auto* const path = find<QLineEdit>(dialog, "iconPath");
    const auto tried = [&](const QString& file) {
        path->setText(file);
        click(dialog, "iconUpload");
        return tip();
    };
    QCOMPARE(tried({}), QStringLiteral("请先选择要添加的图标!"));
    QCOMPARE(tried(picture("mine.png")), QStringLiteral("已经添加该图标!"));
    QCOMPARE(tried(picture("large.png", {1025, 1025})), QStringLiteral("图片过大!"));
    QVERIFY(flows("userupload").isEmpty());
    QCOMPARE(tried(picture("new.png")), QStringLiteral("上传图标成功!"));
    QCOMPARE(upload().value("type").toString(), QString("icons"));
    QCOMPARE(upload().value("mimetype").toString(), QString("image/png"));
    QCOMPARE(lists.size(), 1);
}

void tst_MarkerDialogs::markersAreDeleted() {
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

void tst_MarkerDialogs::referencePointsAreSet() {
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

void tst_MarkerDialogs::theVideoOfAMarker() {
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

void tst_MarkerDialogs::theTableOfAMarker() {
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

void tst_MarkerDialogs::controlsAreNamed() {
    giveDevices();
    giveMaps({mapOf("m1", "m", {markerOf("1", "10", "a")})});
    answerFlow({});
    MapDocument document(context());
    const MapRecord map = *document.map("m1");
    const std::array<QWidget*, 5> dialogs{new MapMangerMarkDialog(context(), document, map, map.markers[0], nullptr),
                                          new MapSetIocnDialog(context(), document, nullptr),
                                          new MapIconDeleteDialog(context(), document, "m1", nullptr),
                                          new MapMarkDataTabelDialog(context(), map.markers[0], nullptr),
                                          new MapMarkVideoDiolag(context(), map.markers[0], nullptr)};
    for (QWidget* const dialog : dialogs) {
        checkForm(*dialog);
        delete dialog;
    }
}

QTEST_MAIN(tst_MarkerDialogs)
#include "tst_MarkerDialogs.moc"
