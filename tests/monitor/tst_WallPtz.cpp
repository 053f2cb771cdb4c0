#include "base/JsonText.h"
#include "monitor/MainWindowTest.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "video/ui/ItemVideo.h"

#include <QAbstractButton>
#include <QtTest>

#include <atomic>

using corvanta::json::parseObject;

/// Keys and pad move the camera of the tile that is shown alone.
class tst_WallPtz : public MainWindowTest {
    Q_OBJECT
    const char* deviceList() const override {
        return R"({"ipnclist":[
            {"ipncid":"a","nickname":"A","type":"video","online":true,"groupid":"1","authority":{"admin":true}},
            {"ipncid":"b","nickname":"B","type":"video","online":true,"groupid":"1","authority":{"video":true}}],
            "group":[{"id":"1","name":"G","ipnclist":["a","b"]}]})";
    }

private slots:
    void keysMoveTheCameraOfATileAlone();
    void keysSelectAmongManyTiles();
    void aClosedTileStopsItsCamera();
    void withoutTheRightNothingIsAsked();
    void aCameraThatIsNotHeardOf_data();
    void aCameraThatIsNotHeardOf();
    void silenceIsTold();

private:
    void zoom(int index, const char* caps = R"({"pan":true,"tilt":true,"zoom":true})") {
        sdk_.onRequest = [caps = std::string(caps)](const FakeSdk::Request& request) -> std::vector<std::string> {
            if (parseObject(request.json)[QStringLiteral("reqtype")] != QVariant(QStringLiteral("p2pmsg")))
                return {};
            return {R"({"retcode":0,"resp":{"state":"ok","getcmds":{"ptzcaps":)" + caps + "}}}"};
        };
        openAndRun(index == 0 ? QStringLiteral("a") : QStringLiteral("b"));
        window_->grid().on_setfocus(index);
        window_->grid().setZoom(index);
        QApplication::setActiveWindow(frame_.get());
        tile(index).setFocus();
    }
    QWidget* pad() const { return window_->grid().findChild<QWidget*>(QStringLiteral("ptzPad")); }
    QStringList told() const {
        QStringList all;
        for (const FakeSdk::Request& request : sdk_.requests()) {
            const QVariantMap commands = parseObject(request.json)[QStringLiteral("setcmds")].toMap();
            if (!commands.isEmpty())
                all += QString::fromStdString(corvanta::json::toText(commands));
        }
        return all;
    }
    const QString stop_ = QStringLiteral(R"({"ptzstop":1})");
};

void tst_WallPtz::keysMoveTheCameraOfATileAlone() {
    zoom(0);
    QTRY_VERIFY(pad()->isVisible());
    QVERIFY(pad()->y() > tile(0).y() + 24); // the title stays free
    QTest::keyPress(&tile(0), Qt::Key_Up);
    QTRY_COMPARE(told(), QStringList{R"({"ptzmove":{"pan":0,"speed":5,"tilt":1,"zoom":0}})"});
    QTest::keyPress(&tile(0), Qt::Key_Left);
    QTRY_COMPARE(told().size(), 2);
    QCOMPARE(told()[1], QStringLiteral(R"({"ptzmove":{"pan":-1,"speed":5,"tilt":1,"zoom":0}})"));
    QTest::keyRelease(&tile(0), Qt::Key_Left);
    QTest::keyRelease(&tile(0), Qt::Key_Up);
    QTRY_COMPARE(told().last(), stop_);
    const int count = told().size();
    QTest::keyPress(&tile(0), Qt::Key_Plus);
    QTRY_COMPARE(told().size(), count + 1);
    tile(0).clearFocus(); // while the key is held
    QTRY_COMPARE(told().last(), stop_);
}

void tst_WallPtz::keysSelectAmongManyTiles() {
    zoom(0);
    QTRY_VERIFY(pad()->isVisible());
    window_->grid().setLayout(2, 2, false);
    tile(0).setFocus();
    QTest::keyClick(&tile(0), Qt::Key_Right);
    QTRY_COMPARE(window_->grid().selectedIndex(), 1);
    QCOMPARE(told(), QStringList());
}

void tst_WallPtz::aClosedTileStopsItsCamera() {
    zoom(0);
    QTRY_VERIFY(pad()->isVisible());
    QTest::keyPress(&tile(0), Qt::Key_Down);
    QTRY_COMPARE(told().size(), 1);
    window_->live().stopDevice(QStringLiteral("a"));
    QTRY_COMPARE(told().last(), stop_);
    QVERIFY(!pad()->isVisible());
}

void tst_WallPtz::withoutTheRightNothingIsAsked() {
    zoom(1);
    QTest::keyClick(&tile(1), Qt::Key_Up);
    QVERIFY(!pad()->isVisible());
    for (const FakeSdk::Request& request : sdk_.requests())
        QVERIFY(!QString::fromStdString(request.json).contains(QStringLiteral("ptz")));
}

void tst_WallPtz::aCameraThatIsNotHeardOf_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("silence") << QByteArray();
    QTest::newRow("offline") << QByteArray(
        R"json({"retcode":10,"resp":{"state":"error","errcode":"(ipnc offline)"}})json");
    QTest::newRow("a part of an answer") << QByteArray(R"({"retcode":0,"resp":{"state":"ok","getcmds":{"ptzc)");
}

// It is asked again until it says whether it can be moved.
void tst_WallPtz::aCameraThatIsNotHeardOf() {
    QFETCH(QByteArray, reply);
    manager_->context().gateway.setPatience(std::chrono::milliseconds(50));
    std::atomic<int> asked{0};
    std::atomic<bool> isBack{false};
    sdk_.onRequest = [&, reply = reply.toStdString()](const FakeSdk::Request& request) -> std::vector<std::string> {
        if (parseObject(request.json)[QStringLiteral("reqtype")] != QVariant(QStringLiteral("p2pmsg")))
            return {};
        ++asked;
        if (isBack)
            return {R"({"retcode":0,"resp":{"state":"ok","getcmds":{"ptzcaps":{"pan":true}}}})"};
        return reply.empty() ? std::vector<std::string>() : std::vector<std::string>{reply};
    };
    openAndRun(QStringLiteral("a"));
    window_->grid().on_setfocus(0);
    window_->grid().setZoom(0);
    QTRY_VERIFY(asked > 2);
    QVERIFY(!pad()->isVisible());
    isBack = true;
    QTRY_VERIFY(pad()->isVisible());
    sdk_.onRequest = {};
}

void tst_WallPtz::silenceIsTold() {
    zoom(0);
    QTRY_VERIFY(pad()->isVisible());
    sdk_.onRequest = {};
    manager_->context().gateway.setPatience(std::chrono::milliseconds(50));
    pad()->findChild<QAbstractButton*>(QStringLiteral("pad-ptz-home"))->click();
    QTRY_COMPARE(message(), QStringLiteral("服务器没有响应，请稍后再试!"));
}

QTEST_MAIN(tst_WallPtz)
#include "tst_WallPtz.moc"
