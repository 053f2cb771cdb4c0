#include "TestSdk.h"

#include <QtTest>

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Whatever a client sends: one answer or one log line, and the SDK goes on.
class tst_Messages final : public QObject {
    Q_OBJECT

private slots:
    void textsThatAreNoRequests_data();
    void textsThatAreNoRequests();
    void malformedRequests_data();
    void malformedRequests();
    void malformedCommands_data();
    void malformedCommands();
    void malformedQueries_data();
    void malformedQueries();
    void requestIds();
    void callsOutsideTheLife();
    void commandsWithoutCallback();
    void stoppedRequestIsNotAnswered();
};

namespace {

QByteArray nested(int depth, const char* open, const char* close) {
    return QByteArray(open).repeated(depth) + QByteArray(close).repeated(depth);
}

/// Texts that are no JSON objects, each as its own row.
void addNoObjects() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blank") << QByteArray("  \n");
    QTest::newRow("not JSON") << QByteArray("hello");
    QTest::newRow("cut off") << QByteArray(R"({"reqtype":"urlreq")");
    QTest::newRow("list") << QByteArray("[]");
    QTest::newRow("text") << QByteArray("\"urlreq\"");
    QTest::newRow("number") << QByteArray("1e999");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("NUL bytes") << QByteArray(100, '\0');
    QTest::newRow("not UTF-8") << QByteArray("{\"reqtype\":\"\xff\xfe\"}");
    QTest::newRow("half a surrogate pair") << QByteArray(R"({"reqtype":"\ud800"})");
    QTest::newRow("lists, 10000 deep") << QByteArray(R"({"reqtype":)") + nested(10000, "[", "]") + "}";
    QTest::newRow("objects, 10000 deep") << nested(10000, "{\"avreq\":", "}").replace(":}", ":1}");
    QTest::newRow("brackets, never closed") << QByteArray(100000, '[');
    QTest::newRow("50 MB text") << QByteArray(R"({"reqtype":"urlreq","x":")") + QByteArray(50 << 20, 'x') + "\"}";
}

} // namespace

void tst_Messages::textsThatAreNoRequests_data() {
    addNoObjects();
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("kind of a number") << QByteArray(R"({"reqtype":5})");
}

void tst_Messages::textsThatAreNoRequests() {
    QFETCH(QByteArray, text);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    int id = 77;
    std::atomic<int> called{0};
    sdk.runtime.requestMessage(text.toStdString(), id, [&](const std::string&) { ++called; });
    QCOMPARE(id, 0);
    sdk.settle();
    QCOMPARE(called.load(), 0);
}

void tst_Messages::malformedRequests_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const QByteArray& text, int code) {
        QTest::newRow(name) << text << code;
    };
    row("account, no body", R"({"reqtype":"urlreq"})", 2);
    row("account, body of a list", R"({"reqtype":"urlreq","urlreq":[]})", 2);
    row("account, operation of a number", R"({"reqtype":"urlreq","urlreq":{"clienttype":1}})", 2);
    row("account, parameters of a list", R"({"reqtype":"urlreq","urlreq":{"clienttype":"addgroup","params":[]}})", 2);
    row("account, parameters of null", R"({"reqtype":"urlreq","urlreq":{"clienttype":"addgroup","params":null}})", 2);
    row("device, no id", R"({"reqtype":"p2pmsg","getcmds":[]})", 2);
    row("device, id of a list", R"({"reqtype":"p2pmsg","ipncid":[],"getcmds":[]})", 2);
    row("device, nothing asked", R"({"reqtype":"p2pmsg","ipncid":"CAM0001"})", 2);
    row("device, names of an object", R"({"reqtype":"p2pmsg","ipncid":"CAM0001","getcmds":{}})", 2);
    row("device, names of numbers", R"({"reqtype":"p2pmsg","ipncid":"CAM0001","getcmds":[1]})", 2);
    row("device, a flood of names",
        R"({"reqtype":"p2pmsg","ipncid":"CAM0001","getcmds":["a")" + QByteArray(R"(,"a")").repeated(5000) + "]}", 2);
    row("server, no body", R"({"reqtype":"serverreq"})", 2);
    row("server, body of a text", R"({"reqtype":"serverreq","serverreq":"x"})", 2);
    row("server, no type", R"({"reqtype":"serverreq","serverreq":{}})", 2);
    row("server, unknown type", R"({"reqtype":"serverreq","serverreq":{"type":"x"}})", 1);
    row("sensors, no inputs", R"({"reqtype":"serverreq","serverreq":{"type":"sensordatareq"}})", 2);
    row("sensors, input of a text",
        R"({"reqtype":"serverreq","serverreq":{"type":"sensordatareq","sensordatareq":{"inputid":["x"]}}})", 2);
    row("unknown family", R"({"reqtype":"nosuchfamily"})", 1);
    row("family of control characters", R"({"reqtype":"\u0001\u0002"})", 1);
    row("preview, no id", R"({"reqtype":"preview"})", 6);
    row("preview, width of a text", R"({"reqtype":"preview","ipncid":"CAM0001","width":"x"})", 6);
    row("preview, huge width", R"({"reqtype":"preview","ipncid":"CAM0001","width":100000})", 6);
    row("video, a text", R"({"avreq":"x"})", 6);
    row("video, nothing", R"({"avreq":{}})", 6);
    row("video, id of a number", R"({"avreq":{"ipncid":1,"recvdecodeavdata":true}})", 6);
    row("video, nothing wanted", R"({"avreq":{"ipncid":"CAM0001"}})", 6);
    row("video, flag of a number", R"({"avreq":{"ipncid":"CAM0001","recvdecodeavdata":1}})", 6);
    row("video, hd of a text", R"({"avreq":{"ipncid":"CAM0001","recvdecodeavdata":true,"hd":"x"}})", 6);
    row("video, half a minute", R"({"avreq":{"ipncid":"CAM0001","recvdecodeavdata":true,"maxopentime":0.5}})", 6);
    row("video, time as text", R"({"avreq":{"ipncid":"CAM0001","recvdecodeavdata":true,"maxopentime":"3"}})", 6);
    row("video, null as time", R"({"avreq":{"ipncid":"CAM0001","recvdecodeavdata":true,"maxopentime":null}})", 6);
}

