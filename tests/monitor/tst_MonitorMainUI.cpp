#include "base/JsonText.h"
#include "database/SqlHelp.h"
#include "linkage/AlarmInbox.h"
#include "logs/ui/Check_Log_Widget.h"
#include "map/ui/FwidgetElectronMap.h"
#include "map/ui/ItemMapWidget.h"
#include "map/ui/MapSession.h"
#include "map/ui/SensorMimeData.h"
#include "monitor/MainWindowTest.h"
#include "monitor/ui/DevicePanel.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/MapControl.h"
#include "monitor/ui/PlaybackControl.h"
#include "playback/ui/PlaybackPage.h"
#include "support/MessageLog.h"
#include "video/ui/ItemVideo.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

#include <thread>

/// The main window over a scripted SDK: what the operator does, what the SDK reports, what is seen.
class tst_MonitorMainUI final : public MainWindowTest {
    Q_OBJECT
private slots:
    void openRequestsAsTheTileIsShown_data();
    void openRequestsAsTheTileIsShown();
    void lifeOfAStream();
    void failuresAreShown_data();
    void failuresAreShown();
    void reportsOfOtherRequestsChangeNothing();
    void refusedDeviceShowsTheText();
    void signOutStopsEverything();
    void searchFindsDevices();
    void sensorsLeaveTheTree();
    void alarmsReachTheMaps();
    void modulesShowTheirPages();
    void leavingWritesTheSignOut();
    void streamsWhileTheWindowIsDestroyed();
    void recordingsHaveAPageOfTheirOwn();
    void anAlarmIsSeen();
    void fromAnAlarmToItsCamera();

private:
    const char* deviceList() const override {
        return R"({"ipnclist":[{"ipncid":"a","name":"A","nickname":"大门","type":"video","online":true},
                   {"ipncid":"b","name":"B","type":"video","online":true},
                   {"ipncid":"s","name":"S","type":"sensor","online":true}],
                   "group":[{"id":"1","name":"一组","ipnclist":["a","b","s"]}]})";
    }
};

void tst_MonitorMainUI::anAlarmIsSeen() {
    const auto send = [this](const char* content) {
        sdk_.sendToClient(R"({"type":"trigger","content":")" + std::string(content) +
                          R"(","alarm":{"ipncid":"a","datetime":"2026-01-02 03:04:05","images":["x"]}})");
    };
    emit tree().sigPreview("a");
    QTRY_COMPARE(lastRequest().value("reqtype").toString(), QString("preview"));
    const auto before = requests().size();
    send("one");
    QTRY_COMPARE(message(), QString("2026-01-02 03:04:05 one"));
    QTRY_COMPARE(requests().size(), before + 1); // the picture shown is asked for again
    QCOMPARE(lastRequest().value("reqtype").toString(), QString("preview"));
    // The second text has its own ten seconds.
    auto* const timer = window_->findChild<QTimer*>("messageTimer");
    QCOMPARE(timer->interval(), 10000);
    QTRY_VERIFY(timer->remainingTime() < 9500);
    const int left = timer->remainingTime();
    send("two");
    QTRY_COMPARE(message(), QString("2026-01-02 03:04:05 two"));
    QVERIFY(timer->remainingTime() > left);
    timer->start(1);
    QTRY_COMPARE(message(), QString());
    QVERIFY(!timer->isActive());
    const auto* const button = window_->findChild<QToolButton*>("alarmModule");
    QTRY_COMPARE(button->text(), QString("2"));
    manager_->context().alarms.acknowledgeAll();
    QTRY_COMPARE(button->toolButtonStyle(), Qt::ToolButtonIconOnly);
}

void tst_MonitorMainUI::fromAnAlarmToItsCamera() {
    sdk_.sendToClient(R"({"type":"trigger","alarm":{"ipncid":"a","datetime":"2001-01-02 03:04:05"}})");
    QTRY_COMPARE(manager_->context().alarms.count(), qint64(1));
    window_->findChild<QToolButton*>("alarmModule")->click();
    auto* const playback = window_->findChild<QPushButton*>("alarmPlayback");
    QVERIFY(playback != nullptr && playback->isVisible() && playback->isEnabled()); // the newest alarm is chosen
    playback->click();
    QTRY_COMPARE(message(), QString("没有该时间的录像"));
    window_->findChild<QPushButton*>("alarmLive")->click();
    QVERIFY(window_->grid().isVisible());
    QCOMPARE(lastOpenRequest().value("ipncid").toString(), QString("a"));
}

