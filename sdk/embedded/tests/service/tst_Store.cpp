#include "TestSdk.h"
#include "service/PasswordHasher.h"
#include "world/FirstWorld.h"

#include <QProcess>
#include <QtTest>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <thread>
#include <vector>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// The store through its life: made, reopened, damaged, out of reach.
class tst_Store final : public QObject {
    Q_OBJECT

private slots:
    void firstStartMakesTheWorld();
    void whatWasWrittenIsThereAfterARestart();
    void damagedStoreIsSetAside_data();
    void damagedStoreIsSetAside();
    void olderStoreIsMigrated();
    void storeOfVersion2IsMigrated();
    void storeOfVersion3IsMigrated();
    void olderStoreWithoutATableIsSetAside();
    void manyProcessesMigrateOneStore();
    void setAsideStoreKeepsItsContent();
    void twoDamagedStoresInOneSecondBothStay();
    void emptyFileIsAFirstStart();
    void storeOutOfReachIsSaidAndSurvived_data();
    void storeOutOfReachIsSaidAndSurvived();
    void heldStoreRefusesChangesAndKeepsWhatItHas();
};

void tst_Store::firstStartMakesTheWorld() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    // Read by a program that knows nothing of ours.
    QCOMPARE(sdk.sqlite("pragma integrity_check"), std::string("ok"));
    QCOMPARE(sdk.sqlite("pragma foreign_key_check"), std::string());
    QCOMPARE(sdk.sqlite("pragma journal_mode"), std::string("wal"));
    QCOMPARE(sdk.sqlite("select count(*) from placements where accountid = 1"), std::string("72"));
    QCOMPARE(sdk.sqlite("select count(*) from placements p join devices d on d.ipncid = p.ipncid"
                        " where p.accountid = 1 and d.online = 1"),
             std::string("66"));
    QCOMPARE(sdk.sqlite("select distinct substr(passwordhash, 1, 10) from accounts"), std::string("$argon2id$"));
    QCOMPARE(sdk.sqlite("select count(*) from accounts where passwordhash like '%corvanta%'"), std::string("0"));
}

void tst_Store::whatWasWrittenIsThereAfterARestart() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(sdk.askAccount("addgroup", {{"name", "新分组"}}).at("retcode"), Json(0));
    const Json before = sdk.document("ipnclist");
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.document("ipnclist").at("ipnclist").empty()); // nobody is signed in after a start
    QVERIFY(sdk.signIn());
    QVERIFY(sdk.document("ipnclist") == before);
    QCOMPARE(before.at("group").back().at("name"), Json("新分组"));
    QVERIFY(sdk.client.ofType("servicenotice").empty());
}

void tst_Store::damagedStoreIsSetAside_data() {
    QTest::addColumn<QByteArray>("content"); // written over the file; empty: `statement` is run instead
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("statement");
    QTest::newRow("not a database") << QByteArray(8192, 'x') << 0 << QByteArray();
    QTest::newRow("a short text") << QByteArray("hello") << -1 << QByteArray();
    QTest::newRow("pages overwritten") << QByteArray(12000, '\x5a') << 4096 << QByteArray();
    QTest::newRow("cut off") << QByteArray() << 6000 << QByteArray();
    QTest::newRow("a table is missing") << QByteArray() << 0 << QByteArray("drop table parameters");
    QTest::newRow("a column is missing") << QByteArray() << 0 << QByteArray("alter table devices drop column phase");
    QTest::newRow("a later version") << QByteArray() << 0
                                     << QByteArray("update facts set value = '99' where name = 'schemaversion'");
    QTest::newRow("no version") << QByteArray() << 0 << QByteArray("delete from facts");
}

