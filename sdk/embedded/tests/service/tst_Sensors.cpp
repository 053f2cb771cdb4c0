#include "TestSdk.h"
#include "world/FirstWorld.h"

#include <QtTest>

#include <atomic>
#include <chrono>
#include <map>
#include <memory>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// What clients ask of boards and samples, with a folder of value files as a device.
class tst_Sensors final : public QObject {
    Q_OBJECT

private slots:
    void boardsAreEnteredChangedAndDeleted();
    void refusals_data();
    void refusals();
    void rightsOfFriends_data();
    void rightsOfFriends();
    void secretsStaySecret();
    void computedInputs();
    void valuesArrive();
    void samplesAndExport();
    void exportEndsWithItsRequest();
    void marks();
    void secondProcess();
    void configuredBoards();
    void configMistakes_data();
    void configMistakes();
};

namespace {

constexpr auto camera = "CAM0001";

Json folderBoard(const TestSdk& sdk, int period = 100) {
    return {{"type", "IO"},
            {"ifname", "IO-1"},
            {"name", "文件"},
            {"params", {{"mode", "gpio"}, {"chip", sdk.path("lines").string()}, {"period", period}}},
            {"input", {{{"name", "温度"}, {"unit", "℃"}, {"params", {{"line", 1}}}}}},
            {"output", {{{"name", "继电器"}, {"params", {{"line", 2}}}}}}};
}

Json submit(TestSdk& sdk, const Json& board, const std::string& ipncid = camera) {
    return sdk.askAccount("submitsensorinfo", {{"ipncid", ipncid}, {"sensorinfo", board}});
}

Json set(TestSdk& sdk, const Json& wish, const std::string& ipncid = camera) {
    return sdk.askDevice({{"ipncid", ipncid}, {"setcmds", wish}});
}

Json samples(TestSdk& sdk, Json wishes, const std::string& type = "sensordatareq") {
    return sdk.ask({{"reqtype", "serverreq"}, {"serverreq", {{"type", type}, {type, std::move(wishes)}}}});
}

/// An SDK that reads boards, with one on its first camera.
struct Machine {
    Machine()
        : sdk(nullptr, 0, true) {
        set(1, "21.5");
        set(2, "0");
        started = sdk.start() == emSuccess && sdk.signIn();
        const Json answer = started ? submit(sdk, folderBoard(sdk)) : Json();
        board = codeOf(answer) == 0 ? answer.at("resp").at("sensorinfo") : Json();
    }
    void set(int line, const std::string& text) const { sdk.write("lines/" + std::to_string(line), text); }
    [[nodiscard]] int input() const { return board.at("input").at(0).at("pid").get<int>(); }
    [[nodiscard]] int output() const { return board.at("output").at(0).at("pid").get<int>(); }
    /// What the client was told last of a port; null when it never was.
    [[nodiscard]] Json told(int pid) const {
        Json last;
        for (const Json& message : sdk.client.ofType("sensordataupdate")) {
            for (const Json& entry : message.at("sensordataupdate")) {
                if (entry.at("pid") == pid)
                    last = entry;
            }
        }
        return last;
    }
    [[nodiscard]] bool waitForValue(double value) const {
        return waitFor([&] {
            const Json last = told(input());
            return last.is_object() && last.at("value") == value;
        });
    }

    TestSdk sdk;
    bool started = false;
    Json board;
};

Json portOf(TestSdk& sdk, const std::string& ipncid, int pid) {
    const Json device = sdk.device(ipncid);
    for (const Json* list : {&device.at("interfaces"), &device.at("extend").at("sublist")}) {
        for (const Json& board : *list) {
            for (const char* key : {"input", "output"}) {
                for (const Json& port : board.at(key)) {
                    if (port.at("pid") == pid)
                        return port;
                }
            }
        }
    }
    return nullptr;
}

} // namespace

