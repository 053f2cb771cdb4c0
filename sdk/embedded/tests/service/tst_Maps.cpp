#include "TestSdk.h"
#include "world/FirstWorld.h"

#include <QtTest>

#include <set>
#include <string>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Maps and their markers: what may stand in them, who may change them, who hears of it, and what takes markers away.
class tst_Maps final : public QObject {
    Q_OBJECT

private slots:
    void firstWorld();
    void mapInfo_data();
    void mapInfo();
    void markers_data();
    void markers();
    void whatNobodyKnowsSurvives();
    void mapsOfOthers();
    void othersHearOfIt();
    void friendshipEnds();
    void markersGoWithWhatTheyMark();
    void ownMapsLoseWhatIsGivenBack();
    void referencePoints_data();
    void referencePoints();
    void limits();
};

namespace {

constexpr auto owner = world::firstPhone;
constexpr auto giver = "13900139000";
constexpr auto colleague = "13700137000";
constexpr auto onlineMap = "3"; // of the first world, as all below
constexpr auto localMap = "1";
constexpr auto giversMap = "4";

Json mapsIn(TestSdk& sdk, const char* list = "maps") {
    return sdk.document("userinfo").at("userconfig").at(list);
}

Json mapIn(TestSdk& sdk, const std::string& id, const char* list = "maps") {
    for (const Json& map : mapsIn(sdk, list)) {
        if (map.at("pid") == id)
            return map;
    }
    return {};
}

std::size_t markerCount(TestSdk& sdk, const std::string& map, const std::string& ipncid, const std::string& pid) {
    std::size_t count = 0;
    const Json shown = mapIn(sdk, map);
    for (const Json& marker : shown.at("sensors"))
        count += marker.at("ipncid") == ipncid && marker.at("pid") == pid ? 1 : 0;
    return count;
}

Json place(TestSdk& sdk, const std::string& map, const std::string& ipncid, const Json& info) {
    return sdk.askAccount("submitmapsensor", {{"mapid", map}, {"ipncid", ipncid}, {"sensorinfo", info}});
}

Json cameraAt(const char* x, const char* y) {
    return {{"name", "摄像机"}, {"pid", ""}, {"point", {{"x", x}, {"y", y}}}};
}

/// Forgets what was told until now.
void settle(TestSdk& sdk) {
    sdk.settle();
    sdk.client.clear();
}

} // namespace

void tst_Maps::firstWorld() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(mapsIn(sdk).empty() && mapsIn(sdk, "sharemaps").empty());
    QVERIFY(sdk.signIn());
    const Json icons = sdk.document("userinfo").at("fileinfo").at("icons");
    std::set<std::string> names;
    for (const Json& icon : icons.at("public"))
        names.insert(icon.at("filename").get<std::string>());
    QVERIFY(names.size() >= 24 && icons.at("user").empty());
    const Json maps = mapsIn(sdk);
    QCOMPARE(maps.size(), std::size_t{3});
    QVERIFY(maps.at(0).at("sensors").size() >= 12);
    const Json shared = mapsIn(sdk, "sharemaps");
    QCOMPARE(shared.size(), std::size_t{1});
    QCOMPARE(shared.at(0).at("userid"), Json(giver));
    QVERIFY(!shared.at(0).contains("friends"));
    Json all = maps;
    all.push_back(shared.at(0));
    for (const Json& map : all) {
        QVERIFY((map.at("type") == "local") == map.contains("filename"));
        for (const Json& marker : map.at("sensors")) {
            // Every marker is of a device, and of a board, that is there.
            const Json device = sdk.device(marker.at("ipncid").get<std::string>());
            QVERIFY(!device.is_null());
            Json boards = device.at("interfaces");
            for (const Json& board : device.at("extend").at("sublist"))
                boards.push_back(board);
            bool found = marker.at("pid") == "";
            for (const Json& board : boards)
                found = found || marker.at("pid") == std::to_string(board.at("pid").get<int>());
            QVERIFY2(found, toText(marker).c_str());
            QVERIFY(names.count(marker.at("icon").get<std::string>()) > 0);
            if (marker.at("pid") == "261") {
                QCOMPARE(marker.at("protocol"), Json("4353"));
                QCOMPARE(marker.at("info").at("locations").size(), std::size_t{4});
                QCOMPARE(marker.at("info").at("locations").at(0), (Json{{"x", "25"}, {"y", "9"}}));
            }
        }
    }
}

