#include "TestSdk.h"
#include "support/OnvifDevice.h"

#include <QtTest>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Network cameras that speak ONVIF, moved and set by a client.
class tst_CameraControl final : public QObject {
    Q_OBJECT

private slots:
    void moves();
    void ofTheConfigurationFile();
    void picture();
    void refusals_data();
    void refusals();
    void keepsItsOrder();
    void stops();
    void rights();
    void countsAsAdded();
};

namespace {

constexpr auto password = "p<\u00e4>&ss";

/// Adds the stand-in as an account would; its streams are nowhere.
Json added(TestSdk& sdk, const std::string& service, const std::string& secret = password) {
    return sdk.askAccount("addipnc", {{"name", "Yard"},
                                      {"ipncid", "YARD"},
                                      {"main", "rtsp://127.0.0.1:1/main"},
                                      {"onvif", service},
                                      {"user", "admin"},
                                      {"password", secret}});
}

Json reading(const Json& names) {
    return {{"reqtype", "p2pmsg"}, {"ipncid", "YARD"}, {"getcmds", names}};
}

Json writing(const Json& values) {
    return {{"reqtype", "p2pmsg"}, {"ipncid", "YARD"}, {"setcmds", values}};
}

Json read(TestSdk& sdk, const std::string& name) {
    const Json answer = sdk.ask(reading({name}));
    return codeOf(answer) == 0 ? answer.at("resp").at("getcmds").at(name)
                               : Json("code " + std::to_string(codeOf(answer)));
}

QByteArray text(const QJsonObject& call) {
    return QJsonDocument(call).toJson(QJsonDocument::Compact);
}

/// A camera whose streams can't be opened is not offline for that: nobody has watched it yet.
struct Yard {
    explicit Yard(const QStringList& modes = {}, const std::string& secret = password)
        : device(modes) {
        isReady = sdk.start() == emSuccess && sdk.signIn() && codeOf(added(sdk, device.url(), secret)) == 0;
    }
    OnvifDevice device;
    TestSdk sdk;
    bool isReady = false;
};

} // namespace

void tst_CameraControl::moves() {
    Yard yard;
    QVERIFY(yard.isReady);
    const Json caps = {{"pan", true},   {"tilt", true},  {"zoom", true}, {"focus", true},
                       {"iris", false}, {"presets", 64}, {"cruises", 0}};
    QCOMPARE(read(yard.sdk, "ptzcaps"), caps);
    QCOMPARE(read(yard.sdk, "ptzstate").at("pan"), Json(0.25));
    QCOMPARE(read(yard.sdk, "ptzcruises"), Json());
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"ptzmove", {{"pan", 1}, {"tilt", 0}, {"zoom", 0}, {"speed", 10}}}}))), 0);
    QCOMPARE(text(yard.device.nextCall()), QByteArray(R"({"op":"ContinuousMove","pan":1,"tilt":0,"zoom":0})"));
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"ptzstop", 1}}))), 0);
    QCOMPARE(text(yard.device.nextCall()), QByteArray(R"({"op":"Stop"})"));
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"ptzpresetset", {{"index", 3}, {"name", "Door"}}}}))), 0);
    const Json presets = {
        {{"index", 1}, {"name", "Gate"}}, {{"index", 3}, {"name", "Door"}}, {{"index", 7}, {"name", "Yard"}}};
    QCOMPARE(read(yard.sdk, "ptzpresets"), presets);
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"ptzpresetgoto", 9}}))), 27);
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"ptziris", 1}}))), 1);
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"ptzcruisestart", 1}}))), 1);
}

void tst_CameraControl::ofTheConfigurationFile() {
    OnvifDevice device;
    TestSdk sdk;
    const Json camera = {{"ipncid", "YARD"},
                         {"main", "rtsp://127.0.0.1:1/main"},
                         {"onvif", device.host()},
                         {"user", "admin"},
                         {"password", password}};
    sdk.write("config/service.json", toText({{"cameras", {camera}}}));
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.ask(writing({{"ptzhome", 1}}))), 0);
    QCOMPARE(text(device.nextCall()), QByteArray(R"({"op":"GotoHomePosition"})"));
}

void tst_CameraControl::picture() {
    Yard yard;
    QVERIFY(yard.isReady);
    // What the camera has is its own; what it has not stays with the service.
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"brightness", 51}, {"mirror", 1}}))), 0);
    QCOMPARE(yard.device.nextCall()["op"].toString(), QString("SetImagingSettings"));
    const Json answer = yard.sdk.ask(reading({"brightness", "mirror", "softwareversion"}));
    QCOMPARE(answer.at("resp").at("getcmds").at("brightness"), Json(51));
    QCOMPARE(answer.at("resp").at("getcmds").at("mirror"), Json(1));
}

