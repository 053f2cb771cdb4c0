#include "account/AccountTest.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"
#include "manageWidget/ui/AddDeviceDialog.h"
#include "manageWidget/ui/DeviceConfigDialog.h"
#include "manageWidget/ui/DeviceManageDialog.h"
#include "manageWidget/ui/PtzDialog.h"
#include "manageWidget/ui/RenameDialog.h"
#include "support/OtherLanguage.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QTreeWidget>

using corvanta::json::parseObject;

namespace {

/// Names as somebody may have given them.
const char* const Lists = R"({"ipnclist":[
    {"ipncid":"a","nickname":"<b>大门</b>&\u0022\u0027%1","type":"video","online":true,"groupid":"1","authority":{"admin":true},
     "info":{"model":"M1","ip":"192.0.2.1","softwareversion":"1.0","timezone":"GMT+08:00"}},
    {"ipncid":"b","nickname":"后门","type":"video","online":false,"groupid":"1","authority":{"admin":true}},
    {"ipncid":"c","nickname":"邻居","type":"video","online":true,"groupid":"2","authority":{"video":true,"param":true}}],
    "group":[{"id":"1","name":"一&楼","ipnclist":["a","b"]},{"id":"2","name":"<i>二楼</i>","ipnclist":["c"]}]})";

/// What devices and cameras tell of themselves.
const char* const Values =
    R"({"brightness":100,"contrast":128,"mirror":0,"bitrate1":2048,"framerate1":25,"bitrate2":512,
        "ptzcaps":{"pan":true,"tilt":true,"zoom":true,"presets":8,"cruises":2},
        "ptzpresets":[{"index":3,"name":"<b>门</b>"}],"ptzcruises":[],"ptzstate":null,
        "probe":{"manufacturer":"M","model":"X","main":"rtsp:\/\/192.0.2.9/1","light":"rtsp:\/\/192.0.2.9/2","profiles":[
            {"name":"p","codec":"H264","w":1920,"h":1080,"fps":25,"url":"rtsp:\/\/192.0.2.9/1"}]}})";

} // namespace

class tst_ManageDialogs : public AccountTest {
    Q_OBJECT

private slots:
    void waysToAdd_data();
    void waysToAdd();
    void badEntriesAreNotSent_data();
    void badEntriesAreNotSent();
    void aFoundCameraIsProbed();
    void hostileNamesAreShownAsTheyAre();
    void devicesAreMoved();
    void onlyChangesAreWritten();
    void aDraggedPictureIsPutBack();
    void aSilentCameraIsAskedAgain();
    void othersMayOnlyLook_data();
    void othersMayOnlyLook();
    void aButtonMovesTheCameraWhileItIsHeld();
    void presetsAndCruises();
    void theLanguageChangesBesideTheWindow();
    void zonesAreInTheLanguage();
    void controlsAreNamed();

private:
    /// Signs in with the lists, and lets devices answer: to reads what `values_` says, to everything else "ok".
    void begin() {
        sdk_.setDocument(R"({"type":"ipnclist"})", Lists);
        sdk_.onRequest = [values = values_](const FakeSdk::Request& request) -> std::vector<std::string> {
            const QVariantMap map = parseObject(request.json);
            if (map["reqtype"] == QVariant("preview"))
                return {R"({"retcode":2})"};
            QVariantMap resp{{"state", "ok"}, {"ipncid", "NET00000001"}};
            QVariantMap read;
            for (const QVariant& name : map["getcmds"].toList())
                read.insert(name.toString(), parseObject(values)[name.toString()]);
            if (map.contains("getcmds"))
                resp.insert("getcmds", read);
            if (map["reqtype"] == QVariant("onvifprobe"))
                resp.insert(parseObject(values)["probe"].toMap());
            return {corvanta::json::toText({{"retcode", 0}, {"resp", resp}})};
        };
        sdk_.sendToClient(R"({"type":"freshlist"})");
        QTRY_COMPARE(context().devices.ipncIds().size(), 3);
    }
    /// What devices were told, one after the other, as JSON.
    QStringList told() const {
        QStringList all;
        for (const FakeSdk::Request& request : sdk_.requests()) {
            const QVariantMap commands = parseObject(request.json)["setcmds"].toMap();
            if (!commands.isEmpty())
                all += QString::fromStdString(corvanta::json::toText(commands));
        }
        return all;
    }

    std::string values_ = Values;
};