void tst_Store::damagedStoreIsSetAside() {
    QFETCH(QByteArray, content);
    QFETCH(int, offset);
    QFETCH(QByteArray, statement);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    const auto file = sdk.path("service/service.db");
    if (!statement.isEmpty()) {
        QCOMPARE(sdk.sqlite(statement.toStdString()), std::string());
    } else if (content.isEmpty()) {
        std::filesystem::resize_file(file, static_cast<std::uintmax_t>(offset));
    } else if (offset < 0) {
        sdk.write("service/service.db", content.toStdString());
    } else {
        std::fstream out(file, std::ios::binary | std::ios::in | std::ios::out);
        out.seekp(offset);
        out.write(content.data(), content.size());
    }

    QCOMPARE(sdk.start(), emSuccess);
    const Json notice = sdk.client.waitForType("servicenotice");
    const std::string prefix = "service.db.damaged-";
    std::string kept;
    for (const std::string& name : sdk.filesIn("service")) {
        if (name.rfind(prefix, 0) == 0 && name.size() == prefix.size() + 14)
            kept = name;
    }
    QVERIFY(!kept.empty());
    QVERIFY(notice.at("text").get<std::string>().find(kept) != std::string::npos);
    // A new world stands in its place.
    QVERIFY(sdk.signIn());
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").size(), std::size_t{72});
}

namespace {

/// Puts a store of version 1 into the SDK's folder; all accounts have the usual password.
void writeOlderStore(TestSdk& sdk) {
    std::ifstream in(STORE_VERSION_1);
    std::string script{std::istreambuf_iterator<char>(in), {}};
    const std::string hash = service::PasswordHasher(service::PasswordHasher::least()).hash(world::firstPassword);
    for (std::size_t at = 0; (at = script.find("HASH", at)) != std::string::npos;)
        script.replace(at, 4, hash);
    sdk.write("service/older.sql", script);
    QCOMPARE(sdk.sqlite(".read '" + sdk.path("service/older.sql").string() + "'"), std::string("wal"));
}

} // namespace

