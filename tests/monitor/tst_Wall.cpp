#include "base/JsonText.h"
#include "base/ScreenPoll.h"
#include "base/Settings.h"
#include "monitor/MainWindowTest.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/PollRunner.h"
#include "support/MessageLog.h"
#include "video/ui/ItemVideo.h"
#include "video/ui/TileMenu.h"

#include <QAction>
#include <QBuffer>
#include <QContextMenuEvent>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include <atomic>
#include <thread>

namespace keys = corvanta::keys;
using Mode = ScreenPoll::Mode;

namespace {

constexpr const char* List =
    R"({"ipnclist":[{"ipncid":"a","type":"video","online":true},{"ipncid":"b","type":"video","online":true},
                    {"ipncid":"c","type":"video","online":true},{"ipncid":"d","type":"video","online":false},
                    {"ipncid":"e","type":"video","online":true}],
        "group":[{"id":"1","name":"一组","ipnclist":["a","b","c"]},{"id":"2","name":"二组","ipnclist":["d"]},
                 {"id":"3","name":"三组","ipnclist":["e"]}]})";

constexpr const char* Reordered =
    R"({"ipnclist":[{"ipncid":"a","type":"video","online":true},{"ipncid":"b","type":"video","online":true},
                    {"ipncid":"d","type":"video","online":false},{"ipncid":"e","type":"video","online":true}],
        "group":[{"id":"1","name":"一组","ipnclist":["b","a"]},{"id":"2","name":"二组","ipnclist":["d","e"]}]})";

} // namespace

/// Polling, previews, order, exchange of streams and saved state, over the scripted SDK.
class tst_Wall final : public MainWindowTest {
    Q_OBJECT
private slots:
    void pollsVideosInTurn();
    void pollsPreviews();
    void pollIsAskedAbout_data();
    void pollIsAskedAbout();
    void pollGoesOnAfterARestart();
    void previewIsShownAndGoes();
    void streamsFollowTheirDevices();
    void movedStreamsNeverPaintElsewhere();
    void bigTilesGetTheMainStream();
    void stateComesBack();
    void badStateDoesNoHarm();
    void movesAreAskedOfTheService();
    void defaultGroupTakesTheFirstTiles();
    void menuOffersWhatCanBeDone();
    void keysOnTheWall();

private:
    const char* deviceList() const override { return List; }
    Settings& settings() const { return manager_->context().settings; }
    ScreenPoll& poll() const { return manager_->context().poll; }
    void setPollEntries() const;
    QStringList open() const;
    void answerNextQuestion(bool yes);
    std::string jpeg(int width, int height);
    void respondPreview(int id, int width);

    QByteArray jpeg_;
    int questions_ = 0;
};

void tst_Wall::setPollEntries() const {
    poll().setEntries(
        {{QStringLiteral("1"), {QStringLiteral("a"), QStringLiteral("d")}, {}},
         {QStringLiteral("2"), {QStringLiteral("d")}, {}},
         {QStringLiteral("3"), {QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("gone")}, {}}});
}

QStringList tst_Wall::open() const {
    return window_->live().openVideos().values();
}

void tst_Wall::answerNextQuestion(bool yes) {
    QTimer::singleShot(0, this, [this, yes] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        ++questions_;
        QVERIFY(dialog->findChild<QLabel*>(QStringLiteral("tipText"))->text() ==
                QStringLiteral("正在轮屏，是否停止轮屏?"));
        dialog->findChild<QPushButton*>(yes ? QStringLiteral("tipOk") : QStringLiteral("tipCancel"))->click();
    });
}