void tst_ManageDialogs::waysToAdd_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("fields"); // name=text
    QTest::addColumn<QString>("sent");
    QTest::newRow("number") << 0 << QStringList{"addIpncId=SPARE001", "addWord=word-0001"}
                            << R"({"groupid":"2","ipncid":"SPARE001","word":"word-0001"})";
    QTest::newRow("address") << 1
                             << QStringList{"addName=😀 \"'<b>", "addMain=rtsp://192.0.2.7/a", "addUser=u",
                                            "addPassword= p "}
                             << QString::fromUtf8(R"({"groupid":"2","main":"rtsp://192.0.2.7/a","name":"😀 \"'<b>",)"
                                                  R"("password":" p ","user":"u"})");
    QTest::newRow("two streams")
        << 1 << QStringList{"addName=n", "addMain=rtsp://192.0.2.7/a", "addLight=rtsp://192.0.2.7/b"}
        << R"({"groupid":"2","light":"rtsp://192.0.2.7/b","main":"rtsp://192.0.2.7/a","name":"n"})";
}

void tst_ManageDialogs::waysToAdd() {
    begin();
    QFETCH(int, page);
    QFETCH(QStringList, fields);
    QWidget window;
    AddDeviceDialog dialog(context(), QStringLiteral("2"), &window);
    dialog.showPage(static_cast<AddDeviceDialog::Page>(page));
    show(dialog);
    for (const QString& field : fields)
        type(dialog, qPrintable(field.section('=', 0, 0)), field.section('=', 1));
    auto* const save = find<QAbstractButton>(dialog, "addSave");
    save->click();
    save->click(); // as a double click does
    QTRY_VERIFY(!dialog.isVisible());
    tip();
    QCOMPARE(sent("addipnc").size(), 1);
    QTEST(QString::fromStdString(corvanta::json::toText(sent("addipnc")[0])), "sent");
    QCOMPARE(log().size(), 1);
    QVERIFY2(log()[0].startsWith(QStringLiteral("设备管理|添加设备|NET00000001")), qPrintable(log()[0]));
}

void tst_ManageDialogs::badEntriesAreNotSent_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("fields");
    QTest::newRow("nothing") << 0 << QStringList();
    QTest::newRow("no word") << 0 << QStringList{"addIpncId=a"};
    QTest::newRow("endless number") << 0 << QStringList{"addIpncId=" + QString(10000, '1'), "addWord=w"};
    QTest::newRow("no address") << 1 << QStringList{"addName=n"};
    QTest::newRow("no name") << 1 << QStringList{"addMain=rtsp://h/a"};
    QTest::newRow("endless name") << 1 << QStringList{"addMain=rtsp://h/a", "addName=" + QString(10000, 'n')};
    QTest::newRow("another scheme") << 1 << QStringList{"addMain=http://h/a", "addName=n"};
    QTest::newRow("bad light stream") << 1 << QStringList{"addMain=rtsp://h/a", "addLight=h", "addName=n"};
    QTest::newRow("password without user") << 1 << QStringList{"addMain=rtsp://h/a", "addName=n", "addPassword=p"};
}

void tst_ManageDialogs::badEntriesAreNotSent() {
    begin();
    QFETCH(int, page);
    QFETCH(QStringList, fields);
    QWidget window;
    AddDeviceDialog dialog(context(), {}, &window);
    dialog.showPage(static_cast<AddDeviceDialog::Page>(page));
    show(dialog);
    for (const QString& field : fields)
        type(dialog, qPrintable(field.section('=', 0, 0)), field.section('=', 1));
    find<QAbstractButton>(dialog, "addSave")->click();
    QVERIFY(tip() != QStringLiteral("no tip"));
    QVERIFY(dialog.isVisible());
    QCOMPARE(sent("addipnc").size(), 0);
}

