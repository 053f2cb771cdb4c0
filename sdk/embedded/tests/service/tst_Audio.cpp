#include "TestSdk.h"
#include "Tone.h"
#include "api/VideoHub.h"
#include "media/sound/Talk.h"
#include "support/RtspServer.h"

#include <QtTest>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <mutex>
#include <thread>

using namespace ipncsdk;
using namespace ipncsdk::test;
using media::StreamError;

namespace {

/// A request that listens or talks: keeps what it hears, and all other messages.
class Ear final {
public:
    explicit Ear(TestSdk& sdk)
        : sdk_(sdk) {}
    ~Ear() { stop(); }
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    void open(const std::string& ipncid, const Json& keys) {
        Json avreq = {{"ipncid", ipncid}, {"reqtype", "avreq"}};
        avreq.update(keys);
        int id = 0;
        sdk_.runtime.requestMessage(toText({{"avreq", avreq}}), id, [this](const std::string& text) { take(text); });
        id_ = id;
    }
    void listen(const std::string& ipncid) { open(ipncid, {{"recvaudiodata", true}}); }
    void talk(const std::string& ipncid, int rate = 16000) {
        open(ipncid, {{"sendaudiodata", true}, {"rate", rate}, {"channels", 1}});
    }
    void stop() {
        sdk_.runtime.stopRequest(id_);
        stopped_ = true;
    }
    /// The result of handing samples over; null where the result has no callback.
    Json say(const void* samples, std::size_t bytes) {
        return sdk_.command({{"type", "avchange"},
                             {"reqid", id_.load()},
                             {"audiodata", reinterpret_cast<std::uintptr_t>(samples)},
                             {"len", bytes}});
    }

    [[nodiscard]] int id() const { return id_; }
    [[nodiscard]] std::vector<std::int16_t> heard() const {
        const std::lock_guard lock(mutex_);
        return heard_;
    }
    [[nodiscard]] bool waitForSound(std::size_t samples) const {
        return waitFor([&] {
            const std::lock_guard lock(mutex_);
            return heard_.size() >= samples;
        });
    }
    [[nodiscard]] Json form() const {
        const std::lock_guard lock(mutex_);
        return form_;
    }
    [[nodiscard]] bool wasCalledLate() const { return late_; }

    Received messages;

private:
    void take(const std::string& text) {
        late_ = late_ || stopped_;
        const Json message = Json::parse(text);
        if (message.at("type") != "audiodata")
            return messages.add(text);
        const auto* data = reinterpret_cast<const std::int16_t*>(message.at("data").get<std::uintptr_t>());
        const std::lock_guard lock(mutex_);
        heard_.insert(heard_.end(), data, data + message.at("len").get<std::size_t>() / 2);
        form_ = message;
        form_.erase("data");
    }

    TestSdk& sdk_;
    std::atomic<int> id_{0};
    std::atomic<bool> stopped_{false};
    std::atomic<bool> late_{false};
    mutable std::mutex mutex_;
    std::vector<std::int16_t> heard_; ///< guarded by mutex_
    Json form_;                       ///< the last message without its address; guarded by mutex_
};

api::HubFactory realHub() {
    return [](media::HubOptions options) {
        options.networkTimeout = std::chrono::minutes(2);
        return api::makeStreamHub(std::move(options));
    };
}

} // namespace

/// Listening and talking through the boundary.
class tst_Audio final : public QObject {
    Q_OBJECT

private slots:
    void refusals_data();
    void refusals();
    void rights();
    void messages();
    void samplesAreCopied();
    void badSamples_data();
    void badSamples();
    void onlyForThoseWhoTalk();
    void talkedFromManyThreads();
    void stopsInsideItsOwnCallback();
    void signOutEndsIt();
    void parametersOfAStream();
    void heardBack();
    void secondTalkerIsRefused();
    void networkCamera();
    void networkCameraIsTalkedTo();
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

void tst_Audio::samplesAreCopied() {
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

void tst_Audio::badSamples_data() {
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

void tst_Audio::badSamples() {
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

void tst_Audio::onlyForThoseWhoTalk() {
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

void tst_Audio::talkedFromManyThreads() {
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

void tst_Audio::heardBack() {
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

void tst_Audio::secondTalkerIsRefused() {
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

void tst_Audio::networkCameraIsTalkedTo() {
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

QTEST_GUILESS_MAIN(tst_Audio)
#include "tst_Audio.moc"