void tst_Wall::pollsVideosInTurn() {
    setPollEntries();
    settings().set(keys::PollInterval, 0);
    openAndRun(QStringLiteral("e"));
    const MessageLog log;
    manager_->setPollValue(Mode::Videos);
    QCOMPARE(open(), QStringList{QStringLiteral("a")}); // what was open is closed, d is offline
    QCOMPARE(settings().get(keys::PollInterval).toInt(), 5);
    auto* const timer = window_->poll().findChild<QTimer*>(QStringLiteral("pollTimer"));
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 5000);
    QCOMPARE(log.count(QStringLiteral("getNextPollDevices ")), 1);

    window_->poll().onPollTimeout();
    QCOMPARE(open(), (QStringList{QStringLiteral("b"), QStringLiteral("c")}));
    QCOMPARE(log.count(QStringLiteral("gone")), 1); // named by the list of devices only: it is not online
    window_->poll().onPollTimeout();
    QCOMPARE(open(), QStringList{QStringLiteral("a")});
    manager_->setPollValue(Mode::Off);
    QVERIFY(open().isEmpty());
    QVERIFY(!timer->isActive());
    for (int index = 0; index < 64; ++index)
        QVERIFY(tile(index).text().isEmpty());
}

void tst_Wall::pollsPreviews() {
    setPollEntries();
    manager_->setPollValue(Mode::Previews);
    QCOMPARE(lastRequest().value(QStringLiteral("reqtype")).toString(), QStringLiteral("preview"));
    QVERIFY(open().isEmpty());
    const std::vector<FakeSdk::Request> sent = requests();
    QCOMPARE(sent.size(), std::size_t{2}); // a and d, online or not
    respondPreview(sent[0].id, 64);
    QTRY_VERIFY(tile(0).hasPreview());
    window_->poll().onPollTimeout();
    QVERIFY(!tile(0).hasPreview());
    // What the first step's other request still brings is not shown.
    respondPreview(sent[1].id, 64);
    QTest::qWait(0);
    for (int index = 0; index < 64; ++index)
        QVERIFY(!tile(index).hasPreview());
    manager_->setPollValue(Mode::Off);
}

void tst_Wall::pollIsAskedAbout_data() {
    QTest::addColumn<bool>("agreed");
    QTest::newRow("agreed") << true;
    QTest::newRow("refused") << false;
}

void tst_Wall::pollIsAskedAbout() {
    QFETCH(bool, agreed);
    setPollEntries();
    questions_ = 0;
    manager_->setPollValue(Mode::Videos);
    answerNextQuestion(agreed);
    openByDoubleClick(QStringLiteral("b"));
    QCOMPARE(questions_, 1);
    QCOMPARE(open(), QStringList{agreed ? QStringLiteral("b") : QStringLiteral("a")});
    QCOMPARE(poll().mode(), agreed ? Mode::Off : Mode::Videos);
    if (agreed) {
        openByDoubleClick(QStringLiteral("b")); // nothing is asked any more
        QCOMPARE(questions_, 1);
        return;
    }
    answerNextQuestion(false);
    window_->findChild<QToolButton*>(QStringLiteral("stopAll"))->click();
    QCOMPARE(questions_, 2);
    QCOMPARE(open(), QStringList{QStringLiteral("a")});
}

void tst_Wall::pollGoesOnAfterARestart() {
    setPollEntries();
    openAndRun(QStringLiteral("e"));
    manager_->setPollValue(Mode::Videos);
    stop();
    sdk_.reset();
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    start();
    QTRY_COMPARE(open(), QStringList{QStringLiteral("a")});
    QVERIFY(window_->findChild<QToolButton*>(QStringLiteral("pollButton"))->isChecked());
    // Signed out, nothing is polled; signed in again, it goes on.
    window_->findChild<QAction*>(QStringLiteral("accountSignOut"))->trigger();
    sdk_.setDocument(R"({"type":"phoneid"})", "");
    sdk_.sendToClient(R"({"type":"logout"})");
    QTRY_VERIFY(tree().isEmpty());
    QVERIFY(!window_->poll().findChild<QTimer*>(QStringLiteral("pollTimer"))->isActive());
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    sendList(List);
    QTRY_VERIFY(window_->poll().findChild<QTimer*>(QStringLiteral("pollTimer"))->isActive());
    manager_->setPollValue(Mode::Off);
}