void tst_ManageDialogs::aFoundCameraIsProbed() {
    begin();
    QWidget window;
    AddDeviceDialog dialog(context(), QStringLiteral("1"), &window);
    dialog.showPage(AddDeviceDialog::Page::Found);
    show(dialog);
    sdk_.sendToClient(R"({"type":"freshlocal","freshlocal":{"onvif-1":{"name":"<b>枪机</b>","ip":"192.0.2.9",
        "url":"http://192.0.2.9/onvif","onvif":true,"added":false},"SPARE002":{"name":"s","ip":"","added":false},"x":7}})");
    auto* const list = find<QTreeWidget>(dialog, "foundList");
    QTRY_COMPARE(list->topLevelItemCount(), 2);
    list->setCurrentItem(list->topLevelItem(1));
    QCOMPARE(find<QLineEdit>(dialog, "foundService")->text(), QStringLiteral("http://192.0.2.9/onvif"));
    type(dialog, "foundUser", QStringLiteral("u"));
    type(dialog, "foundPassword", QStringLiteral("p"));
    click(dialog, "foundProbe");
    QTRY_COMPARE(find<QLineEdit>(dialog, "addMain")->text(), QStringLiteral("rtsp://192.0.2.9/1"));
    QCOMPARE(find<QLineEdit>(dialog, "addLight")->text(), QStringLiteral("rtsp://192.0.2.9/2"));
    find<QAbstractButton>(dialog, "addTest")->click(); // refused by the camera, and said in its place
    QTRY_VERIFY(find<QAbstractButton>(dialog, "addTest")->isEnabled());
    click(dialog, "addSave");
    QTRY_COMPARE(sent("addipnc").size(), 1);
    QCOMPARE(sent("addipnc")[0]["onvif"].toString(), QStringLiteral("http://192.0.2.9/onvif"));
    QCOMPARE(sent("addipnc")[0]["user"].toString(), QStringLiteral("u"));
    tip();
}

void tst_ManageDialogs::hostileNamesAreShownAsTheyAre() {
    begin();
    QWidget window;
    DeviceManageDialog dialog(context(), &window);
    show(dialog);
    auto* const table = find<QTableView>(dialog, "deviceTable");
    QCOMPARE(table->model()->index(0, DeviceTable::Name).data().toString(), QStringLiteral("<b>大门</b>&\"'%1"));
    QCOMPARE(table->model()->index(2, DeviceTable::Rights).data().toString(), QStringLiteral("视频、参数"));
    type(dialog, "deviceSearch", QStringLiteral(".*")); // a text, no pattern
    QCOMPARE(table->model()->rowCount(), 0);
    type(dialog, "deviceSearch", QStringLiteral("</b>&"));
    QCOMPARE(table->model()->rowCount(), 1);
    type(dialog, "deviceSearch", {});
    RenameDialog rename(context(), QStringLiteral("a"), &window);
    show(rename);
    type(rename, "deviceName", QStringLiteral("😀'; DROP TABLE--"));
    find<QAbstractButton>(rename, "renameSave")->click();
    QTRY_VERIFY(!rename.isVisible());
    QCOMPARE(sent("setipncparam")[0]["nickname"].toString(), QStringLiteral("😀'; DROP TABLE--"));
    QCOMPARE(log().size(), 1);
}

