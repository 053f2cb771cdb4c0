#include "TestSdk.h"
#include "device/ParameterTable.h"

#include <QtTest>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Device parameters: read, written, refused, kept, reset.
class tst_DeviceParameters final : public QObject {
    Q_OBJECT

private slots:
    void everyParameterReadsAsItsDefaultAndIsAccepted();
    void writtenValuesAreThereAfterARestart();
    void writes_data();
    void writes();
    void refusedWriteChangesNothing();
    void secretsAreNotReadBack();
    void factoryReset();
    void formattingTheCard();
    void rights_data();
    void rights();
    void stateOfADevice();
    void sensorDataIsHonestlyEmpty();
};

namespace {

Json get(TestSdk& sdk, const std::string& ipncid, const Json& names) {
    return sdk.askDevice({{"ipncid", ipncid}, {"getcmds", names}});
}

Json set(TestSdk& sdk, const std::string& ipncid, const Json& values) {
    return sdk.askDevice({{"ipncid", ipncid}, {"setcmds", values}});
}

Json value(TestSdk& sdk, const std::string& name) {
    return get(sdk, "CAM0001", Json::array({name})).at("resp").at("getcmds").at(name);
}

} // namespace

void tst_DeviceParameters::everyParameterReadsAsItsDefaultAndIsAccepted() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    for (const device::Parameter& parameter : device::parameterTable()) {
        const Json read = value(sdk, parameter.name);
        if (parameter.kind == device::Parameter::Kind::Command) {
            QVERIFY(read.is_null());
            continue;
        }
        QVERIFY2(device::acceptedValue(parameter, read).has_value(), parameter.name);
        const Json written = set(sdk, "CAM0001", {{parameter.name, read}});
        QCOMPARE(written.at("retcode"), Json(parameter.writable ? 0 : 2));
    }
    QVERIFY(value(sdk, "nosuchname").is_null());
    // A device's versions are its own.
    QCOMPARE(value(sdk, "softwareversion"), sdk.device("CAM0001").at("info").at("softwareversion"));
}

void tst_DeviceParameters::writtenValuesAreThereAfterARestart() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json response = set(sdk, "CAM0001", {{"detailinfo1", "东门'\"\\"}, {"ftpport", 2121}, {"ftpenable", true}});
    QCOMPARE(response.at("retcode"), Json(0));
    QCOMPARE(response.at("type"), Json("p2pmsg"));
    QCOMPARE(response.at("ipncid"), Json("CAM0001"));
    sdk.runtime.cleanup();
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(value(sdk, "detailinfo1"), Json("东门'\"\\"));
    QCOMPARE(value(sdk, "ftpport"), Json(2121));
    QCOMPARE(value(sdk, "ftpenable"), Json(1));
    // Each device has its own.
    QCOMPARE(get(sdk, "CAM0002", {"ftpport"}).at("resp").at("getcmds").at("ftpport"), Json(21));
}

void tst_DeviceParameters::writes_data() {
    QTest::addColumn<QByteArray>("setcmds");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const char* setcmds, int code) {
        QTest::newRow(name) << QByteArray(setcmds) << code;
    };
    row("flag as a number", R"({"mirror":1})", 0);
    row("flag out of range", R"({"mirror":2})", 2);
    row("flag as a text", R"({"mirror":"1"})", 2);
    row("number as a text", R"({"bitrate1":"2048"})", 2);
    row("number with a fraction", R"({"bitrate1":2048.5})", 2);
    row("number out of range", R"({"ftpport":70000})", 2);
    row("text as a number", R"({"ftpip":5})", 2);
    row("text too long", R"({"ftpusr":"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"})", 2);
    row("text with a line feed", R"({"ftpip":"a\nb"})", 2);
    row("value of null", R"({"mirror":null})", 2);
    row("read only", R"({"sdused":0})", 2);
    row("unknown", R"({"nosuchname":0})", 1);
    row("file list of the card as a number", R"({"sdlist":1})", 2);
    row("command with a value", R"({"ipcamrestartcmd":1})", 0);
    row("command in a list", R"(["ipcamrestartcmd"])", 0);
    row("command with an object", R"({"ipcamrestartcmd":{}})", 2);
    row("list of objects", R"([{"mirror":1},{"flip":1}])", 0);
    row("list of numbers", R"([1])", 2);
    row("a parameter's bare name", R"(["mirror"])", 2);
    row("a text", R"("mirror")", 2);
    row("nothing", R"({})", 0);
}

void tst_DeviceParameters::writes() {
    QFETCH(QByteArray, setcmds);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json response = set(sdk, "CAM0001", Json::parse(setcmds.toStdString()));
    QTEST(static_cast<int>(integerAt(response, "retcode").value_or(-1)), "code");
}

void tst_DeviceParameters::refusedWriteChangesNothing() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(set(sdk, "CAM0001", {{"mirror", 1}, {"zzz", 1}}).at("retcode"), Json(1));
    QCOMPARE(set(sdk, "CAM0001", {{"bitrate1", 1024}, {"mirror", "x"}}).at("retcode"), Json(2));
    QCOMPARE(value(sdk, "mirror"), Json(0));
    QCOMPARE(value(sdk, "bitrate1"), Json(2048));
}

