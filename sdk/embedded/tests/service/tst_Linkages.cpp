#include "TestSdk.h"
#include "service/LinkageRecords.h"

#include <QtTest>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// What clients ask about linkage plans, notification rules and text messages.
class tst_Linkages final : public QObject {
    Q_OBJECT

private slots:
    void firstWorldHasPlans();
    void plansAreKeptAsTheyCame();
    void refusals_data();
    void refusals();
    void deletedDeviceTakesItsPlans();
    void rulesAreKeptAsTheyCame();
    void recordsComeInPages();
};

namespace {

constexpr auto pumps = "CAM0052";
constexpr auto colleague = "13700137000";

Json plan() {
    return Json::parse(
        R"({"ipncid":"CAM0052","name":"a","logic":"and","duration":"30s","threshold":2,"strange":[1,{}],
      "input":[{"ifpid":101,"input":1001,"name":"x"}],"output":[{"ifpid":102,"output":1006}]})");
}

Json plansIn(TestSdk& sdk, const char* ipncid) {
    return sdk.askAccount("getlinkplan", {{"ipncid", ipncid}}).at("resp").at("linkplans");
}

} // namespace

void tst_Linkages::firstWorldHasPlans() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::size_t plans = 0;
    const Json list = sdk.document("ipnclist").at("ipnclist");
    for (const Json& device : list) {
        for (Json each : device.at("linkages")) {
            ++plans;
            // Each is one that the service itself takes.
            QCOMPARE(codeOf(sdk.askAccount("submitlinkplan", {{"linkplan", each}})), 0);
        }
    }
    QCOMPARE(plans, std::size_t{6});
    for (const Json& rule : sdk.askAccount("getreportrules").at("resp").at("reportrules"))
        QCOMPARE(codeOf(sdk.askAccount("submitreportrules", {{"reportrules", rule}})), 0);
    const Json names = sdk.askAccount("getsysnames").at("resp");
    QCOMPARE(names.at("names").at("linkplanlogic").at(1).at("name"), Json("或"));
    QCOMPARE(names.at("ReportType").at("names").size(), std::size_t{3});
    QCOMPARE(names.at("ReportMode").at("names").at(0).at("code"), Json("sms"));
}

void tst_Linkages::plansAreKeptAsTheyCame() {
    TestSdk sdk;
    TestSdk friendly;
    QCOMPARE(sdk.start(), emSuccess);
    friendly.joinStoreOf(sdk);
    QCOMPARE(friendly.start(), emSuccess);
    QVERIFY(sdk.signIn() && friendly.signIn(colleague));
    friendly.settle();
    friendly.client.clear();
    Json expected = plan();
    const Json reply = sdk.askAccount("submitlinkplan", {{"linkplan", expected}});
    QCOMPARE(codeOf(reply), 0);
    expected["linkplanid"] = reply.at("resp").at("linkplanid");
    QCOMPARE(plansIn(sdk, pumps).back(), expected);
    QVERIFY(!friendly.client.waitForType("freshlist").is_null());
    QCOMPARE(friendly.device(pumps).at("linkages").back(), expected);
    expected["disable"] = true;
    QCOMPARE(codeOf(sdk.askAccount("submitlinkplan", {{"linkplan", expected}})), 0);
    QCOMPARE(sdk.device(pumps).at("linkages").back(), expected);
    QCOMPARE(sdk.device(pumps).at("linkages").size(), std::size_t{2});
    QCOMPARE(codeOf(sdk.askAccount("dellinkplan", {{"ipncid", pumps}, {"linkplanid", expected["linkplanid"]}})), 0);
    QCOMPARE(plansIn(sdk, pumps).size(), std::size_t{1});
    // An id is never given again.
    QVERIFY(sdk.askAccount("submitlinkplan", {{"linkplan", plan()}}).at("resp").at("linkplanid") >
            expected["linkplanid"]);
    // Without the right to read parameters there are no plans to be seen.
    const Json share = {
        {"friendphone", colleague}, {"ipncid", pumps}, {"share", true}, {"authority", {{"param", false}}}};
    QCOMPARE(codeOf(sdk.askAccount("setfrienddeviceshare", share)), 0);
    QVERIFY(friendly.device(pumps).at("linkages").empty());
    QCOMPARE(codeOf(friendly.askAccount("getlinkplan", {{"ipncid", pumps}})), 6);
}

