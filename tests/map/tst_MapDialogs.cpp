#include "base/AppEvents.h"
#include "map/MapTest.h"
#include "map/ui/AddMapwidget.h"
#include "map/ui/ManageMapWidget.h"
#include "map/ui/SetElectronMapDialog.h"

#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace corvanta::map;

/// The dialogs of maps against a service that answers by script.
class tst_MapDialogs final : public MapTest {
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
    void controlsAreNamed();
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
    QCOMPARE(upload().value("type").toString(), QString("maps"));
    QCOMPARE(upload().value("mimetype").toString(), QString("image/jpeg"));
    QCOMPARE(upload().value("uploadpath").toString(), path);
    const QVariantMap distance{{"w", "40"}, {"h", "22.5"}};
    QCOMPARE(upload().value("mapinfo").toMap(), (QVariantMap{{"name", QStringLiteral("一'层\"%1")},
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

void tst_MapDialogs::controlsAreNamed() {
    giveMaps({mapOf("m1", "m")});
    MapDocument document(context());
    AddMapwidget adding(context(), nullptr);
    SetElectronMapDialog editing(context(), *document.map("m1"), nullptr);
    ManageMapWidget managing(
        context(), document, [](const QString&) { return false; }, nullptr);
    for (QWidget* const dialog :
         {static_cast<QWidget*>(&adding), static_cast<QWidget*>(&editing), static_cast<QWidget*>(&managing)})
        checkForm(*dialog);
}

QTEST_MAIN(tst_MapDialogs)
#include "tst_MapDialogs.moc"