void tst_Sensors::boardsAreEnteredChangedAndDeleted() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QVERIFY(!sdk.askAccount("sensortype").at("resp").at("sensortypes").empty());
    sdk.client.clear();
    const Json first = submit(sdk, folderBoard(sdk));
    QCOMPARE(codeOf(first), 0);
    QVERIFY(!sdk.client.waitForType("freshlist").is_null());
    Json board = first.at("resp").at("sensorinfo");
    QCOMPARE(sdk.device(camera).at("interfaces").size(), std::size_t{1});
    const Json places = sdk.askAccount("moduleinterface", {{"ipncid", camera}}).at("resp").at("interfaces");
    const auto used = [&places](const char* name) {
        for (const Json& slot : places) {
            if (slot.at("ifname") == name)
                return slot.at("used") == true;
        }
        return false;
    };
    QVERIFY(used("IO-1") && !used("RS485-1"));
    const int input = board.at("input").at(0).at("pid").get<int>();
    const Json changes = {
        {"name", "新名"}, {"thresholds", {{{"level", 2}, {"high", 30}, {"low", nullptr}}}}, {"pid", 5}};
    QCOMPARE(codeOf(sdk.askAccount("changesensorinput", {{"ipncid", camera}, {"pid", input}, {"input", changes}})),
             0);
    QCOMPARE(portOf(sdk, camera, input).at("name"), Json("新名"));
    QCOMPARE(codeOf(sdk.askAccount("changesensorinput", {{"ipncid", camera}, {"pid", 1001}, {"input", changes}})),
             30);
    // A second board of a kind that there is one of.
    const Json second = submit(sdk, folderBoard(sdk));
    QCOMPARE(codeOf(second), 2);
    QVERIFY(second.at("resp").at("text").get<std::string>().find("IO-1") != std::string::npos);
    const Json gone = {{"ipncid", camera}, {"pid", board.at("pid")}};
    QCOMPARE(codeOf(sdk.askAccount("delsensor", gone)), 0);
    QCOMPARE(codeOf(sdk.askAccount("delsensor", gone)), 30);
    // Numbers never come back.
    const Json third = submit(sdk, folderBoard(sdk));
    QVERIFY(third.at("resp").at("pid").get<int>() > board.at("output").at(0).at("pid").get<int>());
}

void tst_Sensors::refusals_data() {
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("params");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const char* operation, const char* params, int code) {
        QTest::newRow(name) << operation << params << code;
    };
    row("no device", "submitsensorinfo", R"({"sensorinfo":{}})", 2);
    row("unknown device", "submitsensorinfo", R"({"ipncid":"CAM9999","sensorinfo":{"type":"IO"}})", 7);
    row("unknown type", "submitsensorinfo", R"({"ipncid":"CAM0001","sensorinfo":{"type":"USB"}})", 1);
    row("unknown board", "submitsensorinfo", R"({"ipncid":"CAM0001","sensorinfo":{"type":"IO","pid":102}})", 30);
    row("no board", "submitsensorinfo", R"({"ipncid":"CAM0001","sensorinfo":[]})", 2);
    row("wrong board", "submitsensorinfo", R"({"ipncid":"CAM0001","sensorinfo":{"type":"IO"}})", 2);
    row("delete nothing", "delsensor", R"({"ipncid":"CAM0001"})", 2);
    row("change nothing", "changesensorinput", R"({"ipncid":"CAM0001","pid":1001})", 2);
    row("interfaces of nobody", "moduleinterface", R"({"ipncid":"CAM9999"})", 7);
}

void tst_Sensors::refusals() {
    QFETCH(QString, operation);
    QFETCH(QString, params);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    const Json parsed = Json::parse(params.toStdString());
    QCOMPARE(codeOf(sdk.askAccount(operation.toStdString(), parsed)), 3);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount(operation.toStdString(), parsed)), code);
}

void tst_Sensors::rightsOfFriends_data() {
    QTest::addColumn<bool>("param");
    QTest::newRow("may read") << true;
    QTest::newRow("may not read") << false;
}