void tst_Messages::malformedRequests() {
    QFETCH(QByteArray, text);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json response = sdk.ask(Json::parse(text.toStdString()));
    QTEST(static_cast<int>(integerAt(response, "retcode").value_or(-1)), "code");
    QVERIFY(response.at("reqid").get<int>() > 0);
    QVERIFY(response.at("type").is_string());
}

void tst_Messages::malformedCommands_data() {
    addNoObjects();
    QTest::newRow("no type") << QByteArray("{}");
    QTest::newRow("type of a list") << QByteArray(R"({"type":[]})");
}

void tst_Messages::malformedCommands() {
    QFETCH(QByteArray, text);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    Received results;
    sdk.runtime.setConfig(text.toStdString(), [&](const std::string& result) { results.add(result); });
    QVERIFY(waitFor([&] { return !results.all().empty(); }));
    sdk.settle();
    QCOMPARE(results.all().size(), std::size_t{1});
    QCOMPARE(results.all().front().at("retcode"), Json(2));
    QCOMPARE(sdk.command({{"type", "setnet2"}}).at("retcode"), Json(1));
    QCOMPARE(sdk.command({{"type", "apconfig2"}}).at("errcode"), Json("(not supported)"));
    QVERIFY(sdk.command({{"type", "version"}}).at("version").is_string());
}

void tst_Messages::malformedQueries_data() {
    addNoObjects();
    QTest::newRow("no type") << QByteArray("{}");
    QTest::newRow("unknown document") << QByteArray(R"({"type":"secrets"})");
    QTest::newRow("a path") << QByteArray(R"({"type":"../../etc/passwd"})");
}

void tst_Messages::malformedQueries() {
    QFETCH(QByteArray, text);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    std::string out = "left from before";
    QCOMPARE(sdk.runtime.getConfig(text.toStdString(), out), emBadArgument);
    QVERIFY(out.empty());
}

void tst_Messages::requestIds() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    std::mutex mutex;
    std::vector<int> ids;
    std::atomic<int> answered{0};
    std::vector<std::thread> threads;
    threads.reserve(6);
    const std::string text = R"({"reqtype":"urlreq","urlreq":{"clienttype":"nothing"}})";
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < 100; ++n) {
                // The id is known before the first response comes.
                auto id = std::make_shared<int>(0);
                sdk.runtime.requestMessage(text, *id, [id, &answered](const std::string& response) {
                    if (Json::parse(response).at("reqid") == *id)
                        ++answered;
                });
                const std::lock_guard lock(mutex);
                ids.push_back(*id);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QVERIFY(waitFor([&] { return answered == 400; }));
    std::sort(ids.begin(), ids.end());
    QVERIFY(ids.front() > 0);
    QVERIFY(std::adjacent_find(ids.begin(), ids.end()) == ids.end());
    // A restart does not use them again.
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.askAccount("nothing").at("reqid").get<int>() > ids.back());
}

void tst_Messages::callsOutsideTheLife() {
    TestSdk sdk;
    const auto refusesAll = [&sdk] {
        int id = 5;
        std::string out = "x";
        sdk.runtime.requestMessage(R"({"reqtype":"urlreq"})", id, [](const std::string&) { QFAIL("called"); });
        sdk.runtime.setConfig(R"({"type":"try"})", [](const std::string&) { QFAIL("called"); });
        sdk.runtime.stopRequest(1);
        return id == 0 && sdk.runtime.getConfig(R"({"type":"phoneid"})", out) == emNotStarted && out.empty() &&
               sdk.runtime.setClientCallback([](const std::string&, std::string&) {}) == emNotStarted &&
               sdk.runtime.cleanup() == emNotStarted;
    };
    QVERIFY(refusesAll());
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.runtime.startup(), emAlreadyStarted);
    sdk.runtime.stopRequest(0);
    sdk.runtime.stopRequest(-1);
    sdk.runtime.stopRequest(123456);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    QVERIFY(refusesAll());
}

void tst_Messages::commandsWithoutCallback() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    sdk.runtime.setConfig(R"({"type":"freshlocal"})", nullptr);
    int id = 0;
    sdk.runtime.requestMessage(R"({"reqtype":"urlreq","urlreq":{"clienttype":"getfriends"}})", id, nullptr);
    QVERIFY(id > 0);
    QVERIFY(!sdk.client.waitForType("freshlocal").is_null());
    sdk.runtime.setClientCallback(nullptr);
    sdk.settle();
}

void tst_Messages::stoppedRequestIsNotAnswered() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    // While this callback holds the worker, what is sent waits; stopped, it is neither done nor answered.
    std::atomic<bool> go{false};
    sdk.runtime.setConfig(R"({"type":"try"})", [&](const std::string&) { waitFor([&] { return go.load(); }); });
    std::atomic<int> called{0};
    int id = 0;
    sdk.runtime.requestMessage(R"({"reqtype":"urlreq","urlreq":{"clienttype":"checkphone"}})", id,
                               [&](const std::string&) { ++called; });
    sdk.runtime.stopRequest(id);
    go = true;
    sdk.settle();
    QCOMPARE(called.load(), 0);
}

QTEST_APPLESS_MAIN(tst_Messages)
#include "tst_Messages.moc"