void tst_MonitorMainUI::openRequestsAsTheTileIsShown_data() {
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("zoom");
    QTest::addColumn<QVariant>("longest");
    QTest::addColumn<bool>("hd");
    QTest::addColumn<int>("maxOpenTime");
    QTest::newRow("2 x 2") << 2 << -1 << QVariant(1) << false << 1;
    QTest::newRow("1 x 1") << 1 << -1 << QVariant(QStringLiteral("不限")) << true << 0;
    QTest::newRow("zoomed") << 8 << 0 << QVariant(QStringLiteral("12")) << true << 12;
    QTest::newRow("no limit set") << 8 << -1 << QVariant(QString()) << false << 0;
}

void tst_MonitorMainUI::openRequestsAsTheTileIsShown() {
    QFETCH(int, rows);
    QFETCH(int, zoom);
    QFETCH(QVariant, longest);
    QFETCH(bool, hd);
    QFETCH(int, maxOpenTime);
    manager_->context().settings.set(QStringLiteral("视频打开最长时间"), longest);
    window_->grid().setLayout(rows, rows, false);
    if (zoom >= 0)
        window_->grid().setZoom(zoom);
    openByDoubleClick(QStringLiteral("大门"));
    QCOMPARE(lastOpenRequest(), (QVariantMap{{QStringLiteral("ipncid"), QStringLiteral("a")},
                                             {QStringLiteral("recvdecodeavdata"), true},
                                             {QStringLiteral("hd"), hd},
                                             {QStringLiteral("maxopentime"), maxOpenTime},
                                             {QStringLiteral("reqtype"), QStringLiteral("avreq")}}));
}

void tst_MonitorMainUI::lifeOfAStream() {
    openByDoubleClick(QStringLiteral("大门"));
    const int id = lastId();
    const std::array<std::pair<int, const char*>, 4> progress{{{0, "正在获取视频信息..."},
                                                               {1, "正在建立视频连接..."},
                                                               {2, "正在加载视频数据..."},
                                                               {7, "正在加载视频数据..."}}};
    for (const auto& [state, text] : progress) {
        report(id, ("\"type\":\"avstate\",\"state\":" + std::to_string(state)).c_str());
        QTRY_COMPARE(tile(0).text(), QString::fromUtf8(text));
    }
    report(id, R"("type":"avopen","contype":"LOOP","avparam":{"framerate":25,"weidth":64,"height":36})");
    QTRY_COMPARE(tile(0).text(), QStringLiteral("打开成功"));
    QCOMPARE(tile(0).requestId(), id);
    QCOMPARE(message(), QStringLiteral("大门  LOOP"));
    QCOMPARE(tile(0).streamParameters().value(QStringLiteral("DeviceId")).toString(), QStringLiteral("a"));
    QVERIFY(manager_->context().devices.device(QStringLiteral("a"))->videoOpen);
    sendPicture(id, 64, 36);
    QTRY_COMPARE(tile(0).frameSize().width, 64U);
    // A new list does not forget what is open.
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QCoreApplication::processEvents();
    QVERIFY(manager_->context().devices.device(QStringLiteral("a"))->videoOpen);
    // Opening it again ends it.
    openByDoubleClick(QStringLiteral("大门"));
    QCOMPARE(sdk_.stopped(), std::vector<int>{id});
    QCOMPARE(tile(0).requestId(), 0);
    QCOMPARE(tile(0).frameSize().width, 0U);
    QVERIFY(!manager_->context().devices.device(QStringLiteral("a"))->videoOpen);
    // What the ended request still says is not heard.
    sendPicture(id, 64, 36);
    report(id, R"("type":"avopen","contype":"LATE")");
    QTest::qWait(0);
    QCOMPARE(tile(0).frameSize().width, 0U);
    QCOMPARE(tile(0).requestId(), 0);
}

