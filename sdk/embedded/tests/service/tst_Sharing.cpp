#include "TestSdk.h"
#include "world/FirstWorld.h"

#include <QtTest>

#include <array>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Friends and what they share: who may do what, and what it changes.
class tst_Sharing final : public QObject {
    Q_OBJECT

private slots:
    void rights_data();
    void rights();
    void friendship();
    void friendRefusals_data();
    void friendRefusals();
    void endOfFriendshipEndsShares();
    void shareAndAuthority();
    void shareRefusals_data();
    void shareRefusals();
    void timeZones_data();
    void timeZones();
};

namespace {

constexpr auto owner = world::firstPhone; // owns CAM0001
constexpr auto sharer = "13600136000";    // a friend who sees it
constexpr auto other = "13700137000";     // a friend who does not
constexpr auto stranger = "13512345678";
constexpr std::array roles = {owner, sharer, other, stranger, ""};
constexpr std::array roleNames = {"owner", "friend with share", "friend without", "stranger", "signed out"};

Json firstGroup(TestSdk& sdk) {
    const Json groups = sdk.document("ipnclist").at("group");
    return groups.empty() ? Json("1") : groups.at(0).at("id");
}

Json shareRow(TestSdk& sdk, const std::string& phone, const std::string& ipncid) {
    const Json rows = sdk.askAccount("getalldevicesharelist").at("resp").at("devicesharelist");
    for (const Json& row : rows) {
        if (row.at("friendphone") == phone && row.at("ipncid") == ipncid)
            return row;
    }
    return {};
}

} // namespace

