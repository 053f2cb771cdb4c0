#include "TestSdk.h"
#include "api/AlarmDesk.h"
#include "store/Notices.h"

#include <QProcess>
#include <QTcpServer>
#include <QtTest>

#include <soci/soci.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <thread>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Alarms from a reading to the clients of all processes and to people's phones. The process that reads the sensors
/// is played by the test: a desk on the store that the SDKs under test share.
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
    void rules_data();
    void rules();
    void messagesAreCountedAndLimited();
    void lostFriendIsNotTold();
    void appNoticesReachTheBroker();
};

namespace {

using std::chrono::seconds;

constexpr auto pumps = "CAM0052";
constexpr auto owner = "13800138000";
constexpr auto colleague = "13700137000";

/// Nobody reads this board but the test.
constexpr auto boards = R"([{"pid":101,"type":"RS485","ifname":"RS485-9","name":"泵组仪表",
  "params":{"mode":"rtu","device":"/dev/null"},
  "input":[{"pid":1001,"ifpid":101,"name":"出口压力","unit":"MPa","thresholds":[{"level":1,"high":5},
   {"level":2,"high":8},{"level":3,"high":10}]},{"pid":1003,"ifpid":101,"name":"电机温度","unit":"℃"}],
  "output":[{"pid":1005,"ifpid":101,"name":"启停"},{"pid":1006,"ifpid":101,"name":"声光报警"}]}])";

/// Outputs as they were written, in order.
class Outputs final : public sensor::OutputWriter {
public:
    ServiceCode write(int pid, double value) override {
        const std::lock_guard lock(mutex_);
        written_ += std::to_string(pid) + (value > 0 ? "+" : "-");
        return ServiceCode::Done;
    }
    std::string written() {
        const std::lock_guard lock(mutex_);
        return written_;
    }

private:
    std::mutex mutex_;
    std::string written_;
};

/// The process that reads the sensors of an SDK's store.
class Plant final {
public:
    explicit Plant(TestSdk& sdk, std::optional<device::NoticesConfig> notices = std::nullopt)
        : sdk_(sdk)
        , outbox_(sdk.path("plant"), std::nullopt, *sdk.clock) {
        const auto file = sdk.path("service/service.db");
        auto opened = store::openDatabaseFile(file, seconds(5), *sdk.clock, {});
        database_.use(std::move(opened.session));
        if (notices)
            broker_ = std::make_unique<service::NoticeBroker>(*notices);
        book_ = std::make_unique<api::AlarmBook>(
            api::AlarmBook::Parts{database_, cameras_, *sdk.clock, outbox_, broker_.get(), [] {
                                  }});
        auto dat = file;
        dat += ".dat";
        desk_ = std::make_unique<api::AlarmDesk>(api::AlarmDesk::Parts{
            database_, cameras_, *sdk.clock, *book_, dat, std::move(opened.changes), [this](const std::string& text) {
                notices_.add(toText({{"text", text}}));
            }});
        desk_->attach(outputs);
    }
    ~Plant() {
        desk_->stop();
        book_->stop();
    }
    Plant(const Plant&) = delete;
    Plant& operator=(const Plant&) = delete;

    void read(int pid, double value, bool normal = true) { desk_->take({{pid, sdk_.clock->now(), value, normal}}); }
    void read(const std::vector<sensor::Reading>& readings) { desk_->take(readings); }
    api::AlarmDesk& desk() { return *desk_; }
    void stop() { desk_->stop(); }
    /// Text messages that left, as "PHONE TEXT".
    [[nodiscard]] std::vector<std::string> messages() const {
        std::vector<std::string> lines;
        std::ifstream in(sdk_.path("plant/service/outbox.jsonl"));
        for (std::string line; std::getline(in, line);) {
            const Json message = Json::parse(line);
            lines.push_back(message.at("phonenumber").get<std::string>() + " " +
                            message.at("text").get<std::string>());
        }
        return lines;
    }