void tst_MonitorMainUI::failuresAreShown_data() {
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<bool>("wasOpen");
    QTest::addColumn<QString>("text");
    QTest::newRow("refused") << QByteArray(R"("type":"avclose","retcode":12)") << false << "打开失败(12)";
    QTest::newRow("lost") << QByteArray(R"("type":"avclose","retcode":15)") << true << "打开失败(15)";
    QTest::newRow("other type with a code") << QByteArray(R"("type":"error","retcode":-3)") << true << "打开失败(-3)";
}

void tst_MonitorMainUI::failuresAreShown() {
    QFETCH(QByteArray, report);
    QFETCH(bool, wasOpen);
    QFETCH(QString, text);
    openByDoubleClick(QStringLiteral("大门"));
    const int id = lastId();
    if (wasOpen) {
        this->report(id, R"("type":"avopen","avparam":{})");
        QTRY_COMPARE(tile(0).requestId(), id);
    }
    this->report(id, report.constData());
    QTRY_COMPARE(tile(0).text(), text);
    QCOMPARE(tile(0).requestId(), 0);
    QVERIFY(!window_->live().isOpen(QStringLiteral("a")));
    // The next open starts from nothing.
    openByDoubleClick(QStringLiteral("大门"));
    QVERIFY(lastId() > id);
}

void tst_MonitorMainUI::reportsOfOtherRequestsChangeNothing() {
    openByDoubleClick(QStringLiteral("大门"));
    const int id = lastId();
    report(id, R"("type":"avopen","avparam":{})");
    QTRY_COMPARE(tile(0).requestId(), id);
    const MessageLog log;
    sdk_.respond(id, R"({"type":"avclose","reqid":9999,"retcode":1})");
    QTRY_COMPARE(log.count(QStringLiteral("!!!!!!!!!!!!!!reqid not equeal")), 1);
    sdk_.respond(id, R"({"type":"avopen","reqid":9999})");
    QTRY_COMPARE(log.count(QStringLiteral("reqid not equeal")), 2);
    for (const char* garbage : {"", "[]", "{}", "avclose", R"({"type":7,"retcode":"x"})"})
        sdk_.respond(id, garbage);
    for (const char* frame : {R"({"type":"decodevideodata"})", R"({"type":"decodevideodata","data":0,"w":64,"h":36})",
                              R"({"type":"decodevideodata","data":4096,"w":-2,"h":36})",
                              R"({"type":"decodevideodata","data":4096,"w":100000000,"h":100000000})"})
        sdk_.respond(id, frame);
    QCoreApplication::processEvents();
    QCOMPARE(tile(0).requestId(), id);
    QCOMPARE(tile(0).frameSize().width, 0U);
    QCOMPARE(log.count(QStringLiteral("picture refused")), 1);
}

void tst_MonitorMainUI::refusedDeviceShowsTheText() {
    window_->grid().setLayout(1, 1, false);
    const std::size_t before = requests().size();
    openByDoubleClick(QStringLiteral("B"));
    QCOMPARE(message(), QStringLiteral("请确认设备[b]在默认组[一组]中的索引小于64"));
    QCOMPARE(requests().size(), before);
    openByDoubleClick(QStringLiteral("S")); // has no video
    QCOMPARE(requests().size(), before);
}

void tst_MonitorMainUI::signOutStopsEverything() {
    openByDoubleClick(QStringLiteral("大门"));
    const int id = lastId();
    report(id, R"("type":"avopen","avparam":{})");
    QTRY_COMPARE(tile(0).requestId(), id);
    QTest::mouseClick(window_->findChild<QToolButton*>(QStringLiteral("accountButton")), Qt::LeftButton);
    auto* const menu = window_->findChild<QMenu*>(QStringLiteral("accountMenu"));
    QVERIFY(menu->isVisible());
    menu->findChild<QAction*>(QStringLiteral("accountSignOut"))->trigger();
    menu->hide();
    QCOMPARE(sdk_.stopped(), std::vector<int>{id});
    QCOMPARE(corvanta::json::parseObject(sdk_.configs().back()).value(QStringLiteral("type")).toString(),
             QStringLiteral("logout"));
    sdk_.setDocument(R"({"type":"phoneid"})", "");
    sdk_.sendToClient(R"({"type":"logout"})");
    QTRY_VERIFY(tree().isEmpty());
    QVERIFY(window_->findChild<QPushButton*>(QStringLiteral("emptySignIn"))->isVisible());
}