void tst_Sharing::rights_data() {
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<int>("role");
    QTest::addColumn<int>("code");
    // OWN stands for a group of the caller, HIS for one of the owner.
    const auto row = [](const char* request, const char* params, const std::array<int, 5>& codes) {
        for (std::size_t role = 0; role < codes.size(); ++role)
            QTest::addRow("%s %.40s, %s", request, params, roleNames[role])
                << QByteArray(request) << QByteArray(params) << static_cast<int>(role) << codes[role];
    };
    row("setphoneparam", R"({"nickname":"x"})", {0, 0, 0, 0, 3});
    row("uploadhead", R"({"uploadpath":"/nothing"})", {19, 19, 19, 19, 3});
    row("downhead", R"({"downpath":"/nothing/x","friendphone":"13800138000"})", {16, 404, 404, 16, 3});
    row("unbindphonemode", R"({"phonetype":"pc"})", {0, 0, 0, 0, 3});
    row("addgroup", R"({"name":"x"})", {0, 0, 0, 0, 3});
    row("editgroup", R"({"groupid":"HIS","name":"x"})", {0, 8, 8, 8, 3});
    row("delgroup", R"({"groupid":"HIS"})", {9, 8, 8, 8, 3});
    row("movegroupindex", R"({"groupid":"HIS","index":1})", {0, 8, 8, 8, 3});
    row("movedeviceindex", R"({"groupid":"OWN","ipncid":"CAM0001","index":0})", {0, 0, 7, 7, 3});
    row("movedeviceindex", R"({"groupid":"HIS","ipncid":"CAM0001","index":0})", {0, 8, 7, 7, 3});
    row("setipncparam", R"({"ipncid":"CAM0001","nickname":"x"})", {0, 0, 7, 7, 3});
    row("setipncparam", R"({"ipncid":"CAM0001","groupid":"HIS"})", {0, 8, 7, 7, 3});
    row("setipncadminparam", R"({"ipncid":"CAM0001","timezone":"GMT+01:00"})", {0, 6, 7, 7, 3});
    row("addipnc", R"({"ipncid":"CAM0001","word":"word-cam0001"})", {18, 18, 18, 18, 3});
    row("addipnc", R"({"ipncid":"SPARE001","word":"word-0001","groupid":"HIS"})", {0, 8, 8, 8, 3});
    row("addipnc", R"({"name":"x","main":"rtsp://192.0.2.1/","ipncid":"cam0001"})", {18, 18, 18, 18, 3});
    row("addipnc", R"({"name":"x","main":"rtsp://192.0.2.1/","groupid":"HIS"})", {0, 8, 8, 8, 3});
    row("delipnc", R"({"ipncid":"CAM0001"})", {0, 0, 7, 7, 3});
    row("addfriend", R"({"friendphone":"13900139000","remarkname":"x"})", {17, 0, 0, 0, 3});
    row("setfriendparam", R"({"friendphone":"13800138000","remarkname":"x"})", {16, 0, 0, 16, 3});
    row("delfriend", R"({"friendphone":"13800138000"})", {16, 0, 0, 16, 3});
    row("setfrienddeviceshare", R"({"friendphone":"13700137000","ipncid":"CAM0001","share":true})",
        {0, 16, 16, 16, 3});
    row("setfrienddeviceshare", R"({"friendphone":"13800138000","ipncid":"CAM0001","share":false})",
        {16, 6, 7, 16, 3});
    row("setfrienddeviceshare", R"({"friendphone":"13600136000","ipncid":"FRD0001","share":true})",
        {6, 16, 16, 16, 3});
    row("loginphone", R"({"phonenumber":"13411112222","phonepassword":"secret-1234"})", {15, 15, 15, 15, 15});
    row("changephonepas", R"({"phonenumber":"13800138000","phonepassword":"secret-1234"})", {15, 15, 15, 15, 15});
    row("rebindphone", R"({"phonenumber":"13800138000","phonetype":"pc"})", {15, 15, 15, 15, 15});
    row("p2pmsg", R"({"ipncid":"CAM0001","setcmds":{"mirror1":1}})", {1, 1, 1, 1, 3});
    row("p2pmsg", R"({"ipncid":"CAM0001","setcmds":{"mirror":1}})", {0, 6, 7, 7, 3});
    row("p2pmsg", R"({"ipncid":"CAM0001","getcmds":["mirror"]})", {0, 0, 7, 7, 3});
}

void tst_Sharing::rights() {
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, params);
    QFETCH(int, role);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.registerAndSignIn(stranger));
    QVERIFY(sdk.signIn(owner));
    const Json his = firstGroup(sdk);
    const std::string phone = roles[static_cast<std::size_t>(role)];
    if (phone.empty())
        sdk.command({{"type", "logout"}});
    else
        QVERIFY(sdk.signIn(phone));
    const Json own = firstGroup(sdk);
    params.replace("OWN", QByteArray::fromStdString(own.get<std::string>()));
    params.replace("HIS", QByteArray::fromStdString(his.get<std::string>()));
    sdk.settle();
    const std::string before = sdk.sqlite(".dump");
    const Json message = Json::parse(withDrive(params.toStdString()));
    const Json response =
        request == "p2pmsg" ? sdk.askDevice(message) : sdk.askAccount(request.toStdString(), message);
    QCOMPARE(codeOf(response), code);
    QCOMPARE(response.at("resp").at("state"), Json(code == 0 ? "ok" : "error"));
    // What is refused leaves no trace.
    if (code != 0)
        QVERIFY(sdk.sqlite(".dump") == before);
    else if (!message.contains("getcmds"))
        QVERIFY(sdk.sqlite(".dump") != before);
    QCOMPARE(sdk.sqlite("pragma foreign_key_check"), std::string());
}

void tst_Sharing::friendship() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.registerAndSignIn(stranger));
    QCOMPARE(codeOf(sdk.askAccount("setphoneparam", {{"nickname", "小陈"}})), 0);
    sdk.settle();
    sdk.client.clear();
    const Json added = sdk.askAccount("addfriend", {{"friendphone", other}, {"remarkname", "李 <b>工</b>"}});
    QCOMPARE(codeOf(added), 0);
    QCOMPARE(added.at("resp").at("friendphone"), Json(other));
    QCOMPARE(added.at("resp").at("nickname"), Json("李工"));
    QCOMPARE(added.at("resp").at("remarkname"), Json("李 <b>工</b>"));
    sdk.settle();
    QCOMPARE(sdk.client.ofType("freshlist").size(), std::size_t{1});
    QCOMPARE(codeOf(sdk.askAccount("addfriend", {{"friendphone", other}, {"remarkname", "x"}})), 17);
    QCOMPARE(codeOf(sdk.askAccount("setfriendparam", {{"friendphone", other}, {"remarkname", "同事"}})), 0);
    QCOMPARE(sdk.askAccount("getfriends").at("resp").at("friendlist").at(0).at("remarkname"), Json("同事"));
    // The other side sees the adder under the adder's own name.
    QVERIFY(sdk.signIn(other));
    const Json friends = sdk.askAccount("getfriends").at("resp").at("friendlist");
    QCOMPARE(friends.size(), std::size_t{2});
    QCOMPARE(friends.at(0).at("friendphone"), Json(stranger));
    QCOMPARE(friends.at(0).at("remarkname"), Json("小陈"));
}