void tst_Maps::mapInfo_data() {
    QTest::addColumn<QByteArray>("info");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const QByteArray& info, int code) {
        QTest::newRow(name) << info << code;
    };
    row("online", R"({"name":"图","type":"online"})", 0);
    row("hostile name", R"({"name":"'\"\\</script><img onerror=x>%1\u202e","type":"online"})", 0);
    row("64 characters", "{\"name\":\"" + QByteArray("图").repeated(64) + R"(","type":"online"})", 0);
    row("65 characters", "{\"name\":\"" + QByteArray("图").repeated(65) + R"(","type":"online"})", 2);
    row("blank", R"({"name":"  ","type":"online"})", 2);
    row("control character", R"({"name":"a\nb","type":"online"})", 2);
    row("no name", R"({"type":"online"})", 2);
    row("no type", R"({"name":"图"})", 2);
    row("a picture without one", R"({"name":"图","type":"local","range":{"distance":{"w":"1","h":"1"}}})", 2);
    row("giant", "{\"name\":\"图\",\"type\":\"online\",\"x\":\"" + QByteArray(70000, 'x') + "\"}", 2);
    row("no object", "[]", 2);
    row("unknown map", R"({"mapid":"77","name":"图"})", 35);
    row("no number", R"({"mapid":"abc","name":"图"})", 35);
    row("number past all bounds", R"({"mapid":"99999999999999999999","name":"图"})", 35);
    row("id of a wrong type", R"({"mapid":[1],"name":"图"})", 2);
    row("rename", R"({"mapid":1,"name":"新名"})", 0);
    row("named as documents do", R"({"pid":"1","name":"新名"})", 0);
    row("another type", R"({"mapid":"1","type":"online"})", 2);
    const auto range = [&](const char* name, const char* w, int code) {
        row(name, QByteArray(R"({"mapid":"1","range":{"distance":{"w":)") + w + R"(,"h":"3"}}})", code);
    };
    range("range as text", R"("12.5")", 0);
    range("range as number", "12.5", 0);
    range("range 0", R"("0")", 2);
    range("range below 0", "-1", 2);
    range("range too wide", R"("10000001")", 2);
    range("range nan", R"("nan")", 2);
    range("range inf", R"("inf")", 2);
    range("range 1e999", R"("1e999")", 2);
    range("range with a tail", R"("1x")", 2);
    range("range null", "null", 2);
}

void tst_Maps::mapInfo() {
    QFETCH(QByteArray, info);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json before = sdk.document("userinfo");
    const Json given = Json::parse(info.toStdString());
    const Json response = sdk.askAccount("submitmap", {{"mapinfo", given}});
    QVERIFY2(codeOf(response) == code, toText(response).c_str());
    if (code != 0) {
        QVERIFY(sdk.document("userinfo") == before);
        return;
    }
    const Json map = mapIn(sdk, response.at("resp").at("mapid").get<std::string>());
    if (given.contains("name"))
        QCOMPARE(map.at("name"), given.at("name"));
    if (map.at("type") == "local")
        QCOMPARE(map.at("range").at("distance").at("w"), Json(given.contains("range") ? "12.5" : "96"));
}

