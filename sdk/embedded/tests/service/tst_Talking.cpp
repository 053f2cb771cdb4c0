#include "Ear.h"
#include "RealHub.h"
#include "Tone.h"
#include "media/sound/Talk.h"
#include "support/RtspServer.h"

#include <QtTest>

#include <algorithm>
#include <memory>
#include <thread>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Talking through the boundary: how samples are handed over, and where they arrive.
class tst_Talking final : public QObject {
    Q_OBJECT

private slots:
    void samplesAreCopied();
    void badSamples_data();
    void badSamples();
    void onlyForThoseWhoTalk();
    void talkedFromManyThreads();
    void heardBack();
    void secondTalkerIsRefused();
    void networkCameraIsTalkedTo();
};

void tst_Talking::samplesAreCopied() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear mouth(sdk);
    mouth.talk("CAM0001");
    QVERIFY(!mouth.messages.waitForType("avopen").is_null());
    const auto talk = sdk.hub->subscriptions().front().talk;
    QVERIFY(talk);
    for (std::int16_t round = 1; round <= 20; ++round) {
        // The memory is another one's as soon as the call is back.
        auto words = std::make_unique<std::vector<std::int16_t>>(160, round);
        sdk.runtime.setConfig(toText({{"type", "avchange"},
                                      {"reqid", mouth.id()},
                                      {"audiodata", reinterpret_cast<std::uintptr_t>(words->data())},
                                      {"len", 320}}),
                              nullptr);
        std::fill(words->begin(), words->end(), std::int16_t{-1});
    }
    media::Talk::Place place;
    bool lost = false;
    std::vector<std::int16_t> said(3200);
    QCOMPARE(talk->take(place, said, lost), said.size());
    for (std::size_t index = 0; index < said.size(); ++index)
        QCOMPARE(said[index], static_cast<std::int16_t>(1 + index / 160));
    const Json result = mouth.say(said.data(), 320);
    QCOMPARE(result, (Json{{"type", "avchange"}, {"retcode", 0}, {"reqid", mouth.id()}}));
}

void tst_Talking::badSamples_data() {
    QTest::addColumn<QByteArray>("keys"); // %1: an address of good samples
    const auto row = [](const char* keys) {
        QTest::newRow(keys) << QByteArray(keys);
    };
    row(R"({"audiodata": 0, "len": 320})");
    row(R"({"audiodata": -1, "len": 320})");
    row(R"({"audiodata": "%1", "len": 320})");
    row(R"({"audiodata": null, "len": 320})");
    row(R"({"audiodata": 0.5, "len": 320})");
    row(R"({"audiodata": 1e300, "len": 320})");
    row(R"({"audiodata": 18446744073709551615, "len": 320})");
    row(R"({"audiodata": 18446744073709551616, "len": 320})");
    row(R"({"audiodata": %1})");
    row(R"({"audiodata": %1, "len": 0})");
    row(R"({"audiodata": %1, "len": -320})");
    row(R"({"audiodata": %1, "len": 321})");
    row(R"({"audiodata": %1, "len": 32002})");
    row(R"({"audiodata": %1, "len": 4294967616})");
    row(R"({"audiodata": %1, "len": 9223372036854775807})");
    row(R"({"audiodata": %1, "len": 18446744073709551615})");
    row(R"({"audiodata": %1, "len": "320"})");
    row(R"({"audiodata": %1, "len": 320, "hd": true})");
    row(R"({"audiodata": %1, "len": 320, "capture": "x.jpg"})");
    row(R"({"audiodata": %1, "len": 320, "reqid": 0})");
    row(R"({"audiodata": %1, "len": 320, "reqid": 4711})");
    row(R"({"audiodata": %1, "len": 320, "reqid": -1})");
    row(R"({"audiodata": %1, "len": 320, "reqid": 4294967297})");
    row(R"({"audiodata": %1, "len": 320, "reqid": "1"})");
}

