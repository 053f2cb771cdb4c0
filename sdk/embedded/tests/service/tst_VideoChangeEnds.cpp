#include "ChangeWorld.h"

#include <QtTest>

#include <atomic>

using namespace ipncsdk;
using namespace ipncsdk::test;
using media::StreamError;

/// Requests and streams that end while light and main stream are being exchanged.
class tst_VideoChangeEnds final : public QObject {
    Q_OBJECT

private slots:
    void endsDuringAChange_data();
    void endsDuringAChange();
    void theOldDiesMeanwhile();
    void stopsInsideACallback_data();
    void stopsInsideACallback();
};

void tst_VideoChangeEnds::endsDuringAChange_data() {
    QTest::addColumn<QByteArray>("way");
    QTest::addColumn<bool>("oldLives");
    for (const char* way : {"stop", "sign-out", "clean-up"}) {
        QTest::addRow("%s", way) << QByteArray(way) << true;
        QTest::addRow("%s, only the new one is left", way) << QByteArray(way) << false;
    }
}

void tst_VideoChangeEnds::endsDuringAChange() {
    QFETCH(QByteArray, way);
    QFETCH(bool, oldLives);
    ChangeWorld world;
    world.main.held = true;
    Viewer viewer(world.sdk);
    viewer.open("CAM0001");
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QVERIFY(waitFor([&] { return world.main.begun == 1; }));
    world.light.lose = !oldLives;
    QVERIFY(world.streamsAre(oldLives ? 2 : 1));
    if (way == "stop") {
        viewer.stop();
        QCOMPARE(viewer.waitForResult(0), static_cast<int>(StreamError::Stopped));
        QVERIFY((viewer.course() == Course{"avstate", "avopen light"}));
    } else if (way == "sign-out") {
        QCOMPARE(world.sdk.command({{"type", "logout"}}).at("retcode"), Json(0));
        QCOMPARE(viewer.waitForResult(0), static_cast<int>(StreamError::NotSignedIn));
        QVERIFY((viewer.course() == Course{"avstate", "avopen light", "avclose 4"}));
    } else {
        QCOMPARE(world.sdk.runtime.cleanup(), emSuccess);
        QCOMPARE(world.sdk.hub->running.load(), 0);
    }
    world.main.held = false;
    QVERIFY(world.streamsAre(0));
    QCOMPARE(viewer.fault(), std::string());
}

void tst_VideoChangeEnds::theOldDiesMeanwhile() {
    ChangeWorld world;
    world.main.held = true;
    Viewer viewer(world.sdk);
    viewer.open("CAM0001");
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QVERIFY(waitFor([&] { return world.main.begun == 1; }));
    world.light.lose = true;
    QVERIFY(world.streamsAre(1));
    QCOMPARE(world.sdk.command({{"type", "avchange"}, {"reqid", viewer.id()}, {"capture", "x.jpg"}}).at("retcode"),
             Json(6));
    // Back to the stream that is gone: it is opened anew.
    world.light.lose = false;
    world.light.held = true;
    viewer.change(false);
    QCOMPARE(viewer.waitForResult(0), static_cast<int>(StreamError::Replaced));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(1), static_cast<int>(StreamError::Replaced));
    world.main.held = false;
    QCOMPARE(viewer.waitForResult(2), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QVERIFY((viewer.course() == Course{"avstate", "avopen light", "avopen main"}));
    // And once more, but now there is nothing left that delivers.
    viewer.change(false);
    QVERIFY(waitFor([&] { return world.light.begun == 3; }));
    world.main.lose = true;
    QVERIFY(world.streamsAre(1));
    world.light.failure = StreamError::PasswordRefused;
    world.light.held = false;
    QCOMPARE(viewer.waitForResult(3), 12);
    QVERIFY(!viewer.messages.waitForType("avclose").is_null());
    QVERIFY((viewer.course() == Course{"avstate", "avopen light", "avopen main", "avclose 15"}));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(4), 6);
    QCOMPARE(viewer.fault(), std::string());
}

void tst_VideoChangeEnds::stopsInsideACallback_data() {
    QTest::addColumn<int>("moment");
    QTest::newRow("the new one's opening") << 0;
    QTest::newRow("the new one's first frame") << 1;
    QTest::newRow("the old one's frame, while the new one waits for its turn") << 2;
}

void tst_VideoChangeEnds::stopsInsideACallback() {
    QFETCH(int, moment);
    for (int round = 0; round < 10; ++round) {
        ChangeWorld world;
        Viewer viewer(world.sdk);
        std::atomic<bool> changing{false};
        std::atomic<bool> stopped{false};
        viewer.onMessage = [&](const std::string& text) {
            const bool isFrame = text.find("videodata\"") != std::string::npos;
            const bool isMain = text.find(R"("hd":true)") != std::string::npos;
            const bool isBig = text.find(R"("w":8)") != std::string::npos;
            if (moment == 2 && isFrame && changing)
                waitFor([&] { return world.main.frames > 0; });
            if (stopped || !changing || (moment == 0 ? !isMain : moment == 1 ? !isBig : !isFrame))
                return;
            stopped = true;
            viewer.stop();
        };
        viewer.open("CAM0001");
        QVERIFY(viewer.waitForFramesOf(false));
        changing = true;
        viewer.change(true);
        QVERIFY(waitFor([&] { return stopped.load(); }));
        QVERIFY(world.streamsAre(0));
        QVERIFY(viewer.messages.ofType("avclose").empty());
        QCOMPARE(viewer.fault(), std::string());
    }
}

QTEST_APPLESS_MAIN(tst_VideoChangeEnds)
#include "tst_VideoChangeEnds.moc"