void tst_MonitorMainUI::modulesShowTheirPages() {
    auto* const logs = window_->findChild<QToolButton*>(QStringLiteral("logModule"));
    auto* const video = window_->findChild<QToolButton*>(QStringLiteral("videoModule"));
    QVERIFY(window_->findChild<Check_Log_Widget*>() == nullptr); // not before it is wanted
    logs->setFocus(Qt::TabFocusReason);
    QTest::keyClick(logs, Qt::Key_Space);
    auto* const page = window_->findChild<Check_Log_Widget*>();
    QVERIFY(page != nullptr && page->isVisible());
    QVERIFY(!window_->grid().isVisible());
    QVERIFY(logs->isChecked() && !video->isChecked());
    video->click();
    QVERIFY(window_->grid().isVisible() && !page->isVisible());
    logs->click();
    QVERIFY(page->isVisible());
    QCOMPARE(window_->findChildren<Check_Log_Widget*>().size(), 1);
}

void tst_MonitorMainUI::leavingWritesTheSignOut() {
    const auto rows = [this] {
        return manager_->context().database.queryLogs(SqlHelp::LoginLog, {}, {}, true, -1, -1);
    };
    QTRY_COMPARE(rows().size(), 1); // the sign-in
    window_->closeWithoutAsking();
    QCOMPARE(rows().size(), 2);
    QCOMPARE(rows().constLast()[1], QStringLiteral("13800138000"));
    QVERIFY(!rows().constLast()[3].isEmpty());
}

void tst_MonitorMainUI::searchFindsDevices() {
    auto* const search = window_->findChild<QLineEdit*>(QStringLiteral("deviceSearch"));
    QTest::keyClicks(search, QStringLiteral("b"));
    const QModelIndex group = tree().model()->index(0, 0);
    QCOMPARE(tree().model()->rowCount(group), 1);
    QTest::keyClicks(search, QStringLiteral("(*[")); // is text, not a pattern
    QCOMPARE(tree().model()->rowCount(), 0);
    search->clear();
    QCOMPARE(tree().model()->rowCount(tree().model()->index(0, 0)), 3);
}

void tst_MonitorMainUI::sensorsLeaveTheTree() {
    const char* const list = R"({"ipnclist":[{"ipncid":"a","name":"A","type":"video","online":true,
        "interfaces":[{"pid":10,"name":"温度","input":[{"pid":101,"ifpid":10,"name":"T"}]}]}],
        "group":[{"id":"1","name":"一组","ipnclist":["a"]}]})";
    sendList(list);
    QTRY_VERIFY(treeIndex(QStringLiteral("A")).isValid());
    QCOMPARE(tree().model()->rowCount(treeIndex(QStringLiteral("A"))), 1);
    const auto dragged = [this](const QModelIndex& index) {
        const std::unique_ptr<QMimeData> data(tree().model()->mimeData({index}));
        const auto read = corvanta::map::SensorMimeData::read(*data);
        return read.ipncId + QLatin1Char('/') + read.sensorPid;
    };
    const QModelIndex device = treeIndex(QStringLiteral("A"));
    QCOMPARE(dragged(device), QString("a/"));
    QCOMPARE(dragged(tree().model()->index(0, 0, device)), QString("a/10"));
    QCOMPARE(dragged(treeIndex(QStringLiteral("一组"))), QString("/"));
    // A device that shows its sensors goes on showing them, and a double click on it does not hide them.
    tree().expand(device);
    openByDoubleClick(QStringLiteral("A"));
    QCOMPARE(openRequestsOf("a").size(), 1U);
    sendList(list);
    QTRY_VERIFY(tree().isExpanded(treeIndex(QStringLiteral("A"))));
    // Putting a sensor somewhere in the tree moves nothing.
    tree().setCurrentIndex(tree().model()->index(0, 0, treeIndex(QStringLiteral("A"))));
    QCOMPARE(tree().currentDevice(), QString("a"));
}

