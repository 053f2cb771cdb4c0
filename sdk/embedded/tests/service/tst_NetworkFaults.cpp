#include "RealHub.h"
#include "TestSdk.h"
#include "Viewer.h"
#include "sensor/Slave.h"
#include "support/CuttingProxy.h"
#include "support/OnvifDevice.h"
#include "support/RtspServer.h"

#include <QtTest>

using namespace ipncsdk;
using namespace ipncsdk::test;
using Manner = CuttingProxy::Manner;

namespace {

constexpr auto password = "p<\u00e4>&ss";
constexpr auto camera = "YARD";
/// How long the client waits for a reply before it tells the operator that none comes, ms.
constexpr qint64 clientsPatience = 15000;

Json asked(const Json& content) {
    Json request = {{"reqtype", "p2pmsg"}, {"ipncid", camera}};
    request.update(content);
    return request;
}

} // namespace

/// What clients hear of their requests while the network between the service and a device goes away.
class tst_NetworkFaults final : public QObject {
    Q_OBJECT

private slots:
    void requests_data();
    void requests();
    void watching_data();
    void watching();
    void historyKeepsWhatWasRead();

private:
    /// A camera and a board behind networks of their own, added to the first account.
    struct Site {
        Site();
        [[nodiscard]] int port(const char* kind) const { return board.at(kind).at(0).at("pid").get<int>(); }
        /// Entries of the input's history, oldest first, as value and state.
        [[nodiscard]] Json history();
        /// Whether the client was told last that the input is in this state.
        [[nodiscard]] bool isTold(int state) const;

        RtspServer streamServer;
        bool serves = streamServer.start();
        CuttingProxy streams{streamServer.port()};
        OnvifDevice device{{}, {"--rtsp", QString::number(streams.port())}};
        CuttingProxy control{device.port()};
        Slave slave{{"tcp"}};
        CuttingProxy sensors{slave.port};
        TestSdk sdk{realHub(std::chrono::seconds(5)), 0, true};
        Json board;
    };
};

tst_NetworkFaults::Site::Site() {
    const std::string url = "rtsp://127.0.0.1:" + std::to_string(streams.port()) + "/own";
    const std::string service = "http://127.0.0.1:" + std::to_string(control.port()) + "/onvif/device_service";
    if (!serves || sdk.start() != emSuccess || !sdk.signIn())
        return;
    const Json added = sdk.askAccount("addipnc", {{"name", "Yard"},
                                                  {"ipncid", camera},
                                                  {"main", url},
                                                  {"onvif", service},
                                                  {"user", "admin"},
                                                  {"password", password}});
    const Json submitted = sdk.askAccount(
        "submitsensorinfo",
        {{"ipncid", camera},
         {"sensorinfo",
          {{"type", "RS485"},
           {"ifname", "RS485-1"},
           {"name", "泵"},
           {"params",
            {{"mode", "tcp"}, {"host", "127.0.0.1"}, {"port", sensors.port()}, {"slave", 7}, {"timeout", 1000}}},
           {"input", {{{"name", "压力"}, {"params", {{"function", 3}, {"address", 0}, {"format", "u16"}}}}}},
           {"output", {{{"name", "阀"}, {"params", {{"function", 6}, {"address", 41}, {"format", "u16"}}}}}}}}});
    if (codeOf(added) == 0 && codeOf(submitted) == 0)
        board = submitted.at("resp").at("sensorinfo");
    else
        qWarning().noquote() << QString::fromStdString(toText(added) + toText(submitted));
}

Json tst_NetworkFaults::Site::history() {
    const std::string pid = std::to_string(port("input"));
    const Json answer =
        sdk.ask({{"reqtype", "serverreq"},
                 {"serverreq",
                  {{"type", "sensordatareq"},
                   {"sensordatareq", {{"inputid", {port("input")}}, {"end", "latest"}, {"max", "100"}}}}}});
    Json entries = Json::array();
    for (const Json& entry : answer.at("resp").at("sensordataresp").at(pid).at("datas"))
        entries.push_back({entry.at("value"), entry.at("state")});
    return entries;
}

bool tst_NetworkFaults::Site::isTold(int state) const {
    Json last;
    for (const Json& message : sdk.client.ofType("sensordataupdate")) {
        for (const Json& entry : message.at("sensordataupdate")) {
            if (entry.at("pid") == port("input"))
                last = entry;
        }
    }
    return last.is_object() && last.at("state") == state && last.at("value") == 4660.0;
}

void tst_NetworkFaults::requests_data() {
    QTest::addColumn<QString>("network");
    QTest::addColumn<QString>("content");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("reply"); ///< without the network, where it says more than the code
    const auto row = [](const char* name, const char* network, const char* content, int code,
                        const char* reply = "") {
        QTest::newRow(name) << network << content << code << reply;
    };
    row("moving", "control", R"({"setcmds":{"ptzmove":{"pan":1,"tilt":0,"zoom":0,"speed":5}}})", 10);
    row("where it looks", "control", R"({"getcmds":["ptzstate"]})", 10);
    row("presets", "control", R"({"getcmds":["ptzpresets"]})", 10);
    row("a preset", "control", R"({"setcmds":{"ptzpresetset":{"index":3,"name":"Door"}}})", 10);
    row("another picture", "control", R"({"setcmds":{"brightness":51}})", 10);
    row("its picture", "control", R"({"getcmds":["brightness"]})", 0, R"({"brightness":null})");
    row("asking a camera", "control", R"({"reqtype":"onvifprobe","user":"admin","password":"p<ä>&ss"})", 10);
    row("a preview", "streams", R"({"reqtype":"preview","width":160})", 11);
    row("reading", "sensors", R"({"setcmds":{"sensorread":{"pid":"input"}}})", 0);
    row("switching", "sensors", R"({"setcmds":{"sensorwrite":{"pid":"output","value":5}}})", 31);
}