void tst_CameraControl::refusals_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("secret");
    QTest::addColumn<QString>("request");
    QTest::addColumn<int>("expected");
    const auto row = [](const char* name, const char* mode, const char* secret, const char* request, int expected) {
        QTest::newRow(name) << mode << secret << request << expected;
    };
    constexpr auto stop = R"({"setcmds":{"ptzstop":1}})";
    row("password", "unauthorized", "wrong", stop, 25);
    row("no movement", "no-ptz", password, stop, 1);
    row("movement that is not there reads as null", "no-ptz", password, R"({"getcmds":["ptzcaps"]})", 0);
    row("a page of the web", "html", password, stop, 10);
    row("a picture that can't be read is null", "html", password, R"({"getcmds":["brightness","mirror"]})", 0);
    row("a picture that can't be written", "html", password, R"({"setcmds":{"brightness":3}})", 10);
}

void tst_CameraControl::refusals() {
    QFETCH(QString, mode);
    QFETCH(QString, secret);
    QFETCH(QString, request);
    QFETCH(int, expected);
    Yard yard({mode}, secret.toStdString());
    QVERIFY(yard.isReady);
    Json message = Json::parse(request.toStdString());
    message.update({{"reqtype", "p2pmsg"}, {"ipncid", "YARD"}});
    // The second time finds the conversation as the first one has left it.
    for (int time = 0; time < 2; ++time) {
        const Json answer = yard.sdk.ask(message);
        QCOMPARE(codeOf(answer), expected);
        if (expected == 0)
            QCOMPARE(answer.at("resp").at("getcmds").front(), Json());
    }
}

void tst_CameraControl::keepsItsOrder() {
    Yard yard;
    QVERIFY(yard.isReady);
    Received responses;
    for (const int pan : {1, -1, 1, -1, 1, -1}) {
        int id = 0;
        const Json move = {{"pan", pan}, {"tilt", 0}, {"zoom", 0}, {"speed", 10}};
        yard.sdk.runtime.requestMessage(toText(writing({{"ptzmove", move}})), id,
                                        [&responses](const std::string& text) { responses.add(text); });
    }
    for (const int pan : {1, -1, 1, -1, 1, -1})
        QCOMPARE(yard.device.nextCall()["pan"].toInt(), pan);
    QVERIFY(waitFor([&] { return responses.all().size() == 6; }));
}

void tst_CameraControl::stops() {
    Yard yard({"hang"});
    QVERIFY(yard.isReady);
    int id = 0;
    // More than what may wait: the rest is refused at once, and the end of the program waits for none of them.
    Received responses;
    for (int count = 0; count < 30; ++count)
        yard.sdk.runtime.requestMessage(toText(writing({{"ptzstop", 1}})), id,
                                        [&responses](const std::string& text) { responses.add(text); });
    QVERIFY(waitFor([&] { return !responses.all().empty(); }));
    QCOMPARE(codeOf(responses.all().front()), 11);
    QCOMPARE(yard.sdk.runtime.cleanup(), emSuccess);
}

void tst_CameraControl::rights() {
    Yard yard;
    QVERIFY(yard.isReady);
    QCOMPARE(
        codeOf(yard.sdk.askAccount(
            "setfrienddeviceshare",
            {{"friendphone", "13700137000"}, {"ipncid", "YARD"}, {"share", true}, {"authority", {{"ptz", false}}}})),
        0);
    QVERIFY(yard.sdk.signIn("13700137000"));
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"ptzstop", 1}}))), 6);
    QCOMPARE(codeOf(yard.sdk.ask(writing({{"brightness", 1}}))), 6);
    QCOMPARE(read(yard.sdk, "brightness"), Json(128));
}

void tst_CameraControl::countsAsAdded() {
    Yard yard;
    QVERIFY(yard.isReady);
    QCOMPARE(codeOf(added(yard.sdk, "ftp://127.0.0.1")), 2);
    TestSdk other(nullptr, yard.device.searchPort());
    QCOMPARE(other.start(), emSuccess);
    QVERIFY(other.signIn());
    const auto isAdded = [&] {
        const auto all = other.client.ofType("freshlocal");
        const Json local = all.empty() ? Json::object() : all.back().at("freshlocal");
        return local.empty() || !local.contains("onvif-6f1c2f6e-0000-4000-8000-001122aabbcc")
                   ? Json()
                   : local.at("onvif-6f1c2f6e-0000-4000-8000-001122aabbcc").at("added");
    };
    other.command({{"type", "freshlocal"}});
    QVERIFY(waitFor([&] { return isAdded() == Json(false); }));
    QCOMPARE(codeOf(added(other, yard.device.url())), 0);
    other.command({{"type", "freshlocal"}});
    QVERIFY(waitFor([&] { return isAdded() == Json(true); }));
}

QTEST_GUILESS_MAIN(tst_CameraControl)
#include "tst_CameraControl.moc"