void tst_Sensors::rightsOfFriends() {
    QFETCH(bool, param);
    // 一号泵组 is shared with this account.
    TestSdk sdk(nullptr, 0, true);
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::string pump;
    const Json list = sdk.document("ipnclist");
    for (const Json& device : list.at("ipnclist")) {
        if (device.at("name") == "一号泵组")
            pump = device.at("ipncid").get<std::string>();
    }
    QCOMPARE(
        codeOf(sdk.askAccount(
            "setfrienddeviceshare",
            {{"friendphone", "13700137000"}, {"ipncid", pump}, {"share", true}, {"authority", {{"param", param}}}})),
        0);
    QVERIFY(sdk.signIn("13700137000"));
    sdk.client.clear();
    const Json board = {{"type", "SOFT"}, {"ifname", "SOFT-2"}, {"name", "x"}};
    QCOMPARE(codeOf(submit(sdk, board, pump)), 6);
    QCOMPARE(codeOf(sdk.askAccount("delsensor", {{"ipncid", pump}, {"pid", 101}})), 6);
    QCOMPARE(
        codeOf(sdk.askAccount("changesensorinput", {{"ipncid", pump}, {"pid", 1001}, {"input", {{"name", "x"}}}})),
        6);
    QCOMPARE(codeOf(set(sdk, {{"sensorwrite", {{"pid", 1005}, {"value", 1}}}}, pump)), 6);
    QCOMPARE(codeOf(sdk.askAccount("moduleinterface", {{"ipncid", pump}})), param ? 0 : 6);
    QCOMPARE(codeOf(set(sdk, {{"sensorread", {{"pid", 1001}}}}, pump)), param ? 0 : 6);
    // 1011 is of a device that is not shared.
    const Json answer = samples(sdk, {{"inputid", {1001, 1011}}}).at("resp").at("sensordataresp");
    QCOMPARE(answer.contains("1001"), param);
    QVERIFY(!answer.contains("1011"));
    QVERIFY(sdk.signIn());
    sdk.clock->advance(std::chrono::seconds(5));
    QVERIFY(!sdk.client.waitForType("sensordataupdate").is_null());
}

void tst_Sensors::secretsStaySecret() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Json board = {
        {"type", "ZIGBEE"},
        {"ifname", "ZIGBEE-1"},
        {"name", "节点"},
        {"params", {{"broker", "127.0.0.1:1"}, {"topic", "t"}, {"user", "u"}, {"password", "open sesame"}}}};
    const Json answer = submit(sdk, board);
    QCOMPARE(answer.at("resp").at("sensorinfo").at("params").at("password"), Json("********"));
    const auto stored = [&] {
        return sdk.sqlite("select extend from devices where ipncid = 'CAM0001'");
    };
    QVERIFY(stored().find("open sesame") == std::string::npos);
    QVERIFY(toText(sdk.document("ipnclist")).find("open sesame") == std::string::npos);
    QVERIFY(toText(sdk.document("ipnclist")).find("sealed:") == std::string::npos);
    const std::string before =
        Json::parse(stored()).at("sublist").at(0).at("params").at("password").get<std::string>();
    QVERIFY(before.rfind("sealed:", 0) == 0);
    // The mask leaves it as it is.
    QCOMPARE(codeOf(submit(sdk, answer.at("resp").at("sensorinfo"))), 0);
    QVERIFY(stored().find("********") == std::string::npos && stored().find("sealed:") != std::string::npos);
}

void tst_Sensors::computedInputs() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const auto soft = [](const std::string& expression) {
        return Json{{"type", "SOFT"},
                    {"ifname", "SOFT-1"},
                    {"name", "计算"},
                    {"input", {{{"name", "值"}, {"params", {{"expression", expression}}}}}}};
    };
    const Json good = submit(sdk, soft("i1001 + 1"));
    QCOMPARE(codeOf(good), 0);
    Json board = good.at("resp").at("sensorinfo");
    const std::string self = "i" + std::to_string(board.at("input").at(0).at("pid").get<int>());
    const Json other = submit(sdk, soft(self + " * 2")).at("resp").at("sensorinfo");
    QVERIFY(other.is_object());
    const auto refused = [&](const std::string& expression, const char* text) {
        board["input"][0]["params"]["expression"] = expression;
        const Json answer = submit(sdk, board);
        return codeOf(answer) == 2 && answer.at("resp").at("text").get<std::string>().find(text) != std::string::npos;
    };
    QVERIFY(refused(self, "循环"));
    QVERIFY(refused("i" + std::to_string(other.at("input").at(0).at("pid").get<int>()), "循环"));
    QVERIFY(refused("i999999", "不存在"));
    QVERIFY(refused("1 +", "错误"));
    // Another owner's inputs are none of ours.
    QVERIFY(sdk.signIn("13900139000"));
    QCOMPARE(codeOf(submit(sdk, soft("i1001"), "FRD0001")), 2);
}

