#include "Viewer.h"

#include <QtTest>

#include <algorithm>
#include <filesystem>
#include <future>
#include <mutex>

using namespace ipncsdk;
using namespace ipncsdk::test;
using media::StreamError;

/// Streams through the boundary: who gets one, what is asked of the hub, and what comes.
class tst_Video final : public QObject {
    Q_OBJECT

private slots:
    void refusals_data();
    void refusals();
    void messagesOfAStream();
    void codedFrames();
    void subscriptionsSayWhatWasAsked();
    void timesForOpening_data();
    void timesForOpening();
    void hubFailuresCloseTheRequest();
    void networkCameraThatFailedIsTriedAgain();
    void snapshots();
    void previews();
    void transportIsAskedOfTheClient();
};

namespace {

Json withKeys(const std::string& ipncid, const Json& keys) {
    Json message = openMessage(ipncid);
    message["avreq"].update(keys);
    return message;
}

} // namespace

void tst_Video::refusals_data() {
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<bool>("coded");
    QTest::addColumn<int>("code");
    QTest::newRow("unknown") << QByteArray("none") << false << 1;
    QTest::newRow("a friend's, not shared") << QByteArray("FRD0005") << false << 1;
    QTest::newRow("offline") << QByteArray("CAM0061") << false << 2;
    QTest::newRow("coded without the right to record") << QByteArray("FRD0003") << true << 3;
    QTest::newRow("no video") << QByteArray("CAM0005") << false << 5;
    QTest::newRow("empty id") << QByteArray("") << false << 1;
}

void tst_Video::refusals() {
    QFETCH(QByteArray, device);
    QFETCH(bool, coded);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    sdk.runtime.cleanup();
    QCOMPARE(sdk.sqlite("update devices set type = 'io' where ipncid = 'CAM0005'"), std::string());
    QCOMPARE(sdk.start(), emSuccess);
    const Json message = withKeys(device.toStdString(), {{"recvavdata", coded}, {"recvdecodeavdata", !coded}});
    QCOMPARE(sdk.ask(message).at("retcode"), Json(4));
    QVERIFY(sdk.signIn());
    const Json closed = sdk.ask(message);
    QCOMPARE(closed.at("type"), Json("avclose"));
    QCOMPARE(closed.at("retcode"), Json(code));
    QVERIFY(sdk.hub->subscriptions().empty());
}

void tst_Video::messagesOfAStream() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::mutex mutex;
    std::vector<std::string> types;
    std::vector<std::uint8_t> picture;
    Received messages;
    int id = 0;
    sdk.runtime.requestMessage(toText(withKeys("CAM0001", {{"hd", true}})), id, [&](const std::string& text) {
        const Json message = Json::parse(text);
        const std::lock_guard lock(mutex);
        const auto type = message.at("type").get<std::string>();
        if (types.empty() || types.back() != type)
            types.push_back(type);
        if (type != "decodevideodata")
            return messages.add(text);
        // The address is good for the length of this call.
        const auto* data = reinterpret_cast<const std::uint8_t*>(message.at("data").get<std::uintptr_t>());
        picture.assign(data, data + message.at("w").get<int>() * message.at("h").get<int>() * 3 / 2);
    });
    QVERIFY(waitFor([&] {
        const std::lock_guard lock(mutex);
        return !picture.empty();
    }));
    sdk.runtime.stopRequest(id);
    QVERIFY((types == std::vector<std::string>{"avstate", "avopen", "decodevideodata"}));
    picture.resize(4);
    QVERIFY((picture == std::vector<std::uint8_t>{1, 2, 3, 0}));
    const Json opened = messages.waitForType("avopen");
    QCOMPARE(opened.at("reqid"), Json(id));
    QCOMPARE(opened.at("contype"), Json("LOOP"));
    QCOMPARE(opened.at("avparam"), (Json{{"framerate", 25},
                                         {"weidth", 2 * FakeHub::width},
                                         {"height", 2 * FakeHub::height},
                                         {"codec", "H264"},
                                         {"hd", true},
                                         {"audiolisten", 0},
                                         {"audioplay", 0}}));
    QCOMPARE(messages.waitForType("avstate").at("state"), Json(0));
    QVERIFY(waitFor([&] { return sdk.hub->running == 0; }));
    QVERIFY(messages.ofType("avclose").empty()); // whoever stops is not told that it closed
}

