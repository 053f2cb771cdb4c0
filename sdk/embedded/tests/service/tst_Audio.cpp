#include "Ear.h"
#include "RealHub.h"
#include "Tone.h"
#include "support/RtspServer.h"

#include <QtTest>

#include <atomic>
#include <thread>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Who may listen and talk through the boundary, what is heard, and how it ends.
class tst_Audio final : public QObject {
    Q_OBJECT

private slots:
    void refusals_data();
    void refusals();
    void rights();
    void messages();
    void stopsInsideItsOwnCallback();
    void signOutEndsIt();
    void parametersOfAStream();
    void networkCamera();
};

void tst_Audio::refusals_data() {
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<int>("code");
    const auto row = [](const char* keys, int code) {
        QTest::newRow(keys) << QByteArray(keys) << code;
    };
    row("{}", 6);
    row(R"({"recvaudiodata": false, "sendaudiodata": false})", 6);
    row(R"({"recvaudiodata": 1})", 6);
    row(R"({"sendaudiodata": "yes"})", 6);
    row(R"({"recvaudiodata": true, "sendaudiodata": true})", 6);
    row(R"({"recvaudiodata": true, "recvdecodeavdata": true})", 6);
    row(R"({"recvaudiodata": true, "recvavdata": true})", 6);
    row(R"({"sendaudiodata": true, "recvavdata": true})", 6);
    row(R"({"recvaudiodata": true, "maxopentime": "long"})", 6);
    row(R"({"sendaudiodata": true, "rate": 7999})", 6);
    row(R"({"sendaudiodata": true, "rate": 48001})", 6);
    row(R"({"sendaudiodata": true, "rate": "8000"})", 6);
    row(R"({"sendaudiodata": true, "rate": 1e300})", 6);
    row(R"({"sendaudiodata": true, "rate": 18446744073709551615})", 6);
    row(R"({"sendaudiodata": true, "channels": 0})", 6);
    row(R"({"sendaudiodata": true, "channels": 3})", 6);
    row(R"({"sendaudiodata": true, "channels": null})", 6);
    row(R"({"recvaudiodata": true, "ipncid": "none"})", 1);
    row(R"({"sendaudiodata": true, "ipncid": "CAM0061"})", 2);
}

void tst_Audio::refusals() {
    QFETCH(QByteArray, keys);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear ear(sdk);
    ear.open("CAM0001", Json::parse(keys.toStdString()));
    QVERIFY(ear.id() > 0);
    QCOMPARE(ear.messages.waitForType("avclose").at("retcode"), Json(code));
    QVERIFY(sdk.hub->subscriptions().empty());
}

void tst_Audio::rights() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    Ear nobody(sdk);
    nobody.listen("CAM0001");
    QCOMPARE(nobody.messages.waitForType("avclose").at("retcode"), Json(4));
    QVERIFY(sdk.signIn());
    // Who may watch may listen and talk, also without the right to record.
    for (const char* wish : {"recvaudiodata", "sendaudiodata"}) {
        Ear allowed(sdk);
        allowed.open("FRD0003", {{wish, true}});
        QVERIFY(!allowed.messages.waitForType("avopen").is_null());
    }
    sdk.runtime.cleanup();
    QCOMPARE(sdk.sqlite("update shares set rights = replace(rights, 'video', 'other') where ipncid = 'FRD0003'"),
             std::string());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    for (const char* wish : {"recvaudiodata", "sendaudiodata"}) {
        Ear refused(sdk);
        refused.open("FRD0003", {{wish, true}});
        QCOMPARE(refused.messages.waitForType("avclose").at("retcode"), Json(3));
    }
}

