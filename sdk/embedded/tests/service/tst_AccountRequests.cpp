#include "TestSdk.h"

#include <QtTest>

#include <set>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Groups, orders, names, friends: what they change, and what they refuse.
class tst_AccountRequests final : public QObject {
    Q_OBJECT

private slots:
    void deviceRecordsHaveAllKeys();
    void pidsAreUnique();
    void groupsAgreeWithDevices();
    void groupLife();
    void orders_data();
    void orders();
    void groupOrder();
    void moveIntoAnotherGroup();
    void nicknames();
    void refusals_data();
    void refusals();
    void changesAreAnnounced();
    void friendsAndShares();
    void othersGroupsAreOutOfReach();
    void unknownOperationsAreNotSupported_data();
    void unknownOperationsAreNotSupported();
};

namespace {

std::vector<std::string> members(TestSdk& sdk, std::size_t group) {
    std::vector<std::string> ids;
    const Json list = sdk.document("ipnclist");
    for (const Json& id : list.at("group").at(group).at("ipnclist"))
        ids.push_back(id.get<std::string>());
    return ids;
}

Json groupId(TestSdk& sdk, std::size_t group) {
    return sdk.document("ipnclist").at("group").at(group).at("id");
}

} // namespace

void tst_AccountRequests::deviceRecordsHaveAllKeys() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const std::set<std::string> expected = {"ipncid",    "name", "nickname",   "type",     "online", "groupid",
                                            "authority", "info", "interfaces", "linkages", "extend", "video"};
    int online = 0;
    int shared = 0;
    const Json list = sdk.document("ipnclist");
    for (const Json& record : list.at("ipnclist")) {
        std::set<std::string> keys;
        for (const auto& [key, value] : record.items())
            keys.insert(key);
        QVERIFY(keys == expected);
        QVERIFY(record.at("extend").at("sublist").is_array());
        QVERIFY(record.at("linkages").is_array());
        QVERIFY(record.at("info").at("softwareversion").is_string());
        online += record.at("online").get<bool>() ? 1 : 0;
        shared += record.at("authority").at("admin").get<bool>() ? 0 : 1;
    }
    QCOMPARE(online, 66);
    QCOMPARE(shared, 4);
}

void tst_AccountRequests::pidsAreUnique() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::set<long long> pids;
    std::size_t count = 0;
    const Json list = sdk.document("ipnclist");
    for (const Json& record : list.at("ipnclist")) {
        Json boards = record.at("interfaces");
        for (const Json& sub : record.at("extend").at("sublist"))
            boards.push_back(sub);
        for (const Json& board : boards) {
            for (const char* key : {"ifname", "type", "name"})
                QVERIFY(board.at(key).is_string());
            Json parts = {board};
            for (const char* key : {"input", "output"}) {
                for (const Json& part : board.at(key))
                    parts.push_back(part);
            }
            for (const Json& part : parts) {
                pids.insert(part.at("pid").get<long long>());
                ++count;
            }
        }
    }
    QVERIFY(count > 15);
    QCOMPARE(pids.size(), count);
}

void tst_AccountRequests::groupsAgreeWithDevices() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json list = sdk.document("ipnclist");
    QCOMPARE(list.at("group").size(), std::size_t{9});
    std::size_t placed = 0;
    for (const Json& group : list.at("group")) {
        for (const Json& id : group.at("ipnclist")) {
            QCOMPARE(sdk.device(id.get<std::string>()).at("groupid"), group.at("id"));
            ++placed;
        }
    }
    QCOMPARE(placed, list.at("ipnclist").size());
}

