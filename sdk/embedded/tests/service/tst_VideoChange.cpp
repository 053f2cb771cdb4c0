#include "ChangeWorld.h"

#include <QtTest>

#include <filesystem>
#include <random>
#include <thread>

using namespace ipncsdk;
using namespace ipncsdk::test;
using media::Quality;
using media::StreamError;

/// The exchange of a running request's light and main stream, its whole life: over a hub whose streams do what a test
/// tells them.
class tst_VideoChange final : public QObject {
    Q_OBJECT

private slots:
    void takesOver_data();
    void takesOver();
    void theOldGoesOnUntilTheNewIsThere();
    void theNewCannotBeOpened_data();
    void theNewCannotBeOpened();
    void theAccountMayNotHaveTheNew();
    void badRequests_data();
    void badRequests();
    void whatRunsAlready();
    void laterChangesReplace();
    void beforeTheFirstOpened();
    void capturesWhatIsDelivered();
    void oneAddressForBoth_data();
    void oneAddressForBoth();
    void theOldIsSlow();
    void manyStreams();
};

namespace {

const Json codedKeys = {{"recvavdata", true}, {"recvdecodeavdata", false}};

} // namespace

void tst_VideoChange::takesOver_data() {
    QTest::addColumn<bool>("decoded");
    QTest::addColumn<bool>("coded");
    QTest::newRow("pictures") << true << false;
    QTest::newRow("access units") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_VideoChange::takesOver() {
    QFETCH(bool, decoded);
    QFETCH(bool, coded);
    ChangeWorld world;
    QVERIFY(world.good);
    Viewer viewer(world.sdk);
    viewer.open("CAM0001", {{"recvavdata", coded}, {"recvdecodeavdata", decoded}, {"maxopentime", 3}});
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QVERIFY(viewer.waitForFrames(20));
    QVERIFY(world.streamsAre(1));
    viewer.change(false);
    QCOMPARE(viewer.waitForResult(1), 0);
    QVERIFY(viewer.waitForFrames(20));
    QVERIFY(world.streamsAre(1));
    QVERIFY((viewer.course() == Course{"avstate", "avopen light", "avopen main", "avopen light"}));
    const Json opened = viewer.messages.all().at(2);
    QCOMPARE(opened.at("reqid"), Json(viewer.id()));
    QCOMPARE(opened.at("retcode"), Json(0));
    QCOMPARE(opened.at("avparam").at("weidth"), Json(2 * FakeHub::width));
    QCOMPARE(opened.at("avparam").at("height"), Json(2 * FakeHub::height));
    QCOMPARE(viewer.results().front(),
             (Json{{"type", "avchange"}, {"retcode", 0}, {"reqid", viewer.id()}, {"hd", true}}));
    // The later streams are asked for as the first one was.
    for (const media::Subscription& wanted : world.sdk.hub->subscriptions()) {
        QCOMPARE(wanted.camera, std::string("CAM0001"));
        QCOMPARE(wanted.decoded, decoded);
        QCOMPARE(wanted.coded, coded);
        QVERIFY(wanted.openTimeout == std::chrono::minutes(3));
    }
    viewer.stop();
    QVERIFY(world.streamsAre(0));
    QCOMPARE(viewer.fault(), std::string());
}

void tst_VideoChange::theOldGoesOnUntilTheNewIsThere() {
    ChangeWorld world;
    world.main.held = true;
    Viewer viewer(world.sdk);
    viewer.open("CAM0001");
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QVERIFY(waitFor([&] { return world.main.begun == 1; }));
    QVERIFY(viewer.waitForFrames(100));
    QVERIFY((viewer.course() == Course{"avstate", "avopen light"}));
    QVERIFY(viewer.results().empty());
    world.main.held = false;
    QCOMPARE(viewer.waitForResult(0), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QCOMPARE(viewer.fault(), std::string());
}

void tst_VideoChange::theNewCannotBeOpened_data() {
    QTest::addColumn<int>("reason");
    for (const StreamError reason :
         {StreamError::AddressUnreachable, StreamError::StreamNotFound, StreamError::PasswordRefused,
          StreamError::CodecNotSupported, StreamError::TimedOut, StreamError::ProxyFailed})
        QTest::addRow("%d", static_cast<int>(reason)) << static_cast<int>(reason);
}

void tst_VideoChange::theNewCannotBeOpened() {
    QFETCH(int, reason);
    TestSdk sdk;
    sdk.write("config/service.json",
              R"({"cameras": [{"ipncid": "porch", "main": "rtsp://h/main", "light": "rtsp://h/light"}]})");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.hub->of(Quality::Main).failure = static_cast<StreamError>(reason);
    Viewer viewer(sdk);
    viewer.open("porch");
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), reason);
    QVERIFY(viewer.waitForFrames(20));
    QVERIFY((viewer.course() == Course{"avstate", "avopen light"}));
    QVERIFY(waitFor([&] { return sdk.hub->running == 1; }));
    // A camera whose other stream is being watched is there.
    QCOMPARE(sdk.device("porch").at("online"), Json(true));
    // It may be tried again.
    sdk.hub->of(Quality::Main).failure = StreamError::None;
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(1), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QCOMPARE(viewer.fault(), std::string());
}

void tst_VideoChange::theAccountMayNotHaveTheNew() {
    ChangeWorld world;
    Viewer pictures(world.sdk);
    Viewer units(world.sdk);
    pictures.open("CAM0001");
    units.open("FRD0001", codedKeys);
    QVERIFY(pictures.waitForFramesOf(false) && units.waitForFramesOf(false));
    QCOMPARE(world.sdk.sqlite("update devices set online = 0 where ipncid = 'CAM0001'"), std::string());
    QCOMPARE(world.sdk.sqlite("update shares set rights = '{\"video\":true}' where ipncid = 'FRD0001'"),
             std::string());
    pictures.change(true);
    QCOMPARE(pictures.waitForResult(0), 2);
    units.change(true);
    QCOMPARE(units.waitForResult(0), 3);
    QCOMPARE(world.sdk.sqlite("delete from shares where ipncid = 'FRD0001'"), std::string());
    QCOMPARE(world.sdk.sqlite("delete from placements where ipncid = 'FRD0001' and accountid = 1"), std::string());
    units.change(true);
    QVERIFY(units.waitForResult(1) != 0);
    QVERIFY(pictures.waitForFrames(5) && units.waitForFrames(5));
    QCOMPARE(world.main.begun.load(), 0);
}

void tst_VideoChange::badRequests_data() {
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("nothing to be done") << QByteArray("{}");
    QTest::newRow("two things at once") << QByteArray(R"({"hd":true,"capture":"a.jpg"})");
    QTest::newRow("no flag") << QByteArray(R"({"hd":1})");
    QTest::newRow("no flag, but null") << QByteArray(R"({"hd":null})");
    QTest::newRow("an id that is a text") << QByteArray(R"({"hd":true,"reqid":"1"})");
    QTest::newRow("no such request") << QByteArray(R"({"hd":true,"reqid":4711})");
    QTest::newRow("beyond every id") << QByteArray(R"({"hd":true,"reqid":5000000000})");
}

void tst_VideoChange::badRequests() {
    QFETCH(QByteArray, keys);
    ChangeWorld world;
    Viewer viewer(world.sdk);
    viewer.open("CAM0001");
    QVERIFY(viewer.waitForFramesOf(false));
    Json message = {{"type", "avchange"}, {"reqid", viewer.id()}};
    message.update(Json::parse(keys.toStdString()));
    QCOMPARE(world.sdk.command(message).at("retcode"), Json(6));
    QVERIFY(!std::filesystem::exists(world.sdk.path("a.jpg")));
    QCOMPARE(world.sdk.hub->subscriptions().size(), std::size_t{1});
}

void tst_VideoChange::whatRunsAlready() {
    ChangeWorld world;
    Viewer viewer(world.sdk);
    viewer.open("CAM0001", {{"hd", true}});
    QVERIFY(viewer.waitForFramesOf(true));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), 0);
    QVERIFY(viewer.waitForFrames(20));
    QVERIFY((viewer.course() == Course{"avstate", "avopen main"}));
    QCOMPARE(world.sdk.hub->subscriptions().size(), std::size_t{1});
}