void tst_Talking::badSamples() {
    QFETCH(QByteArray, keys);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear mouth(sdk);
    mouth.talk("CAM0001");
    QVERIFY(!mouth.messages.waitForType("avopen").is_null());
    const std::vector<std::int16_t> words(16001, 7);
    const auto address = QByteArray::number(static_cast<qulonglong>(reinterpret_cast<std::uintptr_t>(words.data())));
    Json message = {{"type", "avchange"}, {"reqid", mouth.id()}};
    message.update(Json::parse(keys.replace("%1", address).toStdString()));
    QCOMPARE(sdk.command(message).at("retcode"), Json(6));
    const auto talk = sdk.hub->subscriptions().front().talk;
    QCOMPARE(talk->waiting({}), std::size_t{0});
    // The request is none the worse for it; a number may be written with a fraction of zero.
    QCOMPARE(mouth.say(words.data(), 32000).at("retcode"), Json(0));
    const Json fraction =
        Json::parse(QByteArray(R"({"audiodata": %1.0, "len": 320.0})").replace("%1", address).toStdString());
    Json good = {{"type", "avchange"}, {"reqid", mouth.id()}};
    good.update(fraction);
    QCOMPARE(sdk.command(good).at("retcode"), Json(0));
}

void tst_Talking::onlyForThoseWhoTalk() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const std::vector<std::int16_t> words(160, 7);
    Ear ear(sdk);
    ear.listen("CAM0001");
    QVERIFY(ear.waitForSound(1));
    QCOMPARE(ear.say(words.data(), 320).at("retcode"), Json(6));
    Ear mouth(sdk);
    mouth.talk("CAM0002");
    QVERIFY(!mouth.messages.waitForType("avopen").is_null());
    // Nothing is seen, so there is nothing to be exchanged or captured.
    for (const int id : {ear.id(), mouth.id()}) {
        QCOMPARE(sdk.command({{"type", "avchange"}, {"reqid", id}, {"hd", true}}).at("retcode"), Json(6));
        QCOMPARE(sdk.command({{"type", "avchange"}, {"reqid", id}, {"capture", "x.jpg"}}).at("retcode"), Json(6));
    }
    // Who has stopped has nothing more to say.
    const auto talk = sdk.hub->subscriptions().back().talk;
    mouth.stop();
    QVERIFY(talk->hasEnded());
    QCOMPARE(mouth.say(words.data(), 320).at("retcode"), Json(6));
    // Before the way is open nothing is taken.
    sdk.hub->of(media::Quality::Light).held = true;
    Ear early(sdk);
    early.talk("CAM0003");
    sdk.settle();
    QCOMPARE(early.say(words.data(), 320).at("retcode"), Json(6));
    sdk.hub->of(media::Quality::Light).held = false;
    QVERIFY(!early.messages.waitForType("avopen").is_null());
    QCOMPARE(early.say(words.data(), 320).at("retcode"), Json(0));
}

