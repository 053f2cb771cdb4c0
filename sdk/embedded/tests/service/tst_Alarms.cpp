#include "AlarmWorld.h"

#include <QtTest>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace ipncsdk;
using namespace ipncsdk::test;
using std::chrono::seconds;

/// Alarms from a reading to the clients of all processes, the outputs and the files. The process that reads the
/// sensors is played by the test: a desk on the store that the SDKs under test share.
class tst_Alarms final : public QObject {
    Q_OBJECT

private slots:
    void alarmReachesEveryClientThatMayKnow();
    void pictureGoesWhereTheClientSays_data();
    void pictureGoesWhereTheClientSays();
    void outputsFollow();
    void sensorDataCanBeFetched();
    void floodLosesNone();
    void silentDevicesAndInputs();
};

namespace {

/// Fetches a file of sensor data; the last message of the flow.
Json fetch(TestSdk& sdk, const std::string& path) {
    Received flow;
    int id = 0;
    sdk.runtime.requestMessage(toText({{"reqtype", "downsdfile"},
                                       {"ipncid", pumps},
                                       {"path", path},
                                       {"savepath", sdk.path("fetched.dat").string()}}),
                               id, [&flow](const std::string& text) { flow.add(text); });
    const bool ended = waitFor([&] { return !flow.all().empty() && flow.all().back().at("state") != "progress"; });
    return ended ? flow.all().back() : Json();
}

} // namespace

void tst_Alarms::alarmReachesEveryClientThatMayKnow() {
    AlarmWorld world;
    QVERIFY(world.started);
    TestSdk friendly;
    TestSdk stranger;
    for (TestSdk* other : {&friendly, &stranger}) {
        other->joinStoreOf(world.sdk);
        QCOMPARE(other->start(), emSuccess);
    }
    QVERIFY(friendly.signIn(colleague));
    QVERIFY(stranger.signIn("13600136000"));
    const long long plan = world.addPlan(onPressure);
    QVERIFY(plan > 0);
    Plant plant(world.sdk);
    plant.read(1001, 8.92);
    for (TestSdk* sdk : {&world.sdk, &friendly}) {
        const Json message = sdk->client.waitForType("trigger");
        QVERIFY(!message.is_null());
        QCOMPARE(message.at("content"), Json("一号泵组 出口压力 8.92MPa 超过二级阈值"));
        const Json& alarm = message.at("alarm");
        QCOMPARE(alarm.at("ipncid"), Json(pumps));
        QCOMPARE(alarm.at("datetime").get<std::string>().size(), std::size_t{19});
        std::string stamp = alarm.at("datetime").get<std::string>();
        stamp.erase(std::remove_if(stamp.begin(), stamp.end(), [](char c) { return c < '0' || c > '9'; }),
                    stamp.end());
        QCOMPARE(alarm.at("images"), Json::array({stamp + "-2.jpg"}));
        Json trigger = alarm.at("trigger");
        QVERIFY(trigger.at("savelog").get<std::string>().find(pumps) != std::string::npos);
        trigger.erase("savelog");
        QCOMPARE(trigger, Json({{"linkplanid", plan},
                                {"name", "超压"},
                                {"threshold", 2},
                                {"input", 1001},
                                {"inputname", "出口压力"},
                                {"value", 8.92},
                                {"unit", "MPa"}}));
    }
    // Once each; not to who may not know, and not to who comes later.
    plant.read(1001, 9.5);
    plant.read(1001, 1);
    plant.read(1001, 6);
    QVERIFY(waitFor([&] { return friendly.client.ofType("trigger").size() == 2; }));
    stranger.settle();
    QVERIFY(stranger.client.ofType("trigger").empty());
    TestSdk late;
    late.joinStoreOf(world.sdk);
    QCOMPARE(late.start(), emSuccess);
    QVERIFY(late.signIn());
    QCOMPARE(codeOf(late.askAccount("getfriends")), 0);
    late.settle();
    QVERIFY(late.client.ofType("trigger").empty());
    QCOMPARE(world.sdk.client.ofType("trigger").size(), std::size_t{2});
}