std::string tst_Wall::jpeg(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    jpeg_.clear();
    QBuffer buffer(&jpeg_);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG");
    return "\"data\":" + std::to_string(reinterpret_cast<std::intptr_t>(jpeg_.constData())) +
           ",\"len\":" + std::to_string(jpeg_.size());
}

void tst_Wall::respondPreview(int id, int width) {
    report(id, ("\"type\":\"preview\",\"retcode\":0," + jpeg(width, width / 2)).c_str());
    jpeg_.fill('x'); // gone when the callback has returned
}

void tst_Wall::previewIsShownAndGoes() {
    const auto preview = [this] {
        window_->live().openPreview(QStringLiteral("a"));
        return lastId();
    };
    respondPreview(preview(), 64);
    QTRY_VERIFY(tile(0).hasPreview());
    QVERIFY(window_->live().hasPreview(QStringLiteral("a")));
    const QPoint middle = tile(0).mapTo(frame_.get(), tile(0).rect().center());
    const QColor shown(frame_->grab().toImage().pixel(middle));
    QVERIFY2(shown.red() > 200 && shown.green() < 60, qPrintable(shown.name()));

    // A newer one of the same device takes its place; an alarm with pictures asks for it.
    const int before = lastId();
    emit window_->sigDeal(QStringLiteral("更新设备预览"), QStringLiteral("a"));
    QVERIFY(lastId() > before);
    emit window_->sigDeal(QStringLiteral("更新设备预览"), QStringLiteral("b")); // shows none
    QCOMPARE(requests().size(), std::size_t{2});
    QVERIFY(tile(0).hasPreview());
    report(lastId(), R"("type":"preview","retcode":2)");
    QTRY_VERIFY(!tile(0).hasPreview());
    QCOMPARE(tile(0).text(), QStringLiteral("打开失败(2)"));

    for (const char* bad : {R"("type":"preview","retcode":0)", R"("type":"preview","retcode":0,"data":0,"len":5)",
                            R"("type":"preview","retcode":0,"data":4096,"len":-1)", R"("nothing":1)"}) {
        report(preview(), bad);
        QTRY_VERIFY(!window_->live().hasPreview(QStringLiteral("a")));
    }

    respondPreview(preview(), 64);
    QTRY_VERIFY(tile(0).hasPreview());
    openAndRun(QStringLiteral("a")); // the live video takes its place
    QVERIFY(!tile(0).hasPreview());
    QVERIFY(!window_->live().hasPreview(QStringLiteral("a")));
    const std::size_t sent = requests().size();
    window_->live().openPreview(QStringLiteral("a")); // has better already
    QCOMPARE(requests().size(), sent);
}

void tst_Wall::streamsFollowTheirDevices() {
    const int a = openAndRun(QStringLiteral("a"));
    const int b = openAndRun(QStringLiteral("b"));
    const int c = openAndRun(QStringLiteral("c"));
    window_->grid().setLayout(3, 3, false);
    window_->live().open(QStringLiteral("e"));
    const int e = lastId(); // still opening
    sendPicture(a, 64, 36);
    sendPicture(b, 32, 18);
    QTRY_COMPARE(tile(0).frameSize().width, 64U);
    QTRY_COMPARE(tile(1).frameSize().width, 32U);

    sendList(Reordered); // b before a, c is gone, e right behind d
    QTRY_COMPARE(tile(0).requestId(), b);
    QCOMPARE(tile(1).requestId(), a);
    QCOMPARE(tile(2).requestId(), 0);
    QCOMPARE(sdk_.stopped(), std::vector<int>{c});
    QCOMPARE(tile(1).streamParameters().value(QStringLiteral("DeviceId")).toString(), QStringLiteral("a"));
    sendPicture(a, 64, 36);
    sendPicture(b, 32, 18);
    QTRY_COMPARE(tile(1).frameSize().width, 64U);
    QTRY_COMPARE(tile(0).frameSize().width, 32U);
    report(e, R"("type":"avopen","avparam":{})");
    QTRY_COMPARE(tile(3).requestId(), e);
    QCOMPARE(tile(4).requestId(), 0);
    window_->live().stopDevice(QStringLiteral("a"));
    QCOMPARE(tile(1).requestId(), 0);
    QCOMPARE(tile(0).requestId(), b);
}

