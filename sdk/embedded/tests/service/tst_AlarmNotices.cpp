#include "AlarmWorld.h"

#include <QProcess>
#include <QTcpServer>
#include <QtTest>

#include <algorithm>

using namespace ipncsdk;
using namespace ipncsdk::test;
using std::chrono::seconds;

/// Whom an alarm tells by text message and app, and what that costs. The process that reads the sensors is played by
/// the test.
class tst_AlarmNotices final : public QObject {
    Q_OBJECT

private slots:
    void rules_data();
    void rules();
    void messagesAreCountedAndLimited();
    void lostFriendIsNotTold();
    void appNoticesReachTheBroker();
};

void tst_AlarmNotices::rules_data() {
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

void tst_AlarmNotices::rules() {
    QFETCH(QByteArray, rule);
    QFETCH(bool, reported);
    QFETCH(QByteArray, messages);
    AlarmWorld world;
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

void tst_AlarmNotices::messagesAreCountedAndLimited() {
    AlarmWorld world;
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

void tst_AlarmNotices::lostFriendIsNotTold() {
    AlarmWorld world;
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

void tst_AlarmNotices::appNoticesReachTheBroker() {
#ifdef Q_OS_WIN
    QSKIP("the broker is a program of Debian");
#endif
    QTcpServer probe;
    QVERIFY(probe.listen(QHostAddress::LocalHost));
    const QString port = QString::number(probe.serverPort());
    probe.close();
    AlarmWorld world;
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

QTEST_APPLESS_MAIN(tst_AlarmNotices)
#include "tst_AlarmNotices.moc"