void tst_Store::olderStoreIsMigrated() {
    TestSdk sdk;
    writeOlderStore(sdk);
    sdk.write("config/service.json", R"({"cameras":[{"ipncid":"porch","main":"rtsp://192.0.2.1/"}]})");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    // What was there is there.
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").size(), std::size_t{2});
    QCOMPARE(sdk.device("CAM0001").at("nickname"), Json("改过的名"));
    QCOMPARE(sdk.askAccount("getpersioninfo").at("resp").at("persioninfo").at("nickname"), Json("老中心"));
    QVERIFY(sdk.document("firstaccount").empty());
    const Json read = sdk.askDevice({{"ipncid", "CAM0001"}, {"getcmds", {"mirror"}}});
    QCOMPARE(read.at("resp").at("getcmds").at("mirror"), Json(1));
    // What is new works.
    QCOMPARE(codeOf(sdk.askAccount("addipnc", {{"ipncid", "SPARE001"}, {"word", "word-0001"}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("addipnc", {{"ipncid", "SPARE002"}, {"word", "word-0002"}})), 18);
    QCOMPARE(codeOf(sdk.askAccount("delipnc", {{"ipncid", "CAM0001"}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("addipnc", {{"ipncid", "CAM0001"}, {"word", "word-cam0001"}})), 0);
    QCOMPARE(codeOf(sdk.askAccount("changepascode", {{"phonenumber", "13900139000"}})), 0);
    sdk.settle();
    QVERIFY(sdk.client.ofType("servicenotice").empty());
    sdk.runtime.cleanup();
    for (const std::string& name : sdk.filesIn("service"))
        QVERIFY(name.find(".damaged") == std::string::npos);
    // The tables are those of a new store.
    TestSdk fresh;
    QCOMPARE(fresh.start(), emSuccess);
    fresh.runtime.cleanup();
    const std::string columns =
        "select m.name, c.name, c.type, c.pk from sqlite_master m, pragma_table_info(m.name) c"
        " where m.type = 'table' order by 1, 2";
    QCOMPARE(sdk.sqlite(columns), fresh.sqlite(columns));
    QCOMPARE(sdk.sqlite("select value from facts where name = 'schemaversion'"), std::string("4"));
    QCOMPARE(sdk.sqlite("pragma foreign_key_check"), std::string());
}

namespace {

/// Makes a store of this version one of version 3.
constexpr auto withoutMaps = "drop table mapmarkers; drop table mapshares; drop table maps; drop table userfiles;"
                             "alter table accounts drop column filerevision;"
                             "delete from facts where name in ('lastmap', 'lastmapmarker');"
                             "update facts set value = '3' where name = 'schemaversion'";

} // namespace

void tst_Store::storeOfVersion3IsMigrated() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("setphoneparam", {{"nickname", "老中心"}})), 0);
    const Json plans = sdk.device("CAM0052").at("linkages");
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    const std::string shape = "select type, name, tbl_name from sqlite_master order by 1, 2";
    const std::string expected = sdk.sqlite(shape);
    QCOMPARE(sdk.sqlite(withoutMaps), std::string());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(sdk.device("CAM0052").at("linkages"), plans);
    QCOMPARE(sdk.askAccount("getpersioninfo").at("resp").at("persioninfo").at("nickname"), Json("老中心"));
    // The user's own world gets no maps of ours, but can have some.
    QVERIFY(sdk.document("userinfo").at("userconfig").at("maps").empty());
    const Json map = {{"mapinfo", {{"name", "图"}, {"type", "online"}}}};
    QCOMPARE(sdk.askAccount("submitmap", map).at("resp").at("mapid"), Json("1"));
    QCOMPARE(sdk.sqlite(shape), expected);
    QCOMPARE(sdk.sqlite("pragma foreign_key_check"), std::string());
    QVERIFY(sdk.client.ofType("servicenotice").empty());
}

void tst_Store::storeOfVersion2IsMigrated() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(sdk.askAccount("setphoneparam", {{"nickname", "老中心"}})), 0);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    const std::string shape = "select type, name, tbl_name from sqlite_master order by 1, 2";
    const std::string expected = sdk.sqlite(shape);
    QCOMPARE(sdk.sqlite(withoutMaps), std::string());
    QCOMPARE(sdk.sqlite("drop table linkplans; drop table alarms; drop table reportrules; drop table smsrecords;"
                        "alter table accounts drop column smsleft; alter table accounts drop column smsphone;"
                        "alter table accounts drop column smswarn;"
                        "update facts set value = '2' where name = 'schemaversion'"),
             std::string());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json person = sdk.askAccount("getpersioninfo").at("resp").at("persioninfo");
    QCOMPARE(person.at("nickname"), Json("老中心"));
    QCOMPARE(person.at("smsnum"), Json(200));
    QVERIFY(sdk.device("CAM0052").at("linkages").empty()); // the user's own world gets no plans of ours
    QCOMPARE(sdk.sqlite(shape), expected);
    QVERIFY(sdk.client.ofType("servicenotice").empty());
}

void tst_Store::olderStoreWithoutATableIsSetAside() {
    TestSdk sdk;
    writeOlderStore(sdk);
    QCOMPARE(sdk.sqlite("drop table shares"), std::string());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(!sdk.client.waitForType("servicenotice").is_null());
    QVERIFY(sdk.signIn());
    QCOMPARE(sdk.document("ipnclist").at("ipnclist").size(), std::size_t{72});
}

void tst_Store::manyProcessesMigrateOneStore() {
    TestSdk home;
    writeOlderStore(home);
    std::vector<std::unique_ptr<TestSdk>> sdks;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        sdks.push_back(std::make_unique<TestSdk>());
        sdks.back()->joinStoreOf(home);
        threads.emplace_back([sdk = sdks.back().get()] { sdk->start(); });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const auto& sdk : sdks) {
        QVERIFY(sdk->signIn());
        QCOMPARE(sdk->document("ipnclist").at("ipnclist").size(), std::size_t{1});
        QVERIFY(sdk->client.ofType("servicenotice").empty());
    }
}

namespace {

/// Stores that were set aside; each has a folder of users' files beside it.
std::vector<std::filesystem::path> storesSetAside(const TestSdk& sdk) {
    std::vector<std::filesystem::path> files;
    for (const std::string& name : sdk.filesIn("service")) {
        const auto file = sdk.path("service/" + name);
        if (name.find(".damaged-") != std::string::npos && std::filesystem::is_regular_file(file))
            files.push_back(file);
    }
    return files;
}

} // namespace