void tst_Alarms::pictureGoesWhereTheClientSays_data() {
    QTest::addColumn<QByteArray>("reply"); // below the SDK's folder
    QTest::addColumn<bool>("written");
    QTest::newRow("a folder") << QByteArray("pictures") << true;
    QTest::newRow("a file") << QByteArray("file") << false;
    QTest::newRow("a folder that is not there") << QByteArray("other") << false;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("a line feed") << QByteArray("pic\ntures") << false;
}

void tst_Alarms::pictureGoesWhereTheClientSays() {
    QFETCH(QByteArray, reply);
    QFETCH(bool, written);
    AlarmWorld world;
    std::filesystem::create_directories(world.sdk.path("pictures"));
#ifndef Q_OS_WIN // no name has a line feed there
    std::filesystem::create_directories(world.sdk.path("pic\ntures"));
#endif
    world.sdk.write("file", "");
    Received asked;
    world.sdk.runtime.setClientCallback([&](const std::string& message, std::string& answer) {
        world.sdk.client.add(message);
        if (message.find("reqalarmpath") == std::string::npos)
            return;
        if (!reply.isEmpty())
            answer = world.sdk.path(reply.toStdString()).string();
        asked.add(message);
    });
    world.addPlan(onPressure);
    Plant plant(world.sdk);
    world.raise(plant, 6);
    const Json question = asked.waitForType("reqalarmpath");
    QVERIFY(!question.is_null());
    QCOMPARE(question.at("ipncid"), Json(pumps));
    QCOMPARE(question.at("date").get<std::string>().size(), std::size_t{10});
    const auto picture = world.sdk.path("pictures/" + question.at("filename").get<std::string>());
    if (written)
        QVERIFY(waitFor([&] { return std::filesystem::exists(picture); }));
    // Whatever was begun is done or undone when the SDK has ended; nothing unfinished is left.
    QCOMPARE(world.sdk.runtime.cleanup(), emSuccess);
    QCOMPARE(world.sdk.filesIn("pictures").size(), written ? std::size_t{1} : std::size_t{0});
#ifndef Q_OS_WIN
    QVERIFY(world.sdk.filesIn("pic\ntures").empty());
#endif
}

void tst_Alarms::outputsFollow() {
    AlarmWorld world;
    Json plan = onPressure;
    plan["output"] = {{{"output", 1005}}, {{"output", 1006}}};
    const long long id = world.addPlan(plan);
    Plant plant(world.sdk);
    plant.read(1001, 6);
    QVERIFY(waitFor([&] { return plant.outputs.written().size() == 10; }));
    plant.read(1001, 1);
    QVERIFY(waitFor([&] { return plant.outputs.written().size() == 20; }));
    // A plan that is deleted while it is active lets go; so does the end of the process.
    plant.read(1001, 6);
    QVERIFY(waitFor([&] { return plant.outputs.written().size() == 30; }));
    QCOMPARE(codeOf(world.sdk.askAccount("dellinkplan", {{"ipncid", pumps}, {"linkplanid", id}})), 0);
    QVERIFY(waitFor([&] { return plant.outputs.written().size() == 40; }));
    QVERIFY(world.addPlan(plan) > id);
    QVERIFY(waitFor([&] { return plant.outputs.written().size() == 50; }));
    plant.stop();
    const std::string written = plant.outputs.written();
    QCOMPARE(std::count(written.begin(), written.end(), '+'), 6);
    QCOMPARE(std::count(written.begin(), written.end(), '-'), 6);
}