void tst_VideoChange::laterChangesReplace() {
    ChangeWorld world;
    world.main.held = true;
    Viewer viewer(world.sdk);
    viewer.open("CAM0001");
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), static_cast<int>(StreamError::Replaced));
    viewer.change(false);
    QCOMPARE(viewer.waitForResult(1), static_cast<int>(StreamError::Replaced));
    QCOMPARE(viewer.waitForResult(2), 0);
    QVERIFY(world.streamsAre(1));
    QCOMPARE(world.main.begun.load(), 1); // the second change went on with what the first one had begun
    viewer.change(true);
    world.main.held = false;
    QCOMPARE(viewer.waitForResult(3), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QVERIFY(world.streamsAre(1));
    QVERIFY((viewer.course() == Course{"avstate", "avopen light", "avopen main"}));
    QCOMPARE(viewer.fault(), std::string());
}

void tst_VideoChange::beforeTheFirstOpened() {
    ChangeWorld world;
    world.light.held = true;
    Viewer viewer(world.sdk);
    viewer.open("CAM0001");
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QVERIFY(world.streamsAre(1));
    // The other way round: the one that was being opened first is there first.
    world.light.held = false;
    world.main.held = true;
    Viewer second(world.sdk);
    second.open("CAM0002");
    second.change(true);
    QVERIFY(second.waitForFramesOf(false));
    world.main.held = false;
    QCOMPARE(second.waitForResult(0), 0);
    QVERIFY(second.waitForFramesOf(true));
    QCOMPARE(viewer.fault() + second.fault(), std::string());
}