    Outputs outputs;

private:
    TestSdk& sdk_;
    Received notices_;
    store::Database database_;
    device::NetworkCameras cameras_;
    service::Outbox outbox_;
    std::unique_ptr<service::NoticeBroker> broker_;
    std::unique_ptr<api::AlarmBook> book_;
    std::unique_ptr<api::AlarmDesk> desk_;
};

/// A started SDK whose pumps have thresholds and no plans or rules but those that a test makes.
struct World {
    World() {
        started = sdk.start() == emSuccess;
        started = started && sdk.sqlite("delete from linkplans; delete from reportrules").empty();
        sdk.write("pumps.sql",
                  "update devices set interfaces = '" + std::string(boards) + "' where ipncid = '" + pumps + "';");
        started = started && sdk.sqlite(".read '" + sdk.path("pumps.sql").string() + "'").empty();
        started = started && sdk.signIn();
    }
    long long addPlan(Json plan) {
        plan["ipncid"] = pumps;
        plan.emplace("name", "超压");
        const Json reply = sdk.askAccount("submitlinkplan", {{"linkplan", plan}});
        return codeOf(reply) == 0 ? reply.at("resp").at("linkplanid").get<long long>() : -1;
    }
    Json addRule(Json rule) {
        rule.emplace("name", "值班");
        rule.emplace("ipncids", Json::array({pumps}));
        rule.emplace("reporttype", Json::array({"threshold"}));
        rule.emplace("reportmode", Json::array({"sms"}));
        rule.emplace("smslevel", Json::array({"1", "2", "3"}));
        return sdk.askAccount("submitreportrules", {{"reportrules", rule}});
    }
    Json person() { return sdk.askAccount("getpersioninfo").at("resp").at("persioninfo"); }
    Json records() {
        return sdk.askAccount("getsmsrecords", {{"cmd", "next"}, {"recid", 0}}).at("resp").at("records");
    }
    /// Raises an alarm of the one plan on 1001, and waits until clients are told.
    void raise(Plant& plant, double value) {
        const std::size_t before = sdk.client.ofType("trigger").size();
        plant.read(1001, 0);
        plant.read(1001, value);
        QVERIFY(waitFor([&] { return sdk.client.ofType("trigger").size() > before; }));
    }

    TestSdk sdk;
    bool started = false;
};

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

const Json onPressure = {{"report", true}, {"input", {{{"ifpid", 101}, {"input", 1001}}}}};

} // namespace

