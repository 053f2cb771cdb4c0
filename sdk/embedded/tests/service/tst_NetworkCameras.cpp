#include "RealHub.h"
#include "Viewer.h"
#include "support/OnvifDevice.h"
#include "support/RtspServer.h"

#include <QImage>
#include <QtTest>

#include <future>
#include <memory>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Network cameras from being found to being watched, as a client comes by them.
class tst_NetworkCameras final : public QObject {
    Q_OBJECT

private slots:
    void foundOnTheNetwork();
    void probedAndOpened();
    void probeCodes_data();
    void probeCodes();
    void probeStopped();
    void endsWhileAsking();
    void badRequests_data();
    void badRequests();
};

namespace {

constexpr auto password = "p<\u00e4>&ss";

Json probeRequest(const std::string& url, const std::string& secret = password) {
    return {{"reqtype", "onvifprobe"}, {"url", url}, {"user", "admin"}, {"password", secret}};
}

/// Asks for a preview; the picture is taken from the SDK's memory while it may be.
Json preview(TestSdk& sdk, const Json& request, QImage& image) {
    auto response = std::make_shared<std::promise<std::pair<Json, QImage>>>();
    auto future = response->get_future();
    int id = 0;
    sdk.runtime.requestMessage(toText(request), id, [response](const std::string& text) {
        const Json message = Json::parse(text);
        QImage picture;
        if (message.at("retcode") == 0)
            picture.loadFromData(reinterpret_cast<const uchar*>(message.at("data").get<std::uintptr_t>()),
                                 message.at("len").get<int>());
        response->set_value({message, picture});
    });
    if (future.wait_for(std::chrono::minutes(2)) != std::future_status::ready)
        return {};
    auto [message, picture] = future.get();
    image = picture;
    return message;
}

} // namespace

void tst_NetworkCameras::foundOnTheNetwork() {
    const OnvifDevice device;
    TestSdk sdk(nullptr, device.searchPort());
    sdk.write("config/service.json", R"({"cameras": [{"ipncid": "porch", "main": "rtsp://192.0.2.7/main"}]})");
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.command({{"type", "freshlocal"}}).at("retcode"), Json(0));
    const std::string id = "onvif-6f1c2f6e-0000-4000-8000-001122aabbcc";
    QVERIFY(waitFor([&] {
        const auto all = sdk.client.ofType("freshlocal");
        return !all.empty() && all.back().at("freshlocal").contains(id);
    }));
    const Json local = sdk.client.ofType("freshlocal").back().at("freshlocal");
    const Json expected = {{"ipncid", id},      {"name", "Front \u00e9"}, {"type", "video"},
                           {"ip", "127.0.0.1"}, {"url", device.url()},    {"mac", "00:11:22:aa:bb:cc"},
                           {"added", false},    {"onvif", true},          {"model", "SI-1"}};
    QCOMPARE(local.at(id), expected);
    QCOMPARE(local.at("porch").at("added"), Json(true));
    QCOMPARE(sdk.document("localdevice").at("localdevice"), local);
}

void tst_NetworkCameras::probedAndOpened() {
    RtspServer streams({"--user", "admin", "--password", password});
    QVERIFY(streams.start());
    const OnvifDevice device({"other-host", "prefixes"}, {"--rtsp", QString::number(streams.port())});
    TestSdk sdk(realHub());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json answer = sdk.ask(probeRequest(device.host()));
    QCOMPARE(answer.at("type"), Json("onvifprobe"));
    QCOMPARE(answer.at("retcode"), Json(0));
    const Json camera = answer.at("resp");
    QCOMPARE(camera.at("state"), Json("ok"));
    QCOMPARE(camera.at("model"), Json("SI-1 <dome>"));
    const Json first = {
        {"token", "small & <light>"}, {"name", "Light"}, {"codec", "H264"}, {"w", 320}, {"h", 240}, {"fps", 15},
        {"url", camera.at("light")}};
    QCOMPARE(camera.at("profiles").at(0), first);

    // A picture before anything is saved; the password goes the camera's own way.
    QImage image;
    Json request = {{"reqtype", "preview"},
                    {"url", camera.at("light")},
                    {"user", "admin"},
                    {"password", password},
                    {"width", 160}};
    QCOMPARE(preview(sdk, request, image).at("retcode"), Json(0));
    QCOMPARE(image.size(), QSize(160, 120));
    request["password"] = "wrong";
    QCOMPARE(preview(sdk, request, image).at("retcode"), Json(12));

    // The same addresses, saved.
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    sdk.write("config/service.json", toText({{"cameras",
                                              {{{"ipncid", "porch"},
                                                {"main", camera.at("main")},
                                                {"light", camera.at("light")},
                                                {"user", "admin"},
                                                {"password", password}}}}}));
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewer(sdk);
    viewer.open("porch");
    QVERIFY(viewer.waitForFrames(3));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QCOMPARE(viewer.fault(), std::string());
}