void tst_Video::codedFrames() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::promise<Json> first;
    std::atomic<bool> had{false};
    int id = 0;
    sdk.runtime.requestMessage(toText(withKeys("CAM0001", {{"recvavdata", true}, {"recvdecodeavdata", false}})), id,
                               [&](const std::string& text) {
                                   const Json message = Json::parse(text);
                                   if (message.at("type") == "videodata" && !had.exchange(true))
                                       first.set_value(message);
                               });
    const Json frame = first.get_future().get();
    QCOMPARE(frame.at("reqid"), Json(id));
    QCOMPARE(frame.at("len"), Json(12));
    QCOMPARE(frame.at("key"), Json(true));
    QVERIFY(frame.at("data").is_number_unsigned());
    sdk.runtime.stopRequest(id);
}

void tst_Video::subscriptionsSayWhatWasAsked() {
    TestSdk sdk;
    sdk.write("config/service.json", R"({"cameras": [{"ipncid": "porch", "main": "rtsp://h/main",
        "light": "rtsp://h/light", "user": "u", "password": "p"},
        {"ipncid": "film", "main": "file:///films/%E5%A4%A7.mp4", "light": "file:films/small.mp4"}]})");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewers[] = {Viewer(sdk), Viewer(sdk), Viewer(sdk), Viewer(sdk), Viewer(sdk)};
    viewers[0].open("CAM0002", {{"maxopentime", 3}});
    viewers[1].open("porch", {{"hd", true}});
    viewers[2].open("porch", {{"recvavdata", true}});
    viewers[3].open("film", {{"hd", true}});
    viewers[4].open("film", {{"hd", false}});
    sdk.settle();
    const auto wanted = sdk.hub->subscriptions();
    QCOMPARE(wanted.size(), std::size_t{5});
    QVERIFY((std::get<media::FileSource>(wanted[3].source) == media::FileSource{sdk.path("/films/大.mp4")}));
    QVERIFY((std::get<media::FileSource>(wanted[4].source) == media::FileSource{sdk.path("films/small.mp4")}));
    QVERIFY(!wanted[4].openTimeout);
    QCOMPARE(sdk.device("film").at("info").at("model"), Json("FILE"));
    QVERIFY((std::get<media::LoopSource>(wanted[0].source) == media::LoopSource{"东大门出口", 1, 74}));
    QVERIFY(wanted[0].quality == media::Quality::Light);
    QVERIFY(wanted[0].openTimeout == std::chrono::minutes(3));
    QVERIFY((std::get<media::RtspSource>(wanted[1].source) == media::RtspSource{"rtsp://h/main", "u", "p"}));
    QVERIFY(wanted[1].quality == media::Quality::Main);
    QVERIFY(!wanted[1].openTimeout);
    QVERIFY(wanted[1].decoded && !wanted[1].coded);
    QCOMPARE(std::get<media::RtspSource>(wanted[2].source).url, std::string("rtsp://h/light"));
    QVERIFY(wanted[2].decoded && wanted[2].coded);
}

void tst_Video::timesForOpening_data() {
    QTest::addColumn<QByteArray>("asked");
    QTest::addColumn<int>("minutes"); // 0: no limit
    constexpr int week = 7 * 24 * 60;
    const auto row = [](const char* asked, int minutes) {
        QTest::newRow(asked) << QByteArray(asked) << minutes;
    };
    row("0", 0);
    row("1", 1);
    row("5.0", 5);
    row("10080", week);
    row("10081", week);
    row("4294967297", week);
    row("9223372036854775807", week);
    row("18446744073709551615", week);
    row("1e18", week);
    row("1e300", week);
    row("-1", 0);
    row("-9223372036854775808", 0);
    row("-1e300", 0);
}

void tst_Video::timesForOpening() {
    QFETCH(QByteArray, asked);
    QFETCH(int, minutes);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewer(sdk);
    viewer.open("CAM0001", {{"maxopentime", Json::parse(asked.toStdString())}});
    QVERIFY(viewer.waitForFrames(1));
    const auto timeout = sdk.hub->subscriptions().front().openTimeout;
    QCOMPARE(timeout.has_value(), minutes > 0);
    QVERIFY(!timeout || *timeout == std::chrono::minutes(minutes));
}