void tst_MonitorMainUI::alarmsReachTheMaps() {
    sendList(R"({"ipnclist":[{"ipncid":"a","name":"A","type":"video","online":true,
        "interfaces":[{"pid":10,"name":"温度","input":[{"pid":101,"ifpid":10,"name":"T"}]}]}],"group":[]})");
    sdk_.setDocument(R"({"type":"userinfo"})", R"({"userconfig":{"maps":[{"pid":"m","name":"一层","type":"local",
        "filename":"m.png","sensors":[{"sensorid":"1","pid":"10","ipncid":"a","point":{"x":"0.5","y":"0.5"}}]}]}})");
    sdk_.sendToClient(R"({"type":"freshuserinfo"})");
    QTRY_VERIFY(treeIndex(QStringLiteral("A")).isValid());
    QVERIFY(manager_->showsAlarmsOnMap()); // so the alarm centre offers the way
    emit manager_->sig_showAlarmOnMap("a", {{"input", 101}, {"threshold", 2}});
    const auto* const page = window_->maps().page();
    QVERIFY(page != nullptr && page->isVisible());
    QTRY_COMPARE(page->cell(0)->mapId(), QString("m"));
    QCOMPARE(page->cell(0)->session()->alarmOf(0).value_or(0), 2);
}

// Pictures come from several threads until the very end.
void tst_MonitorMainUI::streamsWhileTheWindowIsDestroyed() {
    std::atomic<bool> stop{false};
    std::atomic<int> sent{0};
    picture_.assign(64 * 36 * 3 / 2, 128);
    sdk_.onRequest = {};
    openByDoubleClick(QStringLiteral("大门"));
    openByDoubleClick(QStringLiteral("B"));
    std::vector<std::thread> threads;
    for (const FakeSdk::Request& request : requests()) {
        threads.emplace_back([this, request, &stop, &sent] {
            const std::string id = "{\"reqid\":" + std::to_string(request.id);
            const std::string frame = id + ",\"type\":\"decodevideodata\",\"data\":" +
                                      std::to_string(reinterpret_cast<std::intptr_t>(picture_.data())) +
                                      ",\"w\":64,\"h\":36}";
            request.callback(id + R"(,"type":"avopen","avparam":{}})");
            while (!stop) {
                request.callback(frame);
                request.callback(id + R"(,"type":"avstate","state":2})");
                ++sent;
                std::this_thread::yield();
            }
        });
    }
    QTRY_VERIFY(tile(0).frameSize().width > 0 && tile(1).frameSize().width > 0);
    window_->grid().setLayout(8, 8, false);
    window_->live().stopTile(1);
    frame_.reset();
    const int before = sent;
    QTRY_VERIFY(sent > before + 20); // still talking, to nobody
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
}

void tst_MonitorMainUI::recordingsHaveAPageOfTheirOwn() {
    window_->playback().play(
        {{QStringLiteral("大门"), QStringLiteral("a"), {dir_->filePath(QStringLiteral("no.avi"))}}});
    auto* const module = window_->findChild<QToolButton*>(QStringLiteral("playbackModule"));
    QVERIFY(module->isChecked() && window_->playback().page().isVisible() && !window_->grid().isVisible());
    QTRY_COMPARE(message(), QStringLiteral("无法播放 no.avi：文件不存在或无权读取"));
    frame_->resize(MonitorMainUI::SmallestWidth, MonitorMainUI::SmallestHeight);
    QTRY_VERIFY(window_->width() <= MonitorMainUI::SmallestWidth + 8); // the frame's own border
    QVERIFY(window_->playback().page().visibleRegion().boundingRect() == window_->playback().page().rect());
    QTest::mouseClick(window_->findChild<QToolButton*>(QStringLiteral("videoModule")), Qt::LeftButton);
    QVERIFY(window_->grid().isVisible() && !window_->playback().page().isVisible());
}

QTEST_MAIN(tst_MonitorMainUI)
#include "tst_MonitorMainUI.moc"