// Pictures go on while the order changes all the time.
void tst_Wall::movedStreamsNeverPaintElsewhere() {
    openAndRun(QStringLiteral("a"));
    openAndRun(QStringLiteral("b"));
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
    const std::vector<FakeSdk::Request> requests = this->requests();
    std::vector<std::vector<uchar>> pictures(2);
    for (std::size_t number = 0; number < 2; ++number) {
        const int width = number == 0 ? 64 : 32;
        pictures[number].assign(static_cast<std::size_t>(width * width * 3 / 2), 128);
        threads.emplace_back([&stop, request = requests[number], width, data = pictures[number].data()] {
            const std::string frame =
                "{\"reqid\":" + std::to_string(request.id) +
                ",\"type\":\"decodevideodata\",\"data\":" + std::to_string(reinterpret_cast<std::intptr_t>(data)) +
                ",\"w\":" + std::to_string(width) + ",\"h\":" + std::to_string(width) + "}";
            while (!stop)
                request.callback(frame);
        });
    }
    bool right = true;
    for (const int index : {0, 1})
        connect(&tile(index), &ItemVideo::sigYuv, this, [&, index](uchar*, uint width, uint) {
            const QString device = tile(index).streamParameters().value(QStringLiteral("DeviceId")).toString();
            right = right && width == (device == QStringLiteral("a") ? 64U : 32U);
        });
    for (int round = 0; round < 30; ++round) {
        sendList(round % 2 == 0 ? Reordered : List);
        const QString first = round % 2 == 0 ? QStringLiteral("b") : QStringLiteral("a");
        QTRY_COMPARE(tile(0).streamParameters().value(QStringLiteral("DeviceId")).toString(), first);
        QTRY_COMPARE(tile(0).frameSize().width, round % 2 == 0 ? 32U : 64U);
    }
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    QVERIFY(right);
}

void tst_Wall::bigTilesGetTheMainStream() {
    const int a = openAndRun(QStringLiteral("a"));
    openAndRun(QStringLiteral("b"));
    const auto changes = [this] {
        QStringList result;
        for (const std::string& config : sdk_.configs()) {
            const QVariantMap map = corvanta::json::parseObject(config);
            if (map.value(QStringLiteral("type")).toString() == QStringLiteral("avchange"))
                result += QStringLiteral("%1 %2")
                              .arg(map.value(QStringLiteral("reqid")).toInt())
                              .arg(map.value(QStringLiteral("hd")).toBool() ? QStringLiteral("main")
                                                                            : QStringLiteral("light"));
        }
        return result;
    };
    const auto words = [](int id, const char* what) {
        return QStringLiteral("%1 %2").arg(id).arg(QLatin1String(what));
    };
    QTest::mouseDClick(&tile(0), Qt::LeftButton);
    QTRY_COMPARE(changes(), QStringList{words(a, "main")});
    report(a, R"("type":"avopen","contype":"LOOP","avparam":{"hd":true,"weidth":1280})");
    QTRY_COMPARE(tile(0).streamParameters().value(QStringLiteral("weidth")).toInt(), 1280);
    QCOMPARE(tile(0).requestId(), a);
    QTest::mouseDClick(&tile(0), Qt::LeftButton);
    QTRY_COMPARE(changes(), (QStringList{words(a, "main"), words(a, "light")}));
    // Who goes through the tiles quickly gets the last one only.
    window_->grid().setZoom(1);
    window_->grid().setZoom(0);
    window_->grid().setLayout(2, 2, false);
    QTest::qWait(0);
    QCOMPARE(changes().size(), 2);
    QCOMPARE(requests().size(), std::size_t{2}); // never by a new request
}