void tst_VideoChange::capturesWhatIsDelivered() {
    ChangeWorld world;
    world.main.held = true;
    Viewer viewer(world.sdk);
    viewer.open("CAM0001");
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QVERIFY(waitFor([&] { return world.main.begun == 1; }));
    const auto capture = [&] {
        const Json message = {{"type", "avchange"}, {"reqid", viewer.id()}, {"capture", "x.jpg"}};
        return world.sdk.command(message).at("retcode");
    };
    QCOMPARE(capture(), Json(0));
    QCOMPARE(contentOf(world.sdk.path("x.jpg")), QByteArray("light"));
    world.main.held = false;
    QVERIFY(viewer.waitForFramesOf(true));
    QCOMPARE(capture(), Json(0));
    QCOMPARE(contentOf(world.sdk.path("x.jpg")), QByteArray("main"));
    // However the changes fall, there is always one that delivers.
    for (int round = 0; round < 50; ++round) {
        viewer.change(round % 2 == 1);
        QCOMPARE(capture(), Json(0));
    }
}

void tst_VideoChange::oneAddressForBoth_data() {
    QTest::addColumn<bool>("coded");
    QTest::newRow("pictures") << false;
    QTest::newRow("access units") << true;
}

void tst_VideoChange::oneAddressForBoth() {
    QFETCH(bool, coded);
    TestSdk sdk;
    sdk.write("config/service.json", R"({"cameras": [{"ipncid": "porch", "main": "rtsp://h/"}]})");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewer(sdk);
    viewer.open("porch", {{"recvavdata", coded}, {"recvdecodeavdata", !coded}});
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    viewer.change(false);
    viewer.change(true);
    QVERIFY(viewer.waitForResult(1) % static_cast<int>(StreamError::Replaced) == 0); // done before, or replaced
    QCOMPARE(viewer.waitForResult(2), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QCOMPARE(sdk.hub->subscriptions().size(), std::size_t{1});
    // A change that waits for a frame that does not come any more.
    sdk.hub->lose = true;
    viewer.change(false);
    QVERIFY(viewer.waitForResult(3) >= 0);
    QVERIFY(!viewer.messages.waitForType("avclose").is_null());
    QCOMPARE(viewer.fault(), std::string());
}

void tst_VideoChange::theOldIsSlow() {
    ChangeWorld world;
    Viewer viewer(world.sdk);
    std::atomic<bool> slow{false};
    std::atomic<bool> inside{false};
    viewer.onMessage = [&](const std::string&) {
        if (slow) {
            inside = true;
            waitFor([&] { return !slow; });
        }
    };
    viewer.open("CAM0001");
    QVERIFY(viewer.waitForFramesOf(false));
    slow = true;
    QVERIFY(waitFor([&] { return inside.load(); }));
    // The new one is ready and has to wait; changes in both directions and other commands are done all the same.
    viewer.change(true);
    QVERIFY(waitFor([&] { return world.main.frames > 0; }));
    world.sdk.settle();
    viewer.change(false);
    QVERIFY(waitFor([&] { return world.light.begun == 2; }));
    viewer.change(true);
    world.sdk.settle();
    slow = false;
    QVERIFY(viewer.waitForResult(2) >= 0);
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(3), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QVERIFY(world.streamsAre(1));
    QCOMPARE(viewer.fault(), std::string());
}

void tst_VideoChange::manyStreams() {
    ChangeWorld world;
    constexpr std::size_t count = 16;
    std::vector<std::unique_ptr<Viewer>> viewers;
    for (std::size_t index = 0; index < count; ++index) {
        viewers.push_back(std::make_unique<Viewer>(world.sdk));
        viewers.back()->open("CAM000" + std::to_string(1 + index % 9), index % 3 == 0 ? codedKeys : Json::object());
    }
    std::vector<std::thread> threads;
    for (unsigned thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            std::mt19937 random(thread);
            for (unsigned round = 0; round < 60; ++round) {
                // A viewer belongs to one thread, which stops one of its four after each 20 rounds.
                const unsigned own = random() % 4;
                Viewer& viewer = *viewers[thread * 4 + own];
                viewer.change(random() % 2 == 0);
                if (own >= round / 20 && random() % 3 == 0)
                    waitFor([&, from = viewer.frames()] { return viewer.frames() >= from + 3; });
                if (round % 20 == 19)
                    viewers[thread * 4 + round / 20]->stop();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    world.sdk.settle();
    for (std::size_t index = 0; index < count; ++index) {
        Viewer& viewer = *viewers[index];
        const bool lives = index % 4 == 3;
        if (lives) {
            viewer.change(true);
            QVERIFY(viewer.waitForFramesOf(true));
        }
        QCOMPARE(viewer.fault(), std::string());
    }
    QVERIFY(world.streamsAre(static_cast<int>(count) / 4));
}

QTEST_APPLESS_MAIN(tst_VideoChange)
#include "tst_VideoChange.moc"