void tst_Store::setAsideStoreKeepsItsContent() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    QCOMPARE(sdk.sqlite("update accounts set nickname = 'kept' where id = 1; delete from facts"), std::string());
    QCOMPARE(sdk.start(), emSuccess);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    std::filesystem::remove(sdk.path("service/service.db"));
    const auto aside = storesSetAside(sdk);
    QCOMPARE(aside.size(), std::size_t{1});
    std::filesystem::copy_file(aside.front(), sdk.path("service/service.db"));
    QCOMPARE(sdk.sqlite("select nickname from accounts where id = 1"), std::string("kept"));
}

void tst_Store::twoDamagedStoresInOneSecondBothStay() {
    TestSdk sdk;
    for (int i = 0; i < 3; ++i) {
        sdk.write("service/service.db", "damaged " + std::to_string(i));
        QCOMPARE(sdk.start(), emSuccess);
        QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    }
    std::vector<std::string> contents;
    for (const auto& file : storesSetAside(sdk)) {
        std::ifstream in(file);
        std::string text;
        std::getline(in, text);
        contents.push_back(text);
    }
    std::sort(contents.begin(), contents.end());
    QVERIFY((contents == std::vector<std::string>{"damaged 0", "damaged 1", "damaged 2"}));
}

void tst_Store::emptyFileIsAFirstStart() {
    TestSdk sdk;
    sdk.write("service/service.db", "");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QVERIFY(sdk.client.ofType("servicenotice").empty());
}

void tst_Store::storeOutOfReachIsSaidAndSurvived_data() {
    QTest::addColumn<QByteArray>("store");
    QTest::newRow("a folder has its name") << QByteArray("taken");
    QTest::newRow("a file has its folder's name") << QByteArray("file/service.db");
#ifdef Q_OS_WIN
    QTest::newRow("a place where nothing can be made") << QByteArray("Q:/nothing/service.db");
#else
    QTest::newRow("a place where nothing can be made") << QByteArray("/proc/nothing/service.db");
#endif
}

void tst_Store::storeOutOfReachIsSaidAndSurvived() {
    QFETCH(QByteArray, store);
    TestSdk sdk;
    std::filesystem::create_directories(sdk.path("taken"));
    sdk.write("file", "");
    sdk.write("config/service.json", R"({"store": ")" + store.toStdString() + R"("})");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(!sdk.client.waitForType("servicenotice").is_null());
    const Json response = sdk.askAccount("checkphone", {{"phonenumber", "13800138000"}});
    QCOMPARE(response.at("retcode"), Json(20));
    QCOMPARE(response.at("resp").at("errcode"), Json("(store error)"));
    QVERIFY(!sdk.signIn());
    QVERIFY(std::filesystem::is_directory(sdk.path("taken")));
}

void tst_Store::heldStoreRefusesChangesAndKeepsWhatItHas() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    // Another program begins to write and does not end.
    QProcess other;
    sdk.openShell(other);
    other.write("begin immediate;\nselect 'begun';\n");
    QVERIFY(other.waitForReadyRead());
    QCOMPARE(other.readAll().trimmed(), QByteArray("begun"));

    QCOMPARE(sdk.askAccount("setphoneparam", {{"nickname", "新名"}}).at("retcode"), Json(20));
    QCOMPARE(sdk.askAccount("getpersioninfo").at("resp").at("persioninfo").at("nickname"), Json("园区监控中心"));
    other.closeWriteChannel();
    QVERIFY(other.waitForFinished());
    QCOMPARE(sdk.askAccount("setphoneparam", {{"nickname", "新名"}}).at("retcode"), Json(0));
    QCOMPARE(sdk.sqlite("select nickname from accounts where id = 1"), std::string("新名"));
}

QTEST_APPLESS_MAIN(tst_Store)
#include "tst_Store.moc"