void tst_AccountRequests::groupLife() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json added = sdk.askAccount("addgroup", {{"name", "临时"}});
    QCOMPARE(codeOf(added), 0);
    const Json id = added.at("resp").at("groupid");
    QCOMPARE(codeOf(sdk.askAccount("editgroup", {{"groupid", id}, {"name", "改名'; drop table devices; --"}})), 0);
    QCOMPARE(sdk.document("ipnclist").at("group").back().at("name"), Json("改名'; drop table devices; --"));
    QCOMPARE(codeOf(sdk.askAccount("setipncparam", {{"ipncid", "CAM0003"}, {"groupid", id}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("delgroup", {{"groupid", id}})), 9);
    QCOMPARE(codeOf(sdk.askAccount("setipncparam", {{"ipncid", "CAM0003"}, {"groupid", groupId(sdk, 0)}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("delgroup", {{"groupid", id}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("delgroup", {{"groupid", id}})), 8);
    QCOMPARE(sdk.document("ipnclist").at("group").size(), std::size_t{9});
}

void tst_AccountRequests::orders_data() {
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("expected");
    QTest::newRow("to the front") << QByteArray("CAM0005") << 0 << 0;
    QTest::newRow("forward") << QByteArray("CAM0002") << 4 << 4;
    QTest::newRow("backward") << QByteArray("CAM0008") << 3 << 3;
    QTest::newRow("where it is") << QByteArray("CAM0004") << 3 << 3;
    QTest::newRow("to the end") << QByteArray("CAM0001") << 8 << 8;
    QTest::newRow("behind the end") << QByteArray("CAM0001") << 500 << 8;
}

void tst_AccountRequests::orders() {
    QFETCH(QByteArray, device);
    QFETCH(int, index);
    QFETCH(int, expected);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    auto order = members(sdk, 0);
    const Json response = sdk.askAccount(
        "movedeviceindex", {{"groupid", groupId(sdk, 0)}, {"ipncid", device.toStdString()}, {"index", index}});
    QCOMPARE(codeOf(response), 0);
    order.erase(std::find(order.begin(), order.end(), device.toStdString()));
    order.insert(order.begin() + expected, device.toStdString());
    QVERIFY(members(sdk, 0) == order);
    sdk.runtime.cleanup();
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QVERIFY(members(sdk, 0) == order);
}

void tst_AccountRequests::groupOrder() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json given = groupId(sdk, 6);
    const Json first = groupId(sdk, 0);
    QCOMPARE(codeOf(sdk.askAccount("movegroupindex", {{"groupid", given}, {"index", 0}})), 0);
    QCOMPARE(groupId(sdk, 0), given);
    QCOMPARE(groupId(sdk, 1), first);
    // The list of devices follows the order of the groups.
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").at(0).at("ipncid"), Json("FRD0001"));
    QCOMPARE(codeOf(sdk.askAccount("movegroupindex", {{"groupid", given}, {"index", 99}})), 0);
    QCOMPARE(groupId(sdk, 8), given);
}

void tst_AccountRequests::moveIntoAnotherGroup() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json target = groupId(sdk, 2);
    QCOMPARE(codeOf(sdk.askAccount("movedeviceindex", {{"groupid", target}, {"ipncid", "FRD0001"}, {"index", 1}})),
             0);
    QCOMPARE(members(sdk, 2).at(1), std::string("FRD0001"));
    QCOMPARE(members(sdk, 6).size(), std::size_t{3});
    // The friend who owns it sees it where it was.
    QVERIFY(sdk.signIn("13900139000"));
    QCOMPARE(members(sdk, 0).size(), std::size_t{6});
    QCOMPARE(sdk.device("FRD0001").at("authority").at("admin"), Json(true));
}

void tst_AccountRequests::nicknames() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("setipncparam", {{"ipncid", "CAM0001"}, {"nickname", "大门 😀"}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("setphoneparam", {{"nickname", "中心"}})), 0);
    sdk.runtime.cleanup();
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(sdk.device("CAM0001").at("nickname"), Json("大门 😀"));
    QCOMPARE(sdk.device("CAM0001").at("name"), Json("东大门入口"));
    const Json person = sdk.askAccount("getpersioninfo").at("resp").at("persioninfo");
    QCOMPARE(person.at("nickname"), Json("中心"));
    QCOMPARE(person.at("phoneid"), Json("13800138000"));
}

void tst_AccountRequests::refusals_data() {
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<QByteArray>("params");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const char* operation, const QByteArray& params, int code) {
        QTest::newRow(name) << QByteArray(operation) << params << code;
    };
    row("group without name", "addgroup", "{}", 2);
    row("group with an empty name", "addgroup", R"({"name":""})", 2);
    row("group with a blank name", "addgroup", R"({"name":"   "})", 2);
    row("group with an overlong name", "addgroup", R"({"name":")" + QByteArray(65, 'x') + "\"}", 2);
    row("group with a line feed", "addgroup", R"({"name":"a\nb"})", 2);
    row("group with NUL", "addgroup", R"({"name":"a\u0000b"})", 2);
    row("group name of a list", "addgroup", R"({"name":["a"]})", 2);
    row("no such group", "editgroup", R"({"groupid":"99999","name":"x"})", 8);
    row("group id is no number", "editgroup", R"({"groupid":"1004x","name":"x"})", 8);
    row("group id of an object", "editgroup", R"({"groupid":{},"name":"x"})", 2);
    row("group id beyond all", "delgroup", R"({"groupid":"99999999999999999999999"})", 8);
    row("delete a full group", "delgroup", R"({"groupid":"1004"})", 9);
    row("move no group", "movegroupindex", R"({"groupid":"1","index":0})", 8);
    row("move to a negative place", "movegroupindex", R"({"groupid":"1004","index":-1})", 2);
    row("move to half a place", "movegroupindex", R"({"groupid":"1004","index":1.5})", 2);
    row("move no device", "movedeviceindex", R"({"groupid":"1004","ipncid":"none","index":0})", 7);
    row("move a friend's own device", "movedeviceindex", R"({"groupid":"1004","ipncid":"FRD0005","index":0})", 7);
    row("move into no group", "movedeviceindex", R"({"groupid":"1","ipncid":"CAM0001","index":0})", 8);
    row("move an empty id", "movedeviceindex", R"({"groupid":"1004","ipncid":"","index":0})", 7);
    row("nickname of no device", "setipncparam", R"({"ipncid":"none","nickname":"x"})", 7);
    row("nothing to set", "setipncparam", R"({"ipncid":"CAM0001"})", 2);
    row("nickname of a number", "setipncparam", R"({"ipncid":"CAM0001","nickname":5})", 2);
    row("good group, bad nickname", "setipncparam", R"({"ipncid":"CAM0001","groupid":"1005","nickname":""})", 2);
    row("number to check is missing", "checkphone", "{}", 2);
    row("own nickname too long", "setphoneparam", R"({"nickname":")" + QByteArray(65, 'x') + "\"}", 2);
}