void tst_Maps::markers_data() {
    QTest::addColumn<QByteArray>("patch"); // merged into a marker that is taken
    QTest::addColumn<QByteArray>("map");
    QTest::addColumn<int>("code");
    const auto local = [](const char* name, const QByteArray& patch, int code) {
        QTest::newRow(name) << patch << QByteArray(localMap) << code;
    };
    const auto online = [](const char* name, const QByteArray& patch, int code) {
        QTest::newRow(name) << patch << QByteArray(onlineMap) << code;
    };
    local("camera", "{}", 0);
    local("board", R"({"pid":"101"})", 0);
    local("board as a number", R"({"pid":101})", 0);
    local("sub-device", R"({"pid":103})", 0);
    local("board of another device", R"({"pid":111})", 30);
    local("an input is no board", R"({"pid":1001})", 30);
    local("pid is no number", R"({"pid":"1 or 1"})", 30);
    local("pid of a wrong type", R"({"pid":{}})", 2);
    local("another device inside", R"({"ipncid":"CAM0001"})", 2);
    local("corner", R"({"point":{"x":0,"y":1}})", 0);
    local("outside", R"({"point":{"x":"1.0001"}})", 2);
    local("below 0", R"({"point":{"x":"-0.1"}})", 2);
    local("nan", R"({"point":{"x":"NaN"}})", 2);
    local("empty", R"({"point":{"x":""}})", 2);
    local("decimal comma", R"({"point":{"x":"0,5"}})", 2);
    local("no point", R"({"point":null})", 2);
    local("name of 200", "{\"name\":\"" + QByteArray("名").repeated(200) + "\"}", 0);
    local("name of 10000", "{\"name\":\"" + QByteArray(10000, 'n') + "\"}", 2);
    local("name with markup", R"({"name":"<img onerror=x>'%1"})", 0);
    local("icon leads out", R"({"icon":"../../config/service.json"})", 2);
    local("icon is a path", R"({"icon":"C:\\x.png"})", 2);
    local("no icon", R"({"icon":""})", 0);
    local("mouse", R"({"showmode":"mousein"})", 0);
    local("unknown mode", R"({"showmode":"never"})", 2);
    local("flag as text", R"({"showdatas":"true"})", 2);
    local("inputs", R"({"inputs":[1001,1002]})", 0);
    local("inputs are none", R"({"inputs":["x"]})", 2);
    local("giant", "{\"x\":\"" + QByteArray(70000, 'x') + "\"}", 2);
    local("replaces one that is not there", R"({"sensorid":"7777"})", 36);
    online("on the world", R"({"lat":-33.8,"lng":151.2})", 0);
    online("degrees as text", R"({"lat":"39.9","lng":"116.4"})", 0);
    online("turned round", R"({"lat":151.2,"lng":-33.8})", 2);
    online("beyond the date line", R"({"lat":0,"lng":180.5})", 2);
    online("no degrees", "{}", 2);
    online("degrees nan", R"({"lat":"nan","lng":0})", 2);
}

void tst_Maps::markers() {
    QFETCH(QByteArray, patch);
    QFETCH(QByteArray, map);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const std::string id = map.toStdString();
    const Json before = mapIn(sdk, id);
    Json info = cameraAt("0.5", "0.25");
    info.merge_patch(Json::parse(patch.toStdString()));
    const Json response = place(sdk, id, "CAM0052", info);
    QVERIFY2(codeOf(response) == code, toText(response).c_str());
    const Json after = mapIn(sdk, id);
    if (code != 0) {
        QVERIFY(after == before);
        return;
    }
    const Json marker = after.at("sensors").back();
    QCOMPARE(marker.at("sensorid"), response.at("resp").at("mapsensorid"));
    QCOMPARE(marker.at("ipncid"), Json("CAM0052"));
    QVERIFY(marker.at("pid").is_string());
    QCOMPARE(marker.at("name"), info.at("name"));
    if (id == localMap)
        QVERIFY(marker.at("point").at("x").is_string() && marker.at("point").at("y").is_string());
    else
        QVERIFY(marker.at("lat").is_number() && marker.at("lng").is_number());
    // It can be moved and deleted.
    info["sensorid"] = marker.at("sensorid");
    info["name"] = "别处";
    QCOMPARE(codeOf(place(sdk, id, "CAM0052", info)), 0);
    QCOMPARE(mapIn(sdk, id).at("sensors").back().at("name"), Json("别处"));
    QCOMPARE(mapIn(sdk, id).at("sensors").size(), before.at("sensors").size() + 1);
    QCOMPARE(codeOf(sdk.askAccount("delmapsensor",
                                   {{"mapid", id}, {"ipncid", "CAM0052"}, {"mapsensorid", marker.at("sensorid")}})),
             0);
    QVERIFY(mapIn(sdk, id) == before);
}

void tst_Maps::whatNobodyKnowsSurvives() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Json info = cameraAt("0.50", "0.2500");
    info["future"] = {{"deep", {1, "二", nullptr}}};
    info["filepath"] = "/home/someone/icon.png";
    info["protocol"] = "4353"; // the board says that, nobody else
    QCOMPARE(codeOf(place(sdk, localMap, "CAM0001", info)), 0);
    const Json map = {
        {"mapid", localMap}, {"future", {{"zoom", 2.5}}}, {"filepath", "/x"}, {"sensors", Json::array()}};
    QCOMPARE(codeOf(sdk.askAccount("submitmap", {{"mapinfo", map}})), 0);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json kept = mapIn(sdk, localMap);
    QCOMPARE(kept.at("future"), map.at("future"));
    QCOMPARE(kept.at("name"), Json("水泵站平面图"));
    const Json marker = kept.at("sensors").back();
    QCOMPARE(marker.at("future"), info.at("future"));
    QCOMPARE(marker.at("point"), info.at("point")); // the text itself
    QVERIFY(!kept.contains("filepath") && !marker.contains("filepath") && !marker.contains("protocol"));
}