void tst_Wall::stateComesBack() {
    window_->grid().setLayout(3, 6, true);
    openAndRun(QStringLiteral("a"));
    openAndRun(QStringLiteral("e"));
    tree().collapse(treeIndex(QStringLiteral("二组")));
    tree().setCurrentIndex(treeIndex(QStringLiteral("c")));
    QTest::mouseDClick(&tile(4), Qt::LeftButton); // e is zoomed
    frame_->setGeometry(40, 30, 900, 560);
    stop();

    sdk_.reset();
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    start();
    QCOMPARE(window_->grid().grid().columns(), 6);
    QCOMPARE(window_->grid().grid().zoomIndex(), 4);
    QCOMPARE(frame_->geometry(), QRect(40, 30, 900, 560));
    QTRY_COMPARE(open(), (QStringList{QStringLiteral("a"), QStringLiteral("e")}));
    QCOMPARE(lastOpenRequest().value(QStringLiteral("hd")).toBool(), true); // e, alone on the screen
    QVERIFY(!tree().isExpanded(treeIndex(QStringLiteral("二组"))));
    QVERIFY(tree().isExpanded(treeIndex(QStringLiteral("一组"))));
    QCOMPARE(tree().currentDevice(), QStringLiteral("c"));

    // Switched off, a start begins with nothing.
    settings().set(keys::RestoreState, false);
    stop();
    start();
    QCOMPARE(window_->grid().grid().rows(), 8);
    QCOMPARE(window_->grid().grid().zoomIndex(), -1);
    QVERIFY(open().isEmpty());
}

void tst_Wall::badStateDoesNoHarm() {
    stop();
    {
        Settings file(dir_->filePath(QStringLiteral("config/set.json")));
        file.load();
        file.set(keys::GridRows, 5);
        file.set(keys::GridColumns, QStringLiteral("many"));
        file.set(keys::VideoZoom, 99);
        file.set(keys::OpenVideos,
                 QVariantList{
                     QVariantMap{{QStringLiteral("index"), 0}, {QStringLiteral("ipncid"), QStringLiteral("gone")}},
                     QVariantMap{{QStringLiteral("index"), 1}, {QStringLiteral("ipncid"), QStringLiteral("b")}},
                     QStringLiteral("?")});
        file.set(keys::WindowPlace, QVariantMap{{QStringLiteral("x"), -90000},
                                                {QStringLiteral("y"), 70000},
                                                {QStringLiteral("width"), 9000},
                                                {QStringLiteral("height"), 2}});
        file.set(keys::DeviceTreeState, 17);
        file.set(keys::PanelWidth, QStringLiteral("wide"));
        file.save();
    }
    const MessageLog log;
    start();
    QCOMPARE(window_->grid().grid().rows(), 8);
    QTRY_COMPARE(open(), QStringList{QStringLiteral("b")});
    QCOMPARE(log.count(QStringLiteral("not opened again")), 1);
    QVERIFY(frame_->screen()->geometry().intersects(frame_->geometry()));
    QVERIFY(frame_->geometry().top() >= 0);
}

void tst_Wall::movesAreAskedOfTheService() {
    emit tree().sigMoveDevice(QStringLiteral("a"), QStringLiteral("3"), 1);
    const auto asked = [this] {
        const QVariantMap request = lastRequest().value(QStringLiteral("urlreq")).toMap();
        const QVariantMap parameters = request.value(QStringLiteral("params")).toMap();
        return QStringLiteral("%1 %2 %3 %4")
            .arg(request.value(QStringLiteral("clienttype")).toString(),
                 parameters.value(QStringLiteral("groupid")).toString(),
                 parameters.value(QStringLiteral("ipncid")).toString(),
                 parameters.value(QStringLiteral("index")).toString());
    };
    QCOMPARE(asked(), QStringLiteral("movedeviceindex 3 a 1"));
    // The tree shows what the service says, not what was asked.
    QCOMPARE(tree().model()->rowCount(treeIndex(QStringLiteral("一组"))), 3);
    report(lastId(), R"-("type":"urlreq","retcode":6,"resp":{"state":"error","errcode":"(not authority)"})-");
    QTRY_VERIFY(!message().isEmpty());
    const MessageLog log;
    emit tree().sigMoveGroup(QStringLiteral("3"), 0);
    QCOMPARE(asked(), QStringLiteral("movegroupindex 3  0"));
    QCOMPARE(log.count(QStringLiteral("before index")), 1);
    QCOMPARE(log.count(QStringLiteral("after index")), 1);
    QSignalSpy changed(&manager_->context().events, &AppEvents::sig_updateDeviceIndex);
    report(lastId(), R"("type":"urlreq","retcode":0,"resp":{"state":"ok"})");
    QTRY_COMPARE(changed.count(), 1);
    const std::size_t sent = requests().size();
    emit tree().sigMoveDevice(QStringLiteral("a"), QStringLiteral("gone"), 0);
    emit tree().sigMoveGroup(QStringLiteral("gone"), 0);
    QCOMPARE(requests().size(), sent);
}