void tst_Sharing::friendRefusals_data() {
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const char* operation, const QByteArray& params, int code) {
        QTest::addRow("%s: %s", operation, name) << QByteArray(operation) << params << code;
    };
    row("nobody", "addfriend", R"({"friendphone":"13000000000","remarkname":"x"})", 4);
    row("40 digits", "addfriend", R"({"friendphone":")" + QByteArray(40, '1') + R"(","remarkname":"x"})", 4);
    row("10,000 characters", "addfriend", R"({"friendphone":")" + QByteArray(10000, 'x') + R"(","remarkname":"x"})",
        4);
    row("quotes", "addfriend", R"({"friendphone":"' or ''='","remarkname":"x"})", 4);
    row("oneself", "addfriend", R"({"friendphone":"13800138000","remarkname":"x"})", 23);
    row("a number", "addfriend", R"({"friendphone":13900139000,"remarkname":"x"})", 2);
    row("no remark", "addfriend", R"({"friendphone":"13512345678"})", 2);
    row("blank remark", "addfriend", R"({"friendphone":"13512345678","remarkname":"  "})", 2);
    row("long remark", "addfriend", R"({"friendphone":"13512345678","remarkname":")" + QByteArray(10000, 'x') + "\"}",
        2);
    row("remark with a line feed", "addfriend", R"({"friendphone":"13512345678","remarkname":"a\nb"})", 2);
    row("nobody", "setfriendparam", R"({"friendphone":"13000000000","remarkname":"x"})", 16);
    row("oneself", "setfriendparam", R"({"friendphone":"13800138000","remarkname":"x"})", 16);
    row("empty remark", "setfriendparam", R"({"friendphone":"13900139000","remarkname":""})", 2);
    row("nobody", "delfriend", R"({"friendphone":"13000000000"})", 16);
    row("nothing", "delfriend", "{}", 2);
    row("a list", "delfriend", R"({"friendphone":["13900139000"]})", 2);
}

void tst_Sharing::friendRefusals() {
    QFETCH(QByteArray, operation);
    QFETCH(QByteArray, params);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.settle();
    sdk.client.clear();
    QCOMPARE(codeOf(sdk.askAccount(operation.toStdString(), Json::parse(params.toStdString()))), code);
    QCOMPARE(sdk.askAccount("getfriends").at("resp").at("friendlist").size(), std::size_t{3});
    sdk.settle();
    QVERIFY(sdk.client.all().empty());
}

void tst_Sharing::endOfFriendshipEndsShares() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("delfriend", {{"friendphone", "13900139000"}})), 0);
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").size(), std::size_t{68});
    const Json lists = sdk.askAccount("getalldevicesharelist").at("resp");
    QCOMPARE(lists.at("devicesharelist").size(), std::size_t{5});
    QVERIFY(sdk.signIn("13900139000"));
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").size(), std::size_t{5}); // its own
    QVERIFY(sdk.askAccount("getalldevicesharelist").at("resp").at("devicesharelist").empty());
    QCOMPARE(
        sdk.sqlite("select count(*) from placements p where not exists (select 1 from devices d left join shares s"
                   " on s.ipncid = d.ipncid and s.friendid = p.accountid where d.ipncid = p.ipncid and"
                   " (d.ownerid = p.accountid or s.rights is not null))"),
        std::string("0"));
}