void tst_Talking::talkedFromManyThreads() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::vector<std::unique_ptr<Ear>> mouths;
    for (int number = 0; number < 4; ++number) {
        mouths.push_back(std::make_unique<Ear>(sdk));
        mouths.back()->talk("CAM000" + std::to_string(1 + number));
        QVERIFY(!mouths.back()->messages.waitForType("avopen").is_null());
    }
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < 4; ++number) {
        threads.emplace_back([&, number] {
            const std::vector<std::int16_t> words(160, static_cast<std::int16_t>(number));
            for (int round = 0; round < 50; ++round) {
                sdk.runtime.setConfig(toText({{"type", "avchange"},
                                              {"reqid", mouths[number]->id()},
                                              {"audiodata", reinterpret_cast<std::uintptr_t>(words.data())},
                                              {"len", 320}}),
                                      nullptr);
                // One leaves in the middle, for another one's thread.
                if (number == 0 && round == 25)
                    mouths[1]->stop();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const auto& wanted : sdk.hub->subscriptions()) {
        media::Talk::Place place;
        bool lost = false;
        std::vector<std::int16_t> said(media::Talk::kept);
        const auto expected = static_cast<std::int16_t>(wanted.camera.back() - '1');
        const std::size_t count = wanted.talk->take(place, said, lost);
        QCOMPARE(count, wanted.talk->hasEnded() ? count : std::size_t{50 * 160});
        QVERIFY(std::all_of(said.begin(), said.begin() + static_cast<std::ptrdiff_t>(count),
                            [expected](std::int16_t sample) { return sample == expected; }));
    }
}

void tst_Talking::heardBack() {
    TestSdk sdk(realHub());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear ear(sdk);
    ear.listen("CAM0001");
    Ear mouth(sdk);
    mouth.talk("CAM0001", 8000);
    QVERIFY(!mouth.messages.waitForType("avopen").is_null());
    const auto words = media::tone(2000, 8000, 800);
    bool found = false;
    for (int round = 0; round < 100 && !found; ++round) {
        QCOMPARE(mouth.say(words.data(), words.size() * 2).at("retcode"), Json(0));
        const std::size_t before = ear.heard().size();
        QVERIFY(ear.waitForSound(before + 1600));
        const auto heard = ear.heard();
        found = media::shareOf(2000, std::span(heard).last(1600), 16000) > 0.9;
    }
    QVERIFY(found);
    QVERIFY(mouth.heard().empty());
}

void tst_Talking::secondTalkerIsRefused() {
    TestSdk sdk(realHub());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear first(sdk);
    first.talk("CAM0001");
    QVERIFY(!first.messages.waitForType("avopen").is_null());
    Ear second(sdk);
    second.talk("CAM0001");
    QCOMPARE(second.messages.waitForType("avclose").at("retcode"), Json(9));
    QVERIFY(second.messages.ofType("avopen").empty());
    first.stop();
    Ear third(sdk);
    third.talk("CAM0001");
    QVERIFY(!third.messages.waitForType("avopen").is_null());
}

void tst_Talking::networkCameraIsTalkedTo() {
    const QTemporaryDir folder;
    RtspServer server({"--ears", folder.path(), "--user", "viewer", "--password", "secret"});
    QVERIFY(server.start());
    TestSdk sdk(realHub());
    const QString cameras = R"({"cameras": [{"ipncid": "porch", "main": "%1", "light": "%2"},
                                            {"ipncid": "gate", "main": "%3", "light": "%3"}]})";
    sdk.write("config/service.json", cameras
                                         .arg(QString::fromStdString(server.url("/live", "viewer:secret@")),
                                              QString::fromStdString(server.url("/hears-pcmu", "viewer:secret@")),
                                              QString::fromStdString(server.url("/hears-pcma", "viewer:wrong@")))
                                         .toStdString());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Ear eye(sdk);
    eye.open("porch", {{"recvdecodeavdata", true}});
    QVERIFY(waitFor([&] {
        const auto opened = eye.messages.ofType("avopen");
        return !opened.empty() && opened.back().at("avparam").at("audioplay") == Json(3);
    }));
    Ear mouth(sdk);
    mouth.talk("porch", 8000);
    QCOMPARE(mouth.messages.waitForType("avopen").at("avparam").at("audioplay"), Json(3));
    const auto words = media::tone(440, 8000, 8000);
    QCOMPARE(mouth.say(words.data(), words.size() * 2).at("retcode"), Json(0));
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(folder.filePath("hears-pcmu.raw")).size() > 12000, 60000);
    Ear second(sdk);
    second.talk("porch");
    QCOMPARE(second.messages.waitForType("avclose").at("retcode"), Json(9));
    mouth.stop();
    QVERIFY(!mouth.wasCalledLate());
    Ear stranger(sdk);
    stranger.talk("gate");
    QCOMPARE(stranger.messages.waitForType("avclose").at("retcode"), Json(12));
    QVERIFY(eye.messages.ofType("avclose").empty());
}

QTEST_GUILESS_MAIN(tst_Talking)
#include "tst_Talking.moc"