void tst_Audio::messages() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear ear(sdk);
    ear.listen("CAM0001");
    QVERIFY(ear.waitForSound(12));
    QCOMPARE(
        ear.form(),
        (Json{
            {"type", "audiodata"}, {"reqid", ear.id()}, {"len", 8}, {"rate", 44100}, {"channels", 2}, {"bits", 16}}));
    const auto heard = ear.heard();
    QVERIFY(
        (std::vector<std::int16_t>(heard.begin(), heard.begin() + 5) == std::vector<std::int16_t>{1, -2, 3, -4, 1}));
    const auto wanted = sdk.hub->subscriptions().front();
    QVERIFY(wanted.sound && !wanted.decoded && !wanted.coded && !wanted.talk);
    ear.stop();
    sdk.settle();
    QVERIFY(!ear.wasCalledLate());
    QVERIFY(ear.messages.ofType("avclose").empty());
    // A request that watches hears nothing.
    Received others;
    int id = 0;
    sdk.runtime.requestMessage(toText(openMessage("CAM0002")), id,
                               [&](const std::string& text) { others.add(text); });
    QVERIFY(!others.waitForType("decodevideodata").is_null());
    sdk.runtime.stopRequest(id);
    QVERIFY(others.ofType("audiodata").empty());
}

void tst_Audio::stopsInsideItsOwnCallback() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::atomic<int> id{0};
    std::atomic<int> calls{0};
    int given = 0;
    sdk.runtime.requestMessage(R"({"avreq":{"ipncid":"CAM0001","reqtype":"avreq","recvaudiodata":true}})", given,
                               [&](const std::string& text) {
                                   if (Json::parse(text).at("type") != "audiodata")
                                       return;
                                   ++calls;
                                   while (id == 0)
                                       std::this_thread::yield();
                                   sdk.runtime.stopRequest(id);
                               });
    id = given;
    QVERIFY(waitFor([&] { return calls > 0 && sdk.hub->running == 0; }));
    QCOMPARE(calls.load(), 1);
}

void tst_Audio::signOutEndsIt() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear ear(sdk);
    ear.listen("CAM0001");
    Ear mouth(sdk);
    mouth.talk("CAM0001");
    QVERIFY(ear.waitForSound(1));
    QVERIFY(!mouth.messages.waitForType("avopen").is_null());
    sdk.command({{"type", "logout"}});
    QCOMPARE(ear.messages.waitForType("avclose").at("retcode"), Json(4));
    QCOMPARE(mouth.messages.waitForType("avclose").at("retcode"), Json(4));
    const std::vector<std::int16_t> words(160, 7);
    QCOMPARE(mouth.say(words.data(), 320).at("retcode"), Json(6));
}

void tst_Audio::parametersOfAStream() {
    TestSdk sdk(realHub());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Received messages;
    int id = 0;
    sdk.runtime.requestMessage(toText(openMessage("CAM0001")), id, [&](const std::string& text) {
        if (text.find("videodata\"") == std::string::npos)
            messages.add(text);
    });
    const Json parameters = messages.waitForType("avopen").at("avparam");
    QCOMPARE(parameters.at("audiolisten"), Json(1));
    QCOMPARE(parameters.at("audioplay"), Json(3));
    sdk.runtime.stopRequest(id);
}

void tst_Audio::networkCamera() {
    RtspServer server;
    QVERIFY(server.start());
    TestSdk sdk(realHub());
    const QString cameras = R"({"cameras": [{"ipncid": "porch", "main": "%1", "light": "%2"}]})";
    sdk.write("config/service.json",
              cameras.arg(QString::fromStdString(server.url("/aac")), QString::fromStdString(server.url("/live")))
                  .toStdString());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear ear(sdk);
    ear.open("porch", {{"recvaudiodata", true}, {"hd", true}});
    QVERIFY(ear.waitForSound(44100));
    const Json parameters = ear.messages.waitForType("avopen").at("avparam");
    QCOMPARE(parameters.at("audiolisten"), Json(1));
    QCOMPARE(parameters.at("audioplay"), Json(0));
    QCOMPARE(ear.form().at("rate"), Json(44100));
    QCOMPARE(ear.form().at("channels"), Json(2));
    const auto left = media::channelOf(ear.heard(), 2, 0);
    QVERIFY(media::shareOf(1500, std::span(left).last(8000), 44100) > 0.9);
    Ear mouth(sdk);
    mouth.talk("porch");
    QCOMPARE(mouth.messages.waitForType("avclose").at("retcode"), Json(8));
    ear.stop();
    Ear deaf(sdk);
    deaf.listen("porch");
    QCOMPARE(deaf.messages.waitForType("avclose").at("retcode"), Json(7));
}

QTEST_GUILESS_MAIN(tst_Audio)
#include "tst_Audio.moc"