void tst_ManageDialogs::devicesAreMoved() {
    begin();
    QWidget window;
    DeviceManageDialog dialog(context(), &window);
    show(dialog);
    dialog.select({QStringLiteral("a"), QStringLiteral("b")});
    QVERIFY(!find<QAbstractButton>(dialog, "manageRename")->isEnabled());
    auto* const menu = find<QMenu>(dialog, "manageGroups");
    emit menu->aboutToShow();
    QCOMPARE(menu->actions().at(0)->text(), QStringLiteral("一&&楼"));
    menu->actions().at(1)->trigger();
    QTRY_COMPARE(log().size(), 2);
    QCOMPARE(sent("movedeviceindex").size(), 2);
    QCOMPARE(sent("movedeviceindex")[1]["index"].toInt(), 2);
    QSignalSpy deletions(&dialog, &DeviceManageDialog::sigDelete);
    click(dialog, "manageDelete");
    QCOMPARE(deletions[0][0].toStringList(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

void tst_ManageDialogs::onlyChangesAreWritten() {
    begin();
    QWidget window;
    DeviceConfigDialog dialog(context(), QStringLiteral("a"), &window);
    show(dialog);
    dialog.showPage(1);
    auto* const page = find<QWidget>(dialog, "videoParameters");
    auto* const rate = find<QSpinBox>(*page, "bitrate1");
    QTRY_VERIFY(rate->isEnabled());
    QCOMPARE(rate->value(), 2048);
    QVERIFY(!find<QWidget>(*page, "framerate2")->isEnabled()); // the device does not have it
    rate->setValue(4096);
    find<QAbstractButton>(*page, "configSave")->click();
    tip();
    QCOMPARE(told(), QStringList{R"({"bitrate1":4096})"});
    QVERIFY(log().value(0).contains(QStringLiteral("4096")));
}

void tst_ManageDialogs::aDraggedPictureIsPutBack() {
    begin();
    QWidget window;
    DeviceConfigDialog dialog(context(), QStringLiteral("a"), &window);
    show(dialog);
    dialog.showPage(2);
    auto* const slider = find<QSlider>(dialog, "brightness");
    QTRY_VERIFY(slider->isEnabled());
    for (int value = 101; value <= 160; ++value)
        slider->setValue(value);
    QTRY_COMPARE(told(), QStringList{R"({"brightness":160})"});
    QTest::qWait(0); // its reply
    dialog.reject();
    QTRY_COMPARE(told().size(), 2);
    QCOMPARE(told()[1], QStringLiteral(R"({"brightness":100})"));
    QCOMPARE(log(), QStringList());
}

void tst_ManageDialogs::aSilentCameraIsAskedAgain() {
    begin();
    QWidget window;
    DeviceConfigDialog dialog(context(), QStringLiteral("a"), &window);
    show(dialog);
    dialog.showPage(2);
    auto* const slider = find<QSlider>(dialog, "brightness");
    QTRY_VERIFY(slider->isEnabled());
    sdk_.onRequest = {};
    context().gateway.setPatience(std::chrono::milliseconds(50));
    slider->setValue(140);
    const QWidget* page = slider;
    while (page->findChild<QLabel*>(QStringLiteral("configState")) == nullptr)
        page = page->parentWidget();
    const auto* const state = find<QLabel>(*page, "configState");
    QTRY_COMPARE(state->text(), QStringLiteral("服务器没有响应，请稍后再试!"));
    slider->setValue(150); // goes out all the same
    QTRY_COMPARE(told(), QStringList({R"({"brightness":140})", R"({"brightness":150})"}));
}

void tst_ManageDialogs::othersMayOnlyLook_data() {
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("text");
    QTest::newRow("a friend's") << "c" << QStringLiteral("权限");
    QTest::newRow("offline") << "b" << QStringLiteral("不在线");
}

void tst_ManageDialogs::othersMayOnlyLook() {
    begin();
    QFETCH(QString, device);
    QFETCH(QString, text);
    QWidget window;
    DeviceConfigDialog dialog(context(), device, &window);
    show(dialog);
    for (int page = 1; page < dialog.pageCount(); ++page) {
        dialog.showPage(page);
        QTest::qWait(20);
        for (const char* const name : {"configSave", "netSave", "wifiSave", "sdFormat", "sdDelete", "upgradeInstall",
                                       "upgradeUpload", "maintainRestart", "maintainReset"})
            for (const auto* const button : dialog.findChildren<QAbstractButton*>(QLatin1String(name)))
                QVERIFY2(!button->isEnabled(), name);
    }
    for (const auto* const state : dialog.findChildren<QLabel*>(QStringLiteral("configState")))
        QVERIFY2(state->text().contains(text), qPrintable(state->text()));
    QCOMPARE(told().filter(QStringLiteral("sdlist")).size(), told().size());
}

void tst_ManageDialogs::aButtonMovesTheCameraWhileItIsHeld() {
    begin();
    QWidget window;
    auto dialog = std::make_unique<PtzDialog>(context(), QStringLiteral("a"), &window);
    show(*dialog);
    auto* const left = find<QAbstractButton>(*dialog, "pad-ptz-left");
    QTRY_VERIFY(left->isEnabled());
    QVERIFY(!find<QAbstractButton>(*dialog, "pad-iris-open")->isEnabled());
    QTest::mousePress(left, Qt::LeftButton);
    QTRY_COMPARE(told(), QStringList{R"({"ptzmove":{"pan":-1,"speed":5,"tilt":0,"zoom":0}})"});
    QTest::mouseRelease(left, Qt::LeftButton);
    QTRY_COMPARE(told().size(), 2);
    QCOMPARE(told()[1], QStringLiteral(R"({"ptzstop":1})"));
    QTest::keyPress(left, Qt::Key_Space);
    QTRY_COMPARE(told().size(), 3);
    const QString row = QStringLiteral("设备管理|移动摄像机|a 左"); // one a gesture
    QTRY_COMPARE(log(), (QStringList{row, row}));
    dialog.reset(); // while it is held
    QTRY_COMPARE(told().size(), 4);
    QCOMPARE(told()[3], QStringLiteral(R"({"ptzstop":1})"));
}

void tst_ManageDialogs::presetsAndCruises() {
    begin();
    QWidget window;
    PtzDialog dialog(context(), QStringLiteral("a"), &window);
    show(dialog);
    auto* const list = find<QTreeWidget>(dialog, "presetList");
    QTRY_COMPARE(list->topLevelItemCount(), 1);
    list->setCurrentItem(list->topLevelItem(0));
    QCOMPARE(find<QLineEdit>(dialog, "presetName")->text(), QStringLiteral("<b>门</b>"));
    find<QAbstractButton>(dialog, "presetGo")->click();
    QTRY_COMPARE(told(), QStringList{R"({"ptzpresetgoto":3})"});
    QTRY_COMPARE(log().size(), 1);
    find<QAbstractButton>(dialog, "presetDelete")->click();
    QVERIFY(tip().contains(QStringLiteral("3")));
    QTRY_COMPARE(log().size(), 2);
    find<QAbstractButton>(dialog, "cruiseSave")->click(); // without points
    QVERIFY(tip() != QStringLiteral("no tip"));
    find<QAbstractButton>(dialog, "cruiseAddPoint")->click();
    find<QAbstractButton>(dialog, "presetGo")->click(); // what is read anew takes nothing away
    QTRY_COMPARE(log().size(), 3);
    QTRY_VERIFY(find<QAbstractButton>(dialog, "presetGo")->isEnabled());
    find<QAbstractButton>(dialog, "cruiseSave")->click();
    QTRY_COMPARE(log().size(), 4);
    QCOMPARE(told().last(),
             QStringLiteral(R"({"ptzcruiseset":{"index":1,"name":"路线1","points":[{"preset":3,"seconds":10}]}})"));
}

void tst_ManageDialogs::theLanguageChangesBesideTheWindow() {
    begin();
    QWidget window;
    PtzDialog dialog(context(), QStringLiteral("a"), &window);
    show(dialog);
    auto* const routes = find<QComboBox>(dialog, "cruiseIndex");
    QTRY_COMPARE(routes->count(), 2);
    find<QAbstractButton>(dialog, "cruiseAddPoint")->click();
    {
        const OtherLanguage other;
        QCOMPARE(dialog.windowTitle(), QStringLiteral("*云台设置"));
        QCOMPARE(find<QAbstractButton>(dialog, "dialogClose")->accessibleName(), QStringLiteral("*关闭"));
        QCOMPARE(find<QAbstractButton>(dialog, "presetGo")->text(), QStringLiteral("*转到"));
        QCOMPARE(find<QTreeWidget>(dialog, "presetList")->headerItem()->text(1), QStringLiteral("*名称"));
        QCOMPARE(find<QLabel>(dialog, "ptzState")->text(), QStringLiteral("*按住按钮转动，松开停止。"));
        QCOMPARE(routes->itemText(0), QStringLiteral("1  *(空)"));
        // What is being edited stays, and what the camera would keep is no word of the interface.
        QCOMPARE(find<QTreeWidget>(dialog, "cruisePoints")->topLevelItemCount(), 1);
        routes->setCurrentIndex(1);
        QCOMPARE(find<QLineEdit>(dialog, "cruiseName")->text(), QStringLiteral("路线2"));
    }
    QCOMPARE(find<QLabel>(dialog, "ptzState")->text(), QStringLiteral("按住按钮转动，松开停止。"));
}

void tst_ManageDialogs::zonesAreInTheLanguage() {
    begin();
    const OtherLanguage other;
    QWidget window;
    DeviceConfigDialog dialog(context(), QStringLiteral("a"), &window);
    const auto* const zones = find<QComboBox>(dialog, "infoZone");
    QVERIFY(zones->count() > 24);
    for (int zone = 0; zone < zones->count(); ++zone)
        QVERIFY2(zones->itemText(zone).contains(QLatin1Char('*')), qPrintable(zones->itemText(zone)));
    QCOMPARE(zones->currentData().toString(), QStringLiteral("GMT+08:00"));
}

void tst_ManageDialogs::controlsAreNamed() {
    begin();
    QWidget window;
    checkNames(AddDeviceDialog(context(), {}, &window));
    checkNames(DeviceManageDialog(context(), &window));
    checkNames(DeviceConfigDialog(context(), QStringLiteral("a"), &window));
    checkNames(PtzDialog(context(), QStringLiteral("a"), &window));
}

QTEST_MAIN(tst_ManageDialogs)
#include "tst_ManageDialogs.moc"