void tst_Alarms::alarmReachesEveryClientThatMayKnow() {
    World world;
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
    World world;
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
    World world;
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
    World world;
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
    World world;
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
    World world;
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

void tst_Alarms::rules_data() {
    QTest::addColumn<QByteArray>("rule");
    QTest::addColumn<bool>("reported");
    QTest::addColumn<QByteArray>("messages"); // one a line
    const auto row = [](const char* name, const char* rule, const char* messages, bool reported = true) {
        QTest::newRow(name) << QByteArray(rule) << reported << QByteArray(messages);
    };
    const char* const usual = "13800138000 【监控平台】一号泵组 出口压力 8.5MPa 超过二级阈值";
    row("oneself", R"("selfuse":true)", usual);
    row("another level", R"("selfuse":true,"smslevel":["1","3"])", "");
    row("this level", R"("selfuse":true,"smslevel":["2"])", usual);
    row("levels of the app alone", R"("selfuse":true,"smslevel":[],"applevel":["2"])", "");
    row("another type", R"("selfuse":true,"reporttype":["offline","other"])", "");
    row("another device", R"("selfuse":true,"ipncids":["CAM0001"])", "");
    row("another mode", R"("selfuse":true,"reportmode":["app"])", "");
    row("disabled", R"("selfuse":true,"enable":false)", "");
    row("a plan that does not report", R"("selfuse":true)", "", false);
    row("a friend and nobody's number", R"("recvphones":["13700137000","13500135000"])",
        "13700137000 【监控平台】一号泵组 出口压力 8.5MPa 超过二级阈值");
    row("a template", R"("selfuse":true,"smstemplate":"($1)|($2)|($3)|($4)|($5)|($6)($7)|($8)|($1|($)|($11)|($")",
        "13800138000 【监控平台】一号泵组|超压|二级阀值|泵组仪表|出口压力|8.5MPa|($8)|($1|($)|($11)|($");
}

void tst_Alarms::rules() {
    QFETCH(QByteArray, rule);
    QFETCH(bool, reported);
    QFETCH(QByteArray, messages);
    World world;
    Json plan = onPressure;
    plan["report"] = reported;
    world.addPlan(plan);
    QCOMPARE(codeOf(world.addRule(Json::parse("{" + rule.toStdString() + "}"))), 0);
    Plant plant(world.sdk);
    world.raise(plant, 8.5);
    // Records stand in the store when the alarm does; the messages leave then.
    const std::size_t expected = messages.isEmpty() ? 0 : 1;
    QCOMPARE(world.records().size(), expected);
    QVERIFY(waitFor([&] { return plant.messages().size() == expected; }));
    if (expected > 0) {
        QCOMPARE(plant.messages().front(), messages.toStdString());
        QVERIFY(waitFor([&] { return world.records().front().at("state") == "ok"; }));
        QCOMPARE(world.records().front().at("kind"), Json("alarm"));
    }
}

void tst_Alarms::messagesAreCountedAndLimited() {
    World world;
    world.addPlan(onPressure);
    QCOMPARE(world.person().at("smsnum"), Json(200));
    QCOMPARE(codeOf(world.addRule({{"selfuse", true}})), 0);
    QCOMPARE(codeOf(world.sdk.askAccount("setphoneparam", {{"smsphone", colleague}, {"smswarn", 198}})), 0);
    Plant plant(world.sdk);
    world.raise(plant, 6);
    world.raise(plant, 6); // within the minute
    QCOMPARE(world.person().at("smsnum"), Json(199));
    world.sdk.clock->advance(seconds(60));
    world.raise(plant, 6);
    QCOMPARE(world.person().at("smsnum"), Json(198));
    // Once, at the limit, and for nothing.
    QVERIFY(waitFor([&] { return plant.messages().size() == 3; }));
    const std::string reminder = std::string(colleague) + " 【监控平台】短信剩余198条，请及时充值。";
    const auto left = plant.messages();
    QCOMPARE(std::count(left.begin(), left.end(), reminder), 1);
    // Two for what is longer than seventy characters, and nothing from an empty account.
    const std::string longer(66, 'x');
    Json rule = world.sdk.askAccount("getreportrules").at("resp").at("reportrules").front();
    rule["smstemplate"] = longer;
    QCOMPARE(codeOf(world.addRule(rule)), 0);
    for (const int expected : {196, 196}) {
        world.sdk.clock->advance(seconds(60));
        world.raise(plant, 6);
        QCOMPARE(world.person().at("smsnum"), Json(expected));
        world.sdk.clock->advance(seconds(60));
        QCOMPARE(world.sdk.sqlite("update accounts set smsleft = 1 where id = 1"), std::string());
        world.raise(plant, 6);
        QCOMPARE(world.person().at("smsnum"), Json(1));
        QCOMPARE(world.records().front().at("state"), Json("nobalance"));
        QCOMPARE(world.sdk.sqlite("update accounts set smsleft = 198 where id = 1"), std::string());
    }
    // A code is recorded without its digits, and costs nothing.
    QCOMPARE(codeOf(world.sdk.askAccount("changepascode", {{"phonenumber", owner}})), 0);
    QCOMPARE(world.records().front().at("kind"), Json("code"));
    QVERIFY(world.records().front().at("text").get<std::string>().find("：******，") != std::string::npos);
    QCOMPARE(world.person().at("smsnum"), Json(198));
}

void tst_Alarms::lostFriendIsNotTold() {
    World world;
    world.addPlan(onPressure);
    QCOMPARE(codeOf(world.addRule({{"recvphones", {colleague}}})), 0);
    // A friend's rule counts as long as the device is shared with the friend.
    TestSdk friendly;
    friendly.joinStoreOf(world.sdk);
    QCOMPARE(friendly.start(), emSuccess);
    QVERIFY(friendly.signIn(colleague));
    const Json own = {{"name", "x"},        {"selfuse", true},
                      {"ipncids", {pumps}}, {"reporttype", {"threshold"}},
                      {"smslevel", {"1"}},  {"reportmode", {"sms"}}};
    QCOMPARE(codeOf(friendly.askAccount("submitreportrules", {{"reportrules", own}})), 0);
    Plant plant(world.sdk);
    world.raise(plant, 6);
    QVERIFY(waitFor([&] { return !plant.messages().empty(); }));
    const std::size_t before = world.records().size();
    QCOMPARE(before, std::size_t{1});
    QCOMPARE(codeOf(world.sdk.askAccount("delfriend", {{"friendphone", colleague}})), 0);
    world.sdk.clock->advance(seconds(120));
    world.raise(plant, 6);
    QCOMPARE(world.sdk.sqlite("select count(*) from smsrecords"), std::string("1"));
}

void tst_Alarms::appNoticesReachTheBroker() {
#ifdef Q_OS_WIN
    QSKIP("the broker is a program of Debian");
#endif
    QTcpServer probe;
    QVERIFY(probe.listen(QHostAddress::LocalHost));
    const QString port = QString::number(probe.serverPort());
    probe.close();
    World world;
    world.addPlan(onPressure);
    QCOMPARE(codeOf(world.addRule({{"selfuse", true},
                                   {"recvphones", {colleague}},
                                   {"reportmode", {"app"}},
                                   {"applevel", {"1"}},
                                   {"apptemplate", "($2) ($6)"}})),
             0);
    // What is raised while nobody answers waits for the broker.
    Plant plant(world.sdk, device::NoticesConfig{"127.0.0.1", port.toInt(), "", "", "site/notices"});
    world.raise(plant, 6);
    QProcess broker;
    broker.setProcessChannelMode(QProcess::MergedChannels);
    world.sdk.write("broker.conf",
                    "listener " + port.toStdString() + " 127.0.0.1\nallow_anonymous true\n" + "persistence false\n");
    const QString conf = QString::fromStdString(world.sdk.path("broker.conf").string());
    QProcess reader;
    reader.start(
        QStringLiteral("sh"),
        {QStringLiteral("-c"),
         QStringLiteral("until mosquitto_sub -h 127.0.0.1 -p %1 -t '#' -v -C 2 -W 50 2>&1; do :; done").arg(port)});
    broker.start(QStringLiteral("/usr/sbin/mosquitto"), {QStringLiteral("-c"), conf});
    QVERIFY(broker.waitForStarted());
    QByteArray seen;
    // The reader may come after the first notices: they go on.
    const bool both = waitFor([&] {
        world.sdk.clock->advance(seconds(1));
        world.raise(plant, 6);
        reader.waitForReadyRead(100);
        seen += reader.readAllStandardOutput();
        return seen.contains("site/notices/13800138000 ") && seen.contains("site/notices/13700137000 ");
    });
    broker.terminate();
    broker.waitForFinished();
    reader.kill();
    reader.waitForFinished();
    QVERIFY2(both, seen.constData());
    const QByteArray mark = "site/notices/13700137000 ";
    const int begin = seen.indexOf(mark) + mark.size();
    const Json notice = Json::parse(seen.mid(begin, seen.indexOf('\n', begin) - begin).toStdString());
    QCOMPARE(notice.at("phonenumber"), Json(colleague));
    QCOMPARE(notice.at("text"), Json("超压 6"));
    QCOMPARE(notice.at("ipncid"), Json(pumps));
    QCOMPARE(notice.at("level"), Json(1));
}

QTEST_APPLESS_MAIN(tst_Alarms)
#include "tst_Alarms.moc"