void tst_NetworkFaults::requests() {
    QFETCH(QString, network);
    QFETCH(QString, content);
    QFETCH(int, code);
    QFETCH(QString, reply);
    Site site;
    QVERIFY(site.board.is_object());
    content.replace("\"input\"", QString::number(site.port("input")));
    content.replace("\"output\"", QString::number(site.port("output")));
    Json request = asked(Json::parse(content.toStdString()));
    if (network == "control" && request.at("reqtype") == "onvifprobe")
        request["url"] = "127.0.0.1:" + std::to_string(site.control.port());
    CuttingProxy& way = network == "control" ? site.control : network == "streams" ? site.streams : site.sensors;
    const auto isWell = [&](const Json& answer) {
        if (codeOf(answer) != 0 || answer.value(Json::json_pointer("/resp/sensorread/state"), 1) != 1)
            return false;
        return reply.isEmpty() || answer.at("resp").at("getcmds") != Json::parse(reply.toStdString());
    };
    const auto works = [&] {
        return isWell(site.sdk.ask(request));
    };
    QVERIFY(waitFor(works));
    for (const auto& [manner, part] :
         {std::pair{Manner::Closed, 0.0}, {Manner::Closed, 0.5}, {Manner::Silent, 0.0}, {Manner::Silent, 0.5}}) {
        way.bringBack();
        QVERIFY(works());
        // A board that is polled has other conversations, too; pictures follow what a camera answers.
        const qint64 length = network == "sensors" ? 12 : network == "streams" ? 600 : way.carried();
        way.takeAway(manner, static_cast<qint64>(part * static_cast<double>(length)));
        QElapsedTimer time;
        time.start();
        Json answer = site.sdk.ask(request);
        QVERIFY(time.elapsed() < clientsPatience);
        if (network == "sensors" && isWell(answer)) // it was asked before the network was away
            answer = site.sdk.ask(request);
        QVERIFY(way.isAway());
        // A silent camera is one that is not heard in time; one that breaks off seems to have no such stream.
        QCOMPARE(codeOf(answer), network == "streams" && manner == Manner::Silent ? 14 : code);
        QVERIFY(!isWell(answer));
        if (!reply.isEmpty())
            QCOMPARE(answer.at("resp").at("getcmds"), Json::parse(reply.toStdString()));
        way.bringBack();
        QVERIFY(waitFor(works));
    }
}

void tst_NetworkFaults::watching_data() {
    QTest::addColumn<Manner>("manner");
    QTest::newRow("closed") << Manner::Closed;
    QTest::newRow("silent") << Manner::Silent;
}

void tst_NetworkFaults::watching() {
    QFETCH(Manner, manner);
    Site site;
    QVERIFY(site.board.is_object());
    {
        Viewer viewer(site.sdk);
        viewer.open(camera);
        QVERIFY(viewer.waitForFrames(5));
        site.streams.takeAway(manner, 500);
        // The tile says that a connection is being made, and shows pictures again by itself.
        QVERIFY(waitFor([&] { return viewer.course().back() == "avstate"; }));
        site.streams.bringBack();
        QVERIFY(viewer.waitForFrames(5));
        QCOMPARE(viewer.fault(), std::string());
    }
    site.streams.takeAway(manner, 100);
    Viewer second(site.sdk);
    second.open(camera);
    QElapsedTimer time;
    time.start();
    QVERIFY(waitFor([&] { return !second.course().empty() && second.course().back().rfind("avclose", 0) == 0; }));
    QCOMPARE(QString::fromStdString(second.course().back()), manner == Manner::Silent ? "avclose 14" : "avclose 11");
    site.streams.bringBack();
    Viewer third(site.sdk);
    third.open(camera);
    QVERIFY(third.waitForFrames(5));
}

void tst_NetworkFaults::historyKeepsWhatWasRead() {
    Site site;
    QVERIFY(site.board.is_object());
    for (const Manner manner : {Manner::Closed, Manner::Silent}) {
        QVERIFY(waitFor([&] { return site.isTold(1); }));
        const std::size_t before = site.history().size();
        QVERIFY(before > 0);
        site.sdk.clock->advance(std::chrono::seconds(10));
        site.sensors.takeAway(manner, 9); // in the middle of a number
        QVERIFY(waitFor([&] { return site.isTold(0); }));
        site.sdk.clock->advance(std::chrono::seconds(10));
        site.sensors.bringBack();
        QVERIFY(waitFor([&] {
            const Json last = site.history();
            return last.size() > before && last.back() == Json{4660.0, 1};
        }));
        const Json entries = site.history();
        // Whole numbers alone are in it, and the gap is to be seen.
        int gaps = 0;
        for (const Json& entry : entries) {
            QCOMPARE(entry.at(0), Json(4660.0));
            gaps += entry.at(1) == 0 ? 1 : 0;
        }
        QVERIFY(gaps >= (manner == Manner::Closed ? 1 : 2));
    }
}

QTEST_GUILESS_MAIN(tst_NetworkFaults)
#include "tst_NetworkFaults.moc"