void tst_DeviceParameters::secretsAreNotReadBack() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(value(sdk, "ftppwd"), Json(""));
    QCOMPARE(set(sdk, "CAM0001", {{"ftppwd", "geheim"}}).at("retcode"), Json(0));
    const Json read = value(sdk, "ftppwd");
    QCOMPARE(read, Json(device::secretMask));
    // What was read is written back by a dialog that changed something else.
    QCOMPARE(set(sdk, "CAM0001", {{"ftppwd", read}, {"ftpusr", "u"}}).at("retcode"), Json(0));
    QCOMPARE(sdk.sqlite("select value from parameters where name = 'ftppwd'"), std::string("\"geheim\""));
    QCOMPARE(set(sdk, "CAM0001", {{"ftppwd", ""}}).at("retcode"), Json(0));
    QCOMPARE(value(sdk, "ftppwd"), Json(""));
}

void tst_DeviceParameters::factoryReset() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(set(sdk, "CAM0001", {{"mirror", 1}, {"bitrate1", 1024}, {"sdformat", 1}}).at("retcode"), Json(0));
    QCOMPARE(set(sdk, "CAM0002", {{"mirror", 1}}).at("retcode"), Json(0));
    QCOMPARE(set(sdk, "CAM0001", {{"paradefaultcmd", 1}, {"flip", 1}}).at("retcode"), Json(0));
    // It restarts with what it has been given.
    QCOMPARE(get(sdk, "CAM0001", {"mirror"}).at("retcode"), Json(10));
    sdk.clock->advance(std::chrono::seconds(4));
    QVERIFY(waitFor([&] { return get(sdk, "CAM0001", {"mirror"}).at("retcode") == 0; }));
    QCOMPARE(value(sdk, "mirror"), Json(0));
    QCOMPARE(value(sdk, "bitrate1"), Json(2048));
    QCOMPARE(value(sdk, "flip"), Json(1));   // written along with the reset
    QCOMPARE(value(sdk, "sdused"), Json(0)); // the card is not filled again
    QCOMPARE(get(sdk, "CAM0002", {"mirror"}).at("resp").at("getcmds").at("mirror"), Json(1));
}

void tst_DeviceParameters::formattingTheCard() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const auto size = value(sdk, "sdused").get<int>() + value(sdk, "sdleft").get<int>();
    QCOMPARE(set(sdk, "CAM0001", {{"sdformat", 1}}).at("retcode"), Json(0));
    QCOMPARE(value(sdk, "sdused"), Json(0));
    QCOMPARE(value(sdk, "sdleft"), Json(size));
}

void tst_DeviceParameters::rights_data() {
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<int>("reading");
    QTest::addColumn<int>("writing");
    QTest::newRow("own") << QByteArray("CAM0001") << 0 << 0;
    QTest::newRow("own, offline") << QByteArray("CAM0061") << 10 << 10;
    QTest::newRow("shared, with parameters") << QByteArray("FRD0001") << 0 << 6;
    QTest::newRow("shared, without") << QByteArray("FRD0003") << 6 << 6;
    QTest::newRow("a friend's, not shared") << QByteArray("FRD0005") << 7 << 7;
    QTest::newRow("unknown") << QByteArray("none") << 7 << 7;
    QTest::newRow("empty") << QByteArray("") << 7 << 7;
}

void tst_DeviceParameters::rights() {
    QFETCH(QByteArray, device);
    QFETCH(int, reading);
    QFETCH(int, writing);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    const std::string id = device.toStdString();
    QCOMPARE(get(sdk, id, {"mirror"}).at("retcode"), Json(3));
    QVERIFY(sdk.signIn());
    QCOMPARE(get(sdk, id, {"mirror"}).at("retcode"), Json(reading));
    QCOMPARE(set(sdk, id, {{"mirror", 1}}).at("retcode"), Json(writing));
}

void tst_DeviceParameters::stateOfADevice() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const auto state = [&](const Json& inner) {
        return sdk.ask({{"reqtype", "serverreq"}, {"serverreq", inner}});
    };
    QCOMPARE(state({{"type", "ipncstate"}, {"ipncid", "CAM0001"}}).at("resp").at("online"), Json(true));
    QCOMPARE(state({{"type", "ipncstate"}, {"ipncstate", {{"ipncid", "CAM0061"}}}}).at("resp").at("online"),
             Json(false));
    const Json outer =
        sdk.ask({{"reqtype", "serverreq"}, {"ipncid", "CAM0001"}, {"serverreq", {{"type", "ipncstate"}}}});
    QCOMPARE(outer.at("resp").at("ipncid"), Json("CAM0001"));
    QCOMPARE(state({{"type", "ipncstate"}, {"ipncid", "FRD0005"}}).at("retcode"), Json(7));
    QCOMPARE(state({{"type", "ipncstate"}}).at("retcode"), Json(2));
    QCOMPARE(state({{"type", "sensordataexport"}}).at("retcode"), Json(2));
}

void tst_DeviceParameters::sensorDataIsHonestlyEmpty() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json request = {{"inputid", {1001, 1002}}, {"mode", "all"}, {"begin", "oldest"}, {"max", "1"}};
    const Json response =
        sdk.ask({{"reqtype", "serverreq"}, {"serverreq", {{"type", "sensordatareq"}, {"sensordatareq", request}}}});
    QCOMPARE(response.at("resp").at("sensordataresp"), (Json{{"1001", {{"datas", Json::array()}, {"more", false}}},
                                                             {"1002", {{"datas", Json::array()}, {"more", false}}}}));
}

QTEST_APPLESS_MAIN(tst_DeviceParameters)
#include "tst_DeviceParameters.moc"