void tst_Video::hubFailuresCloseTheRequest() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.hub->fail("CAM0001", StreamError::CodecNotSupported);
    Viewer failing(sdk);
    failing.open("CAM0001");
    QVERIFY(failing.id() > 0);
    QCOMPARE(failing.messages.waitForType("avclose").at("retcode"), Json(13));
    Viewer lost(sdk);
    lost.open("CAM0002");
    QVERIFY(lost.waitForFrames(1));
    sdk.hub->lose = true;
    QCOMPARE(lost.messages.waitForType("avclose").at("retcode"), Json(15));
    lost.stop();
    QCOMPARE(lost.messages.ofType("avclose").size(), std::size_t{1});
}

void tst_Video::networkCameraThatFailedIsTriedAgain() {
    TestSdk sdk;
    sdk.write("config/service.json", R"({"cameras": [{"ipncid": "porch", "main": "rtsp://h/"}]})");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.hub->fail("porch", StreamError::AddressUnreachable);
    Viewer first(sdk);
    first.open("porch");
    QCOMPARE(first.messages.waitForType("avclose").at("retcode"), Json(10));
    QCOMPARE(sdk.device("porch").at("online"), Json(false));
    sdk.hub->fail("porch", StreamError::None);
    Viewer second(sdk);
    second.open("porch");
    QVERIFY(!second.messages.waitForType("avopen").is_null());
    QCOMPARE(sdk.device("porch").at("online"), Json(true));
    second.stop();
}

void tst_Video::snapshots() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewer(sdk);
    viewer.open("CAM0001");
    QVERIFY(viewer.waitForFrames(1));
    const auto capture = [&](const Json& id, const Json& path) {
        return sdk.command({{"type", "avchange"}, {"reqid", id}, {"capture", path}}).at("retcode");
    };
    QCOMPARE(capture(viewer.id(), "抓拍.jpg"), Json(0));
    QVERIFY(std::filesystem::exists(sdk.path("抓拍.jpg"))); // relative to the data root
    QCOMPARE(capture(viewer.id(), sdk.path("abs.jpg").string()), Json(0));
    QVERIFY(std::filesystem::exists(sdk.path("abs.jpg")));
    QCOMPARE(capture(viewer.id(), sdk.path("no/such/folder.jpg").string()), Json(20));
    QCOMPARE(capture(viewer.id(), std::string("a\0.jpg", 6)), Json(6));
    QCOMPARE(capture(viewer.id(), ""), Json(6));
    QCOMPARE(capture(viewer.id(), 5), Json(6));
    QCOMPARE(capture("1", "a.jpg"), Json(6));
    QCOMPARE(capture(123456, "a.jpg"), Json(6));
    viewer.stop();
    QCOMPARE(capture(viewer.id(), "late.jpg"), Json(6));
    QVERIFY(!std::filesystem::exists(sdk.path("late.jpg")));
}

void tst_Video::previews() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::promise<std::size_t> promise;
    int id = 0;
    sdk.runtime.requestMessage(
        R"({"reqtype":"preview","ipncid":"CAM0001","width":64})", id, [&](const std::string& text) {
            const Json message = Json::parse(text);
            const auto* data = reinterpret_cast<const char*>(message.at("data").get<std::uintptr_t>());
            const std::string jpeg(data, message.at("len").get<std::size_t>());
            promise.set_value(static_cast<std::size_t>(std::count(jpeg.begin(), jpeg.end(), 7)));
        });
    QCOMPARE(promise.get_future().get(), std::size_t{64});
    sdk.runtime.stopRequest(id); // the callback has left its variables
    const auto code = [&](const char* ipncid) {
        return sdk.ask({{"reqtype", "preview"}, {"ipncid", ipncid}}).at("retcode");
    };
    QCOMPARE(code("FRD0005"), Json(1));
    QCOMPARE(code("CAM0061"), Json(2));
    sdk.hub->fail("CAM0002", StreamError::TimedOut);
    QCOMPARE(code("CAM0002"), Json(14));
}

void tst_Video::transportIsAskedOfTheClient() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    const auto ask = sdk.hub->options().socketDelegate;
    QVERIFY(ask() == nullptr);
    sdk.runtime.setClientCallback([](const std::string& message, std::string& reply) {
        if (Json::parse(message).at("type") == "getsocketdelegate")
            reply = "-64";
    });
    QCOMPARE(reinterpret_cast<std::intptr_t>(ask()), std::intptr_t{-64});
    sdk.runtime.setClientCallback(nullptr);
    QVERIFY(ask() == nullptr);
}

QTEST_APPLESS_MAIN(tst_Video)
#include "tst_Video.moc"