void tst_Maps::mapsOfOthers() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    const auto attempts = [&](const char* map) {
        const Json marker = {{"mapid", map}, {"ipncid", "CAM0052"}, {"mapsensorid", "1"}};
        return std::set<int>{codeOf(sdk.askAccount("submitmap", {{"mapinfo", {{"mapid", map}, {"name", "改"}}}})),
                             codeOf(sdk.askAccount("delmap", {{"mapid", map}})),
                             codeOf(sdk.askAccount("setmapshare", {{"mapid", map}, {"friendphones", Json::array()}})),
                             codeOf(place(sdk, map, "CAM0052", cameraAt("0", "0"))),
                             codeOf(sdk.askAccount("delmapsensor", marker))};
    };
    QCOMPARE(attempts(localMap), std::set<int>{3});
    QVERIFY(sdk.signIn());
    QCOMPARE(attempts(giversMap), std::set<int>{33});
    QCOMPARE(attempts("77"), std::set<int>{35});
    const Json refused = sdk.askAccount("delmap", {{"mapid", giversMap}}).at("resp");
    QCOMPARE(refused.at("errcode"), Json("(not main account)"));
    QCOMPARE(refused.at("text"), Json("非主账号无操作权限!"));
    // A marker is one of its own map only; devices are those that the owner sees.
    const Json first = mapIn(sdk, localMap).at("sensors").front();
    QCOMPARE(codeOf(sdk.askAccount("delmapsensor", {{"mapid", "2"}, {"mapsensorid", first.at("sensorid")}})), 36);
    QCOMPARE(codeOf(place(sdk, localMap, "FRD0005", cameraAt("0", "0"))), 7);
    QCOMPARE(codeOf(sdk.askAccount("delmap", {{"mapid", localMap}})), 34);
    QVERIFY(sdk.signIn(colleague));
    QCOMPARE(attempts(localMap), std::set<int>{35});
    QVERIFY(mapsIn(sdk).empty() && mapsIn(sdk, "sharemaps").empty());
}

void tst_Maps::othersHearOfIt() {
    TestSdk one;
    TestSdk same; // another process of the account
    TestSdk friends;
    TestSdk third;
    QCOMPARE(one.start(), emSuccess);
    for (TestSdk* sdk : {&same, &friends, &third}) {
        sdk->joinStoreOf(one);
        QCOMPARE(sdk->start(), emSuccess);
    }
    QVERIFY(one.signIn() && same.signIn() && friends.signIn(colleague) && third.signIn(giver));
    const auto share = [&](Json phones) {
        return codeOf(one.askAccount("setmapshare", {{"mapid", localMap}, {"friendphones", std::move(phones)}}));
    };
    const auto settleAll = [&] {
        for (TestSdk* sdk : {&one, &same, &friends, &third})
            settle(*sdk);
    };
    settleAll();
    QCOMPARE(share({"13300133000"}), 16);
    QCOMPARE(share({colleague, colleague}), 0);
    for (TestSdk* sdk : {&one, &same, &friends})
        QVERIFY(!sdk->client.waitForType("freshuserinfo").is_null());
    QCOMPARE(mapIn(same, localMap).at("friends"), (Json{colleague}));
    QCOMPARE(mapIn(friends, localMap, "sharemaps").at("userid"), Json(owner));
    QCOMPARE(mapIn(friends, localMap, "sharemaps").at("sensors"), mapIn(one, localMap).at("sensors"));
    settleAll();
    QCOMPARE(codeOf(place(one, localMap, "CAM0052", cameraAt("0.1", "0.1"))), 0);
    for (TestSdk* sdk : {&one, &same, &friends}) {
        QVERIFY(!sdk->client.waitForType("freshuserinfo").is_null());
        // Once, and lists of devices are left alone; a request makes each look for itself.
        QCOMPARE(codeOf(sdk->askAccount("getfriends")), 0);
        sdk->settle();
        QCOMPARE(sdk->client.all().size(), std::size_t{1});
    }
    QCOMPARE(codeOf(third.askAccount("getfriends")), 0);
    third.settle();
    QVERIFY(third.client.all().empty());
    settleAll();
    QCOMPARE(share(Json::array()), 0);
    QVERIFY(!friends.client.waitForType("freshuserinfo").is_null());
    QVERIFY(mapsIn(friends, "sharemaps").empty());
}