void tst_AccountRequests::refusals() {
    QFETCH(QByteArray, operation);
    QFETCH(QByteArray, params);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.settle();
    sdk.client.clear();
    const Json before = sdk.document("ipnclist");
    const Json response = sdk.askAccount(operation.toStdString(), Json::parse(params.toStdString()));
    QCOMPARE(codeOf(response), code);
    QCOMPARE(response.at("resp").at("state"), Json("error"));
    QVERIFY(sdk.document("ipnclist") == before);
    sdk.settle();
    QVERIFY(sdk.client.all().empty()); // nothing changed, nothing is announced
    // The same needs a sign-in, but for the look at a number.
    sdk.command({{"type", "logout"}});
    QCOMPARE(codeOf(sdk.askAccount(operation.toStdString(), Json::parse(params.toStdString()))),
             operation == "checkphone" ? code : 3);
}

void tst_AccountRequests::changesAreAnnounced() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const std::vector<std::pair<std::string, Json>> changes = {
        {"addgroup", {{"name", "甲"}}},
        {"editgroup", {{"groupid", groupId(sdk, 0)}, {"name", "乙"}}},
        {"movegroupindex", {{"groupid", groupId(sdk, 0)}, {"index", 2}}},
        {"movedeviceindex", {{"groupid", groupId(sdk, 0)}, {"ipncid", "CAM0001"}, {"index", 2}}},
        {"setipncparam", {{"ipncid", "CAM0001"}, {"nickname", "丙"}}},
    };
    for (const auto& [operation, params] : changes) {
        sdk.settle();
        sdk.client.clear();
        QCOMPARE(codeOf(sdk.askAccount(operation, params)), 0);
        sdk.settle();
        QCOMPARE(sdk.client.ofType("freshlist").size(), std::size_t{1});
    }
}

void tst_AccountRequests::friendsAndShares() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.askAccount("checkphone", {{"phonenumber", "13900139000"}}).at("resp").at("registered"), Json(true));
    QCOMPARE(sdk.askAccount("checkphone", {{"phonenumber", "13000000000"}}).at("resp").at("registered"), Json(false));
    QVERIFY(sdk.signIn());
    const Json friends = sdk.askAccount("getfriends").at("resp").at("friendlist");
    QCOMPARE(friends.size(), std::size_t{3});
    QCOMPARE(friends.at(2).at("remarkname"), Json("河道所老周"));
    const Json shares = sdk.askAccount("getalldevicesharelist").at("resp");
    QVERIFY(shares.at("friendlist") == friends);
    QCOMPARE(shares.at("ipnclist").size(), std::size_t{72});
    QCOMPARE(shares.at("devicesharelist").size(), std::size_t{6});
    std::size_t listed = 0;
    for (const Json& row : shares.at("friendshare"))
        listed += row.at("ipnclist").size();
    QCOMPARE(listed, std::size_t{6});
    for (const Json& row : shares.at("ipncshare"))
        QVERIFY(!row.at("phonelist").empty());
    for (const Json& text : {shares, friends, sdk.document("ipnclist")})
        QVERIFY(toText(text).find("argon2") == std::string::npos);
}

void tst_AccountRequests::othersGroupsAreOutOfReach() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json foreign = groupId(sdk, 0);
    QVERIFY(sdk.signIn("13700137000"));
    QCOMPARE(codeOf(sdk.askAccount("editgroup", {{"groupid", foreign}, {"name", "x"}})), 8);
    QCOMPARE(codeOf(sdk.askAccount("delgroup", {{"groupid", foreign}})), 8);
    QCOMPARE(codeOf(sdk.askAccount("movegroupindex", {{"groupid", foreign}, {"index", 1}})), 8);
    QCOMPARE(codeOf(sdk.askAccount("setipncparam", {{"ipncid", "CAM0019"}, {"groupid", foreign}})), 8);
}

void tst_AccountRequests::unknownOperationsAreNotSupported_data() {
    QTest::addColumn<QByteArray>("operation");
    for (const char* operation : {"addmap", "userup", "LOGON", "", "\x01\x02", "a'; drop table accounts; --"})
        QTest::newRow(operation) << QByteArray(operation);
}

void tst_AccountRequests::unknownOperationsAreNotSupported() {
    QFETCH(QByteArray, operation);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json response = sdk.askAccount(operation.toStdString());
    QCOMPARE(codeOf(response), 1);
    QCOMPARE(response.at("resp").at("errcode"), Json("(not supported)"));
}

QTEST_APPLESS_MAIN(tst_AccountRequests)
#include "tst_AccountRequests.moc"