void tst_Wall::defaultGroupTakesTheFirstTiles() {
    QCOMPARE(manager_->context().devices.deviceOfTile(0), QStringLiteral("a"));
    emit tree().sigDefaultGroup(QStringLiteral("3"));
    QCOMPARE(manager_->context().devices.deviceOfTile(0), QStringLiteral("e"));
    QCOMPARE(manager_->context().devices.deviceOfTile(1), QStringLiteral("a"));
    window_->grid().setLayout(1, 1, false);
    window_->live().open(QStringLiteral("e"));
    QCOMPARE(open(), QStringList{QStringLiteral("e")});
    window_->live().open(QStringLiteral("a"));
    QCOMPARE(message(), QStringLiteral("请确认设备[a]在左侧设备树中的索引小于64,或将设备[a]所在组设为默认组"));
}

void tst_Wall::menuOffersWhatCanBeDone() {
    const auto enabled = [this](const char* name) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1));
        QCoreApplication::sendEvent(&tile(0), &event);
        tile(0).menu().hide();
        return tile(0).menu().findChild<QAction*>(QLatin1String(name))->isEnabled();
    };
    QVERIFY(enabled("tileOpen") && !enabled("tileStop") && !enabled("tileLeaveFullScreen"));
    QVERIFY(!enabled("tilePollVideos")); // there is no list yet
    tile(0).menu().findChild<QAction*>(QStringLiteral("tileOpen"))->trigger();
    QVERIFY(!enabled("tileOpen") && enabled("tileStop"));
    window_->grid().toggleZoom(0);
    QVERIFY(enabled("tileLeaveFullScreen"));
    tile(0).menu().findChild<QAction*>(QStringLiteral("tileLeaveFullScreen"))->trigger();
    QCOMPARE(window_->grid().grid().zoomIndex(), -1);
    setPollEntries();
    QVERIFY(enabled("tilePollVideos") && enabled("tilePollPreviews"));
    tile(0).menu().findChild<QAction*>(QStringLiteral("tilePollVideos"))->trigger();
    QCOMPARE(poll().mode(), Mode::Videos);
    tile(0).menu().findChild<QAction*>(QStringLiteral("tilePollVideos"))->trigger();
    QCOMPARE(poll().mode(), Mode::Off);
}

void tst_Wall::keysOnTheWall() {
    QTest::mouseClick(&tile(0), Qt::LeftButton);
    tile(0).setFocus();
    QTest::keyClick(&tile(0), Qt::Key_Return);
    QCOMPARE(open(), QStringList{QStringLiteral("a")});
    QTest::keyClick(&tile(0), Qt::Key_Return); // stays open
    QCOMPARE(open(), QStringList{QStringLiteral("a")});
    QTest::keyClick(&tile(0), Qt::Key_Delete);
    QVERIFY(open().isEmpty());
    QTest::keyClick(&tile(0), Qt::Key_Space);
    QCOMPARE(window_->grid().grid().zoomIndex(), 0);
}

QTEST_MAIN(tst_Wall)
#include "tst_Wall.moc"