void tst_Alarms::sensorDataCanBeFetched() {
    AlarmWorld world;
    world.addPlan(onPressure);
    Plant plant(world.sdk);
    const auto start = world.sdk.clock->now();
    const auto at = [&start](int second, int pid, double value) {
        return sensor::Reading{pid, start + seconds(second), value, true};
    };
    // The first is too old for the file, and the last too young.
    plant.read({at(-61, 1001, 0.5), at(-60, 1001, 1.25), at(-1, 1003, -2), at(0, 1001, 6)});
    const Json message = world.sdk.client.waitForType("trigger");
    const std::string path = "dat/" + message.at("alarm").at("trigger").at("savelog").get<std::string>();
    const auto lines = [&] {
        std::ifstream in(world.sdk.path("fetched.dat"));
        return std::string{std::istreambuf_iterator<char>(in), {}};
    };
    // The time of the set clock is known, and written with its thousandths.
    const std::string early = "#corvanta-dat 1\n1699999940.000\t1001\t1.25\n1699999999.000\t1003\t-2\n"
                              "1700000000.000\t1001\t6\n";
    QVERIFY(waitFor([&] { return codeOf(fetch(world.sdk, path)) == 0; }));
    QCOMPARE(lines(), early);
    plant.read({at(10, 1003, 4), at(11, 1003, 5)});
    world.sdk.clock->advance(seconds(10));
    plant.desk().wake();
    QVERIFY(waitFor([&] { return codeOf(fetch(world.sdk, path)) == 0 && lines() != early; }));
    QCOMPARE(lines(), early + "1700000010.000\t1003\t4\n");
    // Nothing else can be fetched that way.
    for (const char* wrong : {"dat/", "dat/../service.db", "dat/20260101000000-CAM0052.dat"})
        QCOMPARE(codeOf(fetch(world.sdk, wrong)), 404);
    TestSdk stranger;
    stranger.joinStoreOf(world.sdk);
    QCOMPARE(stranger.start(), emSuccess);
    QCOMPARE(codeOf(fetch(stranger, path)), 3);
    QVERIFY(stranger.signIn("13600136000"));
    QCOMPARE(codeOf(fetch(stranger, path)), 7);
}

void tst_Alarms::floodLosesNone() {
    AlarmWorld world;
    world.addPlan(onPressure);
    Plant plant(world.sdk);
    constexpr std::size_t alarms = 1000;
    std::vector<sensor::Reading> readings;
    for (std::size_t i = 0; i < alarms; ++i) {
        readings.push_back({1001, world.sdk.clock->now(), 0, true});
        readings.push_back({1001, world.sdk.clock->now(), 6 + static_cast<double>(i) / 1000, true});
    }
    plant.read(readings);
    QVERIFY(waitFor([&] { return world.sdk.client.ofType("trigger").size() >= alarms; }));
    const auto told = world.sdk.client.ofType("trigger");
    QCOMPARE(told.size(), alarms);
    for (std::size_t i = 0; i < alarms; ++i)
        QCOMPARE(told[i].at("alarm").at("trigger").at("value"), Json(6 + static_cast<double>(i) / 1000));
}

void tst_Alarms::silentDevicesAndInputs() {
    AlarmWorld world;
    world.addPlan(onPressure);
    Plant plant(world.sdk);
    world.raise(plant, 6);
    const auto waitForContent = [&](const char* content) {
        return waitFor([&] {
            world.sdk.clock->advance(seconds(1));
            plant.desk().wake();
            const auto told = world.sdk.client.ofType("trigger");
            return std::any_of(told.begin(), told.end(), [&](const Json& message) {
                return message.at("content") == content && !message.at("alarm").contains("trigger");
            });
        });
    };
    plant.read(1001, 0, false);
    QVERIFY(waitForContent("一号泵组 出口压力 采集异常"));
    QCOMPARE(world.sdk.sqlite("update devices set online = 0 where ipncid = 'CAM0052'"), std::string());
    QVERIFY(waitForContent("一号泵组 设备离线"));
}

QTEST_APPLESS_MAIN(tst_Alarms)
#include "tst_Alarms.moc"