void tst_Sensors::valuesArrive() {
    Machine machine;
    TestSdk& sdk = machine.sdk;
    QVERIFY(machine.board.is_object());
    // Whoever has entered a board can read it at once, while those of the start are still being opened.
    QCOMPARE(codeOf(set(sdk, {{"sensorread", {{"pid", machine.input()}}}})), 0);
    QVERIFY(machine.waitForValue(21.5));
    QCOMPARE(machine.told(machine.input()).at("state"), Json(1));
    QCOMPARE(machine.told(machine.input()).at("time"), Json("1700000000"));
    QCOMPARE(machine.told(machine.input()).at("ipncid"), Json(camera));
    Json port = portOf(sdk, camera, machine.input());
    QCOMPARE(port.at("value"), Json(21.5));
    QCOMPARE(port.at("time"), Json(1'700'000'000));
    sdk.clock->advance(std::chrono::seconds(1));
    machine.set(1, "x");
    QVERIFY(waitFor([&] { return machine.told(machine.input()).at("state") == 0; }));
    sdk.clock->advance(std::chrono::seconds(1));
    machine.set(1, "22");
    const Json read = set(sdk, {{"sensorread", {{"pid", machine.input()}}}}).at("resp").at("sensorread");
    QCOMPARE(read.at("raw"), Json(22.0));
    QCOMPARE(read.at("time"), Json("1700000002"));
    const Json written = set(sdk, {{"sensorwrite", {{"pid", machine.output()}, {"value", 1}}}});
    QCOMPARE(written.at("resp").at("sensorwrite"), (Json{{"pid", machine.output()}, {"value", 1.0}}));
    QCOMPARE(portOf(sdk, camera, machine.output()).at("value"), Json(1.0));
    QCOMPARE(codeOf(set(sdk, {{"sensorwrite", {{"pid", machine.input()}, {"value", 1}}}})), 30);
    QCOMPARE(codeOf(set(sdk, {{"sensorwrite", {{"pid", machine.output()}, {"value", "much"}}}})), 2);
    QCOMPARE(codeOf(set(sdk, {{"sensorread", {{"pid", 1001}}}})), 30);
    std::filesystem::remove(sdk.path("lines/2"));
    QCOMPARE(codeOf(set(sdk, {{"sensorwrite", {{"pid", machine.output()}, {"value", 1}}}})), 31);
    QCOMPARE(codeOf(set(sdk, {{"sensorread", {{"pid", 1}}}}, "CAM0061")), 30);
    sdk.askDevice({{"ipncid", camera}, {"setcmds", {{"ipcamrestartcmd", 1}}}});
    QCOMPARE(codeOf(set(sdk, {{"sensorread", {{"pid", machine.input()}}}})), 10);
}

void tst_Sensors::samplesAndExport() {
    Machine machine;
    TestSdk& sdk = machine.sdk;
    QVERIFY(machine.waitForValue(21.5));
    for (const char* value : {"1", "2", "3"}) {
        sdk.clock->advance(std::chrono::seconds(10));
        machine.set(1, value);
        QVERIFY(machine.waitForValue(std::stod(value)));
    }
    // The clock stands, so each value has one sample at most for each of its times.
    const int pid = machine.input();
    const Json newest = samples(sdk, {{"inputid", {pid}}, {"end", "latest"}, {"max", "1"}});
    QCOMPARE(newest.at("resp").at("sensordataresp").at(std::to_string(pid)),
             (Json{{"datas", {{{"time", "1700000030"}, {"value", 3.0}, {"state", 1}}}}, {"more", true}}));
    Received pieces;
    int id = 0;
    const Json request = {
        {"reqtype", "serverreq"},
        {"serverreq", {{"type", "sensordataexport"}, {"sensordataexport", {{"inputid", {pid, 1001}}}}}}};
    sdk.runtime.requestMessage(toText(request), id, [&](const std::string& text) { pieces.add(text); });
    QVERIFY(waitFor([&] { return !pieces.all().empty() && pieces.all().back().at("resp").at("state") == "ok"; }));
    const Json first = pieces.all().front().at("resp");
    QCOMPARE(first.at("sensordataresp").at(std::to_string(pid)).at("datas").size(), std::size_t{4});
    const Json last = pieces.all().back().at("resp");
    QCOMPARE(last.at("done"), last.at("total"));
    QVERIFY(last.at("done") > 4);
    // With the board go its samples.
    QCOMPARE(codeOf(sdk.askAccount("delsensor", {{"ipncid", camera}, {"pid", machine.board.at("pid")}})), 0);
    const std::string count = "attach '" + sdk.path("service/service.db.samples").string() +
                              "' as s; select count(*) from s.samples where pid = " + std::to_string(pid);
    QVERIFY(waitFor([&] { return sdk.sqlite(count) == "0"; }));
}

void tst_Sensors::exportEndsWithItsRequest() {
    Machine machine;
    TestSdk& sdk = machine.sdk;
    QVERIFY(machine.waitForValue(21.5));
    Json pids = Json::array();
    for (int i = 0; i < 1000; ++i)
        pids.push_back(machine.input());
    const Json request = {{"reqtype", "serverreq"},
                          {"serverreq", {{"type", "sensordataexport"}, {"sensordataexport", {{"inputid", pids}}}}}};
    std::atomic<int> count{0};
    int id = 0;
    sdk.runtime.requestMessage(toText(request), id, [&](const std::string&) {
        if (++count == 3)
            sdk.runtime.stopRequest(id);
    });
    QVERIFY(waitFor([&] { return count == 3; }));
    // Answered behind whatever the flow might still have said.
    QCOMPARE(codeOf(samples(sdk, {{"inputid", {machine.input()}}})), 0);
    sdk.settle();
    QCOMPARE(count.load(), 3);
}

void tst_Sensors::marks() {
    Machine machine;
    TestSdk& sdk = machine.sdk;
    const Json board = submit(sdk, {{"type", "QR"},
                                    {"ifname", "QR-1"},
                                    {"name", "靶标"},
                                    {"input", {{{"name", "X"}, {"params", {{"axis", "QRcode_x"}}}}}}})
                           .at("resp")
                           .at("sensorinfo");
    const int pid = board.at("input").at(0).at("pid").get<int>();
    const auto upload = [&](int port, const Json& data) {
        return codeOf(set(sdk, {{"uploadinputs", {{{"pid", port}, {"type", "QRcode_x"}, {"data", data}}}}}));
    };
    QVERIFY(waitFor([&] { return upload(pid, "12.5") == 0; })); // once the board is being looked after
    QVERIFY(waitFor([&] { return machine.told(pid).is_object(); }));
    QCOMPARE(machine.told(pid).at("value"), Json(12.5));
    QCOMPARE(upload(machine.input(), 1), 30);
    QCOMPARE(upload(pid, "far"), 2);
    QCOMPARE(codeOf(set(sdk, {{"uploadinputs", Json::array()}})), 2);
}

void tst_Sensors::secondProcess() {
    auto machine = std::make_unique<Machine>();
    TestSdk other(nullptr, 0, true);
    other.joinStoreOf(machine->sdk);
    QVERIFY(machine->waitForValue(21.5));
    QCOMPARE(other.start(), emSuccess);
    QVERIFY(other.signIn());
    const int input = machine->input();
    const int output = machine->output();
    const auto sees = [&](int pid, double value) {
        return waitFor([&] { return portOf(other, camera, pid).at("value") == value; });
    };
    QVERIFY(sees(input, 21.5));
    machine->sdk.clock->advance(std::chrono::seconds(1));
    machine->set(1, "30");
    QVERIFY(sees(input, 30));
    QVERIFY(!other.client.waitForType("sensordataupdate").is_null());
    // What the second one wants the first one does.
    QCOMPARE(codeOf(set(other, {{"sensorwrite", {{"pid", output}, {"value", 1}}}})), 0);
    QVERIFY(waitFor([&] { return portOf(machine->sdk, camera, output).at("value") == 1.0; }));
    QCOMPARE(set(other, {{"sensorread", {{"pid", input}}}}).at("resp").at("sensorread").at("value"), Json(30.0));
    const Json read = samples(other, {{"inputid", {input}}}).at("resp").at("sensordataresp");
    QCOMPARE(read.at(std::to_string(input)).at("datas").size(), std::size_t{2});
    // The folder stays when the first one goes; the second one reads it then.
    const std::string folder = machine->sdk.path("lines").string();
    QCOMPARE(machine->sdk.runtime.cleanup(), emSuccess);
    other.clock->advance(std::chrono::seconds(9));
    machine->set(1, "44");
    QVERIFY(sees(input, 44));
}

void tst_Sensors::configuredBoards() {
    TestSdk sdk;
    Json board = folderBoard(sdk);
    const auto configure = [&] {
        sdk.write("config/service.json", toText({{"sensors", {{{"ipncid", camera}, {"sensorinfo", board}}}}}));
    };
    configure();
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json first = sdk.device(camera).at("interfaces");
    QCOMPARE(first.size(), std::size_t{1});
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    board["input"].push_back({{"name", "第二个"}, {"params", {{"line", 3}}}});
    configure();
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json second = sdk.device(camera).at("interfaces");
    QCOMPARE(second.size(), std::size_t{1});
    QCOMPARE(second.at(0).at("input").size(), std::size_t{2});
    for (const char* key : {"input", "output"})
        QCOMPARE(second.at(0).at(key).at(0).at("pid"), first.at(0).at(key).at(0).at("pid"));
}

void tst_Sensors::configMistakes_data() {
    QTest::addColumn<QString>("config");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* config, const char* text) {
        QTest::newRow(name) << config << text;
    };
    row("days", R"({"samples":{"rawdays":0}})", "第 1 行 \"samples.rawdays\": 不是允许范围内的整数");
    row("days as text", R"({"samples":{"minutedays":"9"}})", "\"samples.minutedays\": 不是允许范围内的整数");
    row("samples", R"({"samples":[]})", "\"samples\": 值的类型不正确");
    row("unknown key", R"({"samples":{"days":1}})", "\"samples.days\": 未知的项");
    row("no list", R"({"sensors":{}})", "\"sensors\": 值的类型不正确");
    row("no board", R"({"sensors":[{"ipncid":"CAM0001"}]})", "\"sensors[0].sensorinfo\": 缺少该项");
    row("no such device", R"({"sensors":[{"ipncid":"CAM9999","sensorinfo":{}}]})",
        "\"sensors[0].ipncid\": 没有该编号的设备");
    row("wrong board", R"({"sensors":[{"ipncid":"CAM0001","sensorinfo":{"type":"USB"}}]})",
        "\"sensors[0].sensorinfo\": 传感器无法加入: 传感器类型未知");
}

void tst_Sensors::configMistakes() {
    QFETCH(QString, config);
    QFETCH(QString, text);
    TestSdk sdk;
    sdk.write("config/service.json", config.toStdString());
    QCOMPARE(sdk.start(), emSuccess);
    const Json notice = sdk.client.waitForType("servicenotice");
    QVERIFY2(QString::fromStdString(notice.value("text", "")).contains(text), notice.dump().c_str());
    QVERIFY(sdk.signIn());
}

QTEST_GUILESS_MAIN(tst_Sensors)
#include "tst_Sensors.moc"