void tst_NetworkCameras::probeCodes_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("secret");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("errcode");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* mode, const char* secret, int code, const char* errcode, const char* text) {
        QTest::newRow(mode) << mode << secret << code << errcode << text;
    };
    row("garbage", password, 10, "(ipnc offline)", "the answer is no XML that is taken");
    row("unauthorized", "wrong", 25, "(camera password)", "user name or password are wrong <b>");
    row("expired", password, 26, "(camera clock)", "the message is too old <b>");
    row("unsupported", password, 27, "(onvif fault)", "the camera knows no GetProfiles <b>");
    row("no-media", password, 28, "(no media)", "the camera has no media service");
}

void tst_NetworkCameras::probeCodes() {
    QFETCH(QString, mode);
    QFETCH(QString, secret);
    const QStringList modes = mode == "expired" ? QStringList{mode, "own-time"} : QStringList{mode};
    const OnvifDevice device(modes);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json answer = sdk.ask(probeRequest(device.host(), secret.toStdString()));
    QTEST(answer.at("retcode").get<int>(), "code");
    QCOMPARE(answer.at("resp").at("state"), Json("error"));
    QTEST(QString::fromStdString(answer.at("resp").at("errcode").get<std::string>()), "errcode");
    QTEST(QString::fromStdString(answer.at("resp").at("text").get<std::string>()), "text");
}

void tst_NetworkCameras::probeStopped() {
    const OnvifDevice device({"hang"});
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Received responses;
    int id = 0;
    sdk.runtime.requestMessage(toText(probeRequest(device.host())), id,
                               [&responses](const std::string& text) { responses.add(text); });
    sdk.settle();
    sdk.runtime.stopRequest(id);
    // Others are served meanwhile and after.
    QCOMPARE(sdk.ask(probeRequest("127.0.0.1:1")).at("retcode"), Json(10));
    QVERIFY(responses.all().empty());
}

void tst_NetworkCameras::endsWhileAsking() {
    const OnvifDevice device({"hang"});
    TestSdk sdk(nullptr, device.searchPort());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    int id = 0;
    for (int count = 0; count < 5; ++count)
        sdk.runtime.requestMessage(toText(probeRequest(device.host())), id, nullptr);
    sdk.command({{"type", "freshlocal"}});
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
}

void tst_NetworkCameras::badRequests_data() {
    QTest::addColumn<QString>("request");
    QTest::addColumn<bool>("signedIn");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const char* request, int code, bool signedIn = true) {
        QTest::newRow(name) << QString(request) << signedIn << code;
    };
    row("nobody asks", R"({"reqtype":"onvifprobe","url":"127.0.0.1:1"})", 3, false);
    row("nobody looks", R"({"reqtype":"preview","url":"rtsp://127.0.0.1:1/"})", 4, false);
    row("no address", R"({"reqtype":"onvifprobe"})", 2);
    row("address of a wrong type", R"({"reqtype":"onvifprobe","url":5})", 2);
    row("address of a file", R"({"reqtype":"onvifprobe","url":"file:///etc/passwd"})", 2);
    row("line ends", R"({"reqtype":"onvifprobe","url":"camera\r\nX: y"})", 2);
    row("user of a wrong type", R"({"reqtype":"onvifprobe","url":"127.0.0.1:1","user":[]})", 2);
    row("nobody there", R"({"reqtype":"onvifprobe","url":"127.0.0.1:1"})", 10);
    row("picture of a file", R"({"reqtype":"preview","url":"file:///etc/passwd"})", 6);
    row("picture of a web page", R"({"reqtype":"preview","url":"http://127.0.0.1:1/"})", 6);
    row("picture, password of a wrong type", R"({"reqtype":"preview","url":"rtsp://127.0.0.1:1/","password":{}})", 6);
    row("picture, too wide", R"({"reqtype":"preview","url":"rtsp://127.0.0.1:1/","width":5000})", 6);
    row("picture, nobody there", R"({"reqtype":"preview","url":"rtsp://127.0.0.1:1/"})", 10);
}

void tst_NetworkCameras::badRequests() {
    QFETCH(QString, request);
    QFETCH(bool, signedIn);
    TestSdk sdk(realHub());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(!signedIn || sdk.signIn());
    QTEST(sdk.ask(Json::parse(request.toStdString())).at("retcode").get<int>(), "code");
}

QTEST_GUILESS_MAIN(tst_NetworkCameras)
#include "tst_NetworkCameras.moc"