void tst_Sharing::shareAndAuthority() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const auto share = [&sdk](const Json& more) {
        Json params = {{"friendphone", other}, {"ipncid", "CAM0001"}, {"share", true}};
        params.update(more);
        return codeOf(sdk.askAccount("setfrienddeviceshare", params));
    };
    QCOMPARE(share(Json::object()), 0);
    const Json all = {{"admin", false}, {"video", true}, {"record", true}, {"ptz", true}, {"param", true}};
    QVERIFY(shareRow(sdk, other, "CAM0001").at("authority") == all);
    QCOMPARE(share({{"authority", {{"record", false}, {"ptz", false}}}}), 0);
    Json some = all;
    some["record"] = some["ptz"] = false;
    QVERIFY(shareRow(sdk, other, "CAM0001").at("authority") == some);
    // The same again changes nothing and tells nobody.
    sdk.settle();
    sdk.client.clear();
    QCOMPARE(share(Json::object()), 0);
    QCOMPARE(share({{"authority", some}}), 0);
    sdk.settle();
    QVERIFY(sdk.client.all().empty());
    QVERIFY(shareRow(sdk, other, "CAM0001").at("authority") == some);

    QVERIFY(sdk.signIn(other));
    const Json device = sdk.device("CAM0001");
    QVERIFY(device.at("authority") == some);
    QCOMPARE(device.at("groupid"), firstGroup(sdk));
    QCOMPARE(device.at("nickname"), Json("东大门入口"));
    QVERIFY(sdk.signIn());
    QCOMPARE(share({{"share", false}}), 0);
    QCOMPARE(share({{"share", false}}), 0);
    QVERIFY(shareRow(sdk, other, "CAM0001").is_null());
    QVERIFY(sdk.signIn(other));
    QVERIFY(sdk.device("CAM0001").is_null());
}

void tst_Sharing::shareRefusals_data() {
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const QByteArray& more, int code) {
        QTest::newRow(name) << R"({"friendphone":"13700137000",)" + more + "}" << code;
    };
    row("no such device", R"("ipncid":"CAM9999","share":true)", 7);
    row("a friend's own device", R"("ipncid":"FRD0005","share":true)", 7);
    row("a device that waits", R"("ipncid":"SPARE001","share":true)", 7);
    row("share is a number", R"("ipncid":"CAM0001","share":1)", 2);
    row("share is missing", R"("ipncid":"CAM0001")", 2);
    row("authority of a list", R"("ipncid":"CAM0001","share":true,"authority":[])", 2);
    row("authority with a number", R"("ipncid":"CAM0001","share":true,"authority":{"video":1})", 2);
    row("authority that is not known", R"("ipncid":"CAM0001","share":true,"authority":{"own":true})", 2);
    row("authority to own it", R"("ipncid":"CAM0001","share":true,"authority":{"admin":true})", 2);
    row("number twice", R"("friendphone":"13000000000","ipncid":"CAM0001","share":true)", 16);
}

void tst_Sharing::shareRefusals() {
    QFETCH(QByteArray, params);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("setfrienddeviceshare", Json::parse(params.toStdString()))), code);
    QCOMPARE(sdk.askAccount("getalldevicesharelist").at("resp").at("devicesharelist").size(), std::size_t{6});
}

void tst_Sharing::timeZones_data() {
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<int>("code");
    for (const char* zone : {"GMT+08:00", "GMT-12:00", "UTC+14:00", "GMT+05:45"})
        QTest::newRow(zone) << QByteArray(zone) << 0;
    for (const char* zone : {"", "GMT", "GMT+8:00", "GMT+14:01", "GMT+08:60", "GMT+08:00 ", "PST+08:00", "GMT*08:00",
                             "GMT+-8:00", "'; drop"})
        QTest::newRow(zone) << QByteArray(zone) << 2;
}

void tst_Sharing::timeZones() {
    QFETCH(QByteArray, zone);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("setipncadminparam", {{"ipncid", "CAM0001"}, {"timezone", zone.toStdString()}})),
             code);
    const Json info = sdk.device("CAM0001").at("info");
    QCOMPARE(info.at("timezone"), code == 0 ? Json(zone.toStdString()) : Json("UTC+08:00"));
    QCOMPARE(info.at("serial"), Json("CAM0001"));
}

QTEST_APPLESS_MAIN(tst_Sharing)
#include "tst_Sharing.moc"