void tst_Maps::friendshipEnds() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("setmapshare", {{"mapid", localMap}, {"friendphones", {giver}}})), 0);
    settle(sdk);
    QCOMPARE(codeOf(sdk.askAccount("delfriend", {{"friendphone", giver}})), 0);
    QVERIFY(!sdk.client.waitForType("freshuserinfo").is_null());
    QVERIFY(mapsIn(sdk, "sharemaps").empty());
    QVERIFY(mapIn(sdk, localMap).at("friends").empty());
    QVERIFY(sdk.signIn(giver));
    QVERIFY(mapsIn(sdk, "sharemaps").empty());
    QCOMPARE(mapsIn(sdk).size(), std::size_t{1});
}

void tst_Maps::markersGoWithWhatTheyMark() {
    TestSdk sdk;
    TestSdk friends;
    QCOMPARE(sdk.start(), emSuccess);
    friends.joinStoreOf(sdk);
    QCOMPARE(friends.start(), emSuccess);
    QVERIFY(sdk.signIn() && friends.signIn(colleague));
    // A friend's map shows a device of the first account: 一号泵组, shared with the friend.
    QCOMPARE(codeOf(friends.askAccount("submitmap", {{"mapinfo", {{"name", "图"}, {"type", "online"}}}})), 0);
    const std::string theirs = mapsIn(friends).at(0).at("pid").get<std::string>();
    const Json pump = {{"name", "泵"}, {"pid", 101}, {"lat", 1}, {"lng", 2}};
    QCOMPARE(codeOf(place(friends, theirs, "CAM0049", pump)), 7);
    QCOMPARE(codeOf(place(friends, theirs, "CAM0052", pump)), 0);
    settle(friends);
    QCOMPARE(markerCount(sdk, localMap, "CAM0052", "101"), std::size_t{1});
    const Json plan = sdk.device("CAM0052").at("linkages").at(0).at("linkplanid");
    QCOMPARE(codeOf(sdk.askAccount("dellinkplan", {{"ipncid", "CAM0052"}, {"linkplanid", plan}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("delsensor", {{"ipncid", "CAM0052"}, {"pid", 103}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("delsensor", {{"ipncid", "CAM0052"}, {"pid", 101}})), 0);
    QVERIFY(!friends.client.waitForType("freshuserinfo").is_null());
    QCOMPARE(markerCount(sdk, localMap, "CAM0052", "101"), std::size_t{0});
    QCOMPARE(markerCount(sdk, localMap, "CAM0052", ""), std::size_t{1}); // the camera itself stays
    QVERIFY(mapsIn(friends).at(0).at("sensors").empty());
    settle(sdk);
    QCOMPARE(codeOf(sdk.askAccount("delipnc", {{"ipncid", "CAM0052"}})), 0);
    QVERIFY(!sdk.client.waitForType("freshuserinfo").is_null());
    QCOMPARE(markerCount(sdk, localMap, "CAM0052", ""), std::size_t{0});
    QCOMPARE(sdk.sqlite("select count(*) from mapmarkers where ipncid = 'CAM0052'"), std::string("0"));
}

void tst_Maps::ownMapsLoseWhatIsGivenBack() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(place(sdk, localMap, "FRD0001", cameraAt("0", "0"))), 0);
    QCOMPARE(codeOf(place(sdk, localMap, "FRD0002", cameraAt("0", "0"))), 0);
    QCOMPARE(codeOf(sdk.askAccount("delipnc", {{"ipncid", "FRD0001"}})), 0);
    QCOMPARE(markerCount(sdk, localMap, "FRD0001", ""), std::size_t{0});
    // Its owner's map keeps it.
    QCOMPARE(mapIn(sdk, giversMap, "sharemaps").at("sensors").size(), std::size_t{4});
    // A share that was taken back may come again; the marker waits, and can be deleted.
    QVERIFY(sdk.signIn(giver));
    const Json back = {{"friendphone", owner}, {"ipncid", "FRD0002"}, {"share", false}};
    QCOMPARE(codeOf(sdk.askAccount("setfrienddeviceshare", back)), 0);
    QVERIFY(sdk.signIn());
    QCOMPARE(markerCount(sdk, localMap, "FRD0002", ""), std::size_t{1});
    const Json marker = mapIn(sdk, localMap).at("sensors").back();
    QCOMPARE(codeOf(place(sdk, localMap, "FRD0002", marker)), 7);
    QCOMPARE(codeOf(sdk.askAccount("delmapsensor", {{"mapid", localMap}, {"mapsensorid", marker.at("sensorid")}})),
             0);
}

void tst_Maps::referencePoints_data() {
    QTest::addColumn<QByteArray>("info");
    QTest::addColumn<int>("code");
    QTest::newRow("texts") << QByteArray(R"({"locations":[{"x":"1.5","y":"-2"}]})") << 0;
    QTest::newRow("numbers") << QByteArray(R"({"locations":[{"x":1.5,"y":-2}],"more":1})") << 0;
    QTest::newRow("nan") << QByteArray(R"({"locations":[{"x":"nan","y":"0"}]})") << 2;
    QTest::newRow("half a point") << QByteArray(R"({"locations":[{"x":"1"}]})") << 2;
    QTest::newRow("no list") << QByteArray(R"({"locations":{}})") << 2;
    QTest::newRow("no object") << QByteArray("[]") << 2;
}

void tst_Maps::referencePoints() {
    QFETCH(QByteArray, info);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    settle(sdk);
    // The device record's board with other points, as the client sends it.
    Json marker = mapIn(sdk, localMap).at("sensors").at(14);
    QCOMPARE(marker.at("pid"), Json("261"));
    const auto ipncid = marker.at("ipncid").get<std::string>();
    Json board = sdk.device(ipncid).at("interfaces").at(0);
    board["info"] = Json::parse(info.toStdString());
    const Json response = sdk.askAccount("submitsensorinfo", {{"ipncid", ipncid}, {"sensorinfo", board}});
    QVERIFY2(codeOf(response) == code, toText(response).c_str());
    if (code != 0)
        return;
    QVERIFY(!sdk.client.waitForType("freshuserinfo").is_null());
    marker = mapIn(sdk, localMap).at("sensors").at(14);
    QCOMPARE(marker.at("info"), (Json{{"locations", {{{"x", "1.5"}, {"y", "-2"}}}}}));
    QCOMPARE(marker.at("protocol"), Json("4353"));
}

void tst_Maps::limits() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(sdk.sqlite("with recursive n(i) as (select 1 union all select i + 1 from n where i < 196)"
                        " insert into maps select 1000 + i, 1, 0, '', 0, '{}' from n;"
                        "with recursive n(i) as (select 1 union all select i + 1 from n where i < 1999)"
                        " insert into mapmarkers select 10000 + i, 1001, 'CAM0001', 0, '{}' from n"),
             std::string());
    const Json map = {{"mapinfo", {{"name", "图"}, {"type", "online"}}}};
    QCOMPARE(codeOf(sdk.askAccount("submitmap", map)), 0);
    QCOMPARE(codeOf(sdk.askAccount("submitmap", map)), 32);
    Json info = {{"name", "x"}, {"lat", 0}, {"lng", 0}};
    QCOMPARE(codeOf(place(sdk, "1001", "CAM0001", info)), 0);
    QCOMPARE(codeOf(place(sdk, "1001", "CAM0001", info)), 32);
    info["sensorid"] = "10001"; // one that is there can be moved all the same
    QCOMPARE(codeOf(place(sdk, "1001", "CAM0001", info)), 0);
}

QTEST_APPLESS_MAIN(tst_Maps)
#include "tst_Maps.moc"