void tst_Linkages::refusals_data() {
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<int>("byOwner");
    QTest::addColumn<int>("byColleague"); // who has the device, without "admin"
    QTest::addColumn<bool>("says");
    const auto row = [](const char* name, const char* operation, const QByteArray& params, int owner, int other,
                        bool says) {
        QTest::newRow(name) << QByteArray(operation) << params << owner << other << says;
    };
    const auto with = [](const char* key, Json value) {
        Json changed = plan();
        changed[key] = std::move(value);
        return QByteArray::fromStdString(toText({{"linkplan", changed}}));
    };
    row("no plan", "submitlinkplan", "{}", 2, 2, false);
    row("a plan of no device", "submitlinkplan", R"({"linkplan":{}})", 2, 2, false);
    row("a bad plan", "submitlinkplan", with("name", ""), 2, 2, true);
    row("another device", "submitlinkplan", with("ipncid", "CAM9999"), 7, 7, false);
    row("only the owner", "submitlinkplan", with("name", "b"), 0, 6, false);
    row("an input of another device", "submitlinkplan", with("input", {{{"input", 1011}}}), 30, 6, true);
    row("another plan's id", "submitlinkplan", with("linkplanid", 1), 30, 6, true);
    row("no such plan", "dellinkplan", R"({"ipncid":"CAM0052","linkplanid":99})", 30, 6, true);
    row("a plan of another device", "dellinkplan", R"({"ipncid":"CAM0052","linkplanid":1})", 30, 6, true);
    row("plans of no device", "getlinkplan", R"({"ipncid":"CAM0001"})", 0, 7, false);
    const auto rule = [](const char* part) {
        return QByteArray(R"({"reportrules":{"name":"a","selfuse":true,"reporttype":["other"],"reportmode":["app"],)"
                          R"("applevel":["1"],)") +
               part + "}}";
    };
    row("a rule", "submitreportrules", rule(R"("ipncids":["CAM0052"])"), 0, 0, false);
    row("a rule on another's device", "submitreportrules", rule(R"("ipncids":["CAM0001"])"), 0, 7, true);
    row("a rule on nothing", "submitreportrules", rule(R"("ipncids":[])"), 2, 2, true);
    row("a rule of another", "submitreportrules", rule(R"("id":77,"ipncids":["CAM0052"])"), 30, 30, true);
    row("a strange level", "submitreportrules", rule(R"("ipncids":["CAM0052"],"smslevel":["4"])"), 2, 2, true);
    row("no rule", "delreportrules", R"({"reportrulesid":77})", 30, 30, true);
    row("another's rule", "delreportrules", R"({"reportrulesid":1})", 0, 30, false);
    row("records of no direction", "getsmsrecords", R"({"cmd":"up"})", 2, 2, false);
    row("a bad number", "setphoneparam", R"({"smsphone":"x"})", 2, 2, false);
    row("a bad limit", "setphoneparam", R"({"smswarn":-1})", 2, 2, false);
    row("nothing", "setphoneparam", "{}", 2, 2, false);
}

void tst_Linkages::refusals() {
    QFETCH(QByteArray, operation);
    QFETCH(QByteArray, params);
    QFETCH(int, byOwner);
    QFETCH(int, byColleague);
    QFETCH(bool, says);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    const Json request = Json::parse(params.toStdString());
    QCOMPARE(codeOf(sdk.askAccount(operation.toStdString(), request)), 3);
    QVERIFY(sdk.signIn(colleague));
    QCOMPARE(codeOf(sdk.askAccount(operation.toStdString(), request)), byColleague);
    QVERIFY(sdk.signIn());
    const Json reply = sdk.askAccount(operation.toStdString(), request);
    QCOMPARE(codeOf(reply), byOwner);
    if (byOwner != 0)
        QCOMPARE(reply.at("resp").contains("text"), says);
}

void tst_Linkages::deletedDeviceTakesItsPlans() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QVERIFY(!plansIn(sdk, pumps).empty());
    QCOMPARE(codeOf(sdk.askAccount("delipnc", {{"ipncid", pumps}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("addipnc", {{"ipncid", pumps}, {"word", "word-cam0052"}})), 0);
    QVERIFY(plansIn(sdk, pumps).empty());
    QCOMPARE(sdk.sqlite("select count(*) from linkplans"), std::string("5"));
}

void tst_Linkages::rulesAreKeptAsTheyCame() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Json rule = {{"name", "a"},
                 {"selfuse", false},
                 {"recvphones", {colleague}},
                 {"ipncids", {pumps}},
                 {"reporttype", {"threshold"}},
                 {"reportmode", {"sms"}},
                 {"smslevel", {"1"}},
                 {"applevel", Json::array()},
                 {"smstemplate", "一行\n二行"},
                 {"strange", 5}};
    const Json reply = sdk.askAccount("submitreportrules", {{"reportrules", rule}});
    QCOMPARE(codeOf(reply), 0);
    rule["id"] = reply.at("resp").at("id");
    Json read = sdk.askAccount("getreportrules").at("resp");
    QCOMPARE(read.at("reportrules").back(), rule);
    QCOMPARE(read.at("friendlist").size(), std::size_t{3});
    QCOMPARE(read.at("friendlist").at(0).at("name"), Json("夜班值班"));
    QCOMPARE(codeOf(sdk.askAccount("delreportrules", {{"reportrulesid", rule["id"]}})), 0);
    read = sdk.askAccount("getreportrules").at("resp");
    QCOMPARE(read.at("reportrules").size(), std::size_t{1});
}

void tst_Linkages::recordsComeInPages() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(sdk.sqlite(
                 "with recursive n(i) as (select 1 union all select i + 1 from n where i < 45) insert into smsrecords"
                 " select i, 1 + (i = 7), '1', 'n', 1700000000000 + i, 't', 'alarm', 'ok', '' from n"),
             std::string());
    const auto page = [&sdk](const char* cmd, int id) {
        const Json records = sdk.askAccount("getsmsrecords", {{"cmd", cmd}, {"recid", id}}).at("resp").at("records");
        return records.empty() ? QString()
                               : QStringLiteral("%1-%2 %3")
                                     .arg(records.front().at("id").get<int>())
                                     .arg(records.back().at("id").get<int>())
                                     .arg(records.size());
    };
    QCOMPARE(page("next", 0), QStringLiteral("45-26 20"));
    QCOMPARE(page("next", 26), QStringLiteral("25-5 20")); // the seventh is another's
    QCOMPARE(page("next", 5), QStringLiteral("4-1 4"));
    QCOMPARE(page("next", 1), QString());
    QCOMPARE(page("front", 4), QStringLiteral("25-5 20"));
    QCOMPARE(page("front", 45), QString());
}

QTEST_APPLESS_MAIN(tst_Linkages)
#include "tst_Linkages.moc"
