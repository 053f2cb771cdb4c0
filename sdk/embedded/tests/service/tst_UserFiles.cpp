#include "UserFilesWorld.h"

#include <QtEndian>
#include <QtTest>

#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <future>
#include <memory>

using namespace ipncsdk;
using namespace ipncsdk::test;
namespace fs = std::filesystem;

/// Pictures of maps and icons: what is taken, that it comes back as it was, and that nothing is left of what was not
/// kept.
class tst_UserFiles final : public QObject {
    Q_OBJECT

private slots:
    void contents_data();
    void contents();
    void requests_data();
    void requests();
    void mapComesBackAsItWas();
    void contentsAreKeptOnceAndAsLongAsNeeded();
    void iconsHaveNames();
    void stopLeavesNothing();
    void fullDisk();
    void startClearsUp();
    void damagedStoreTakesItsFilesAlong();
};

namespace {

/// A PNG whose header says another size; what follows is never read.
QByteArray resized(quint32 width, quint32 height) {
    QByteArray bytes = picture("PNG");
    qToBigEndian(width, bytes.data() + 16);
    qToBigEndian(height, bytes.data() + 20);
    quint32 crc = 0xFFFFFFFFU;
    for (int i = 12; i < 29; ++i) {
        crc ^= static_cast<unsigned char>(bytes[i]);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? crc >> 1U ^ 0xEDB88320U : crc >> 1U;
    }
    qToBigEndian(~crc, bytes.data() + 29);
    return bytes;
}

Json icons(TestSdk& sdk) {
    return sdk.document("userinfo").at("fileinfo").at("icons").at("user");
}

} // namespace

void tst_UserFiles::contents_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("mapCode");
    QTest::addColumn<int>("iconCode");
    const QByteArray png = picture("PNG");
    const QByteArray jpeg = picture("JPG");
    QByteArray damaged = png;
    damaged[17] = 'x';
    QTest::newRow("png") << png << 0 << 0;
    QTest::newRow("jpeg") << jpeg << 0 << 0;
    QTest::newRow("cut off behind the header") << png.left(40) << 0 << 19;
    QTest::newRow("png cut off in the header") << png.left(28) << 19 << 19;
    QTest::newRow("jpeg cut off in the header") << jpeg.left(60) << 19 << 19;
    QTest::newRow("jpeg's first bytes") << QByteArray("\xff\xd8\xff") << 19 << 19;
    QTest::newRow("jpeg without end") << QByteArray("\xff\xd8") + QByteArray(5000, '\xff') << 19 << 19;
    QTest::newRow("damaged header") << damaged << 19 << 19;
    QTest::newRow("empty") << QByteArray() << 19 << 19;
    QTest::newRow("text") << QByteArray("#!/bin/sh\n") << 19 << 19;
    QTest::newRow("gif") << QByteArray("GIF89a\1\0\1\0\0\0\0;", 14) << 19 << 19;
    QTest::newRow("svg") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg'/>") << 19 << 19;
    QTest::newRow("1024 wide") << picture("PNG", 1024, 16) << 0 << 0;
    QTest::newRow("1025 wide") << picture("PNG", 1025, 16) << 0 << 19;
    QTest::newRow("more than 1 MiB") << png + QByteArray(1024 * 1024, 'x') << 0 << 19;
    QTest::newRow("120 million pixels") << resized(12000, 10000) << 0 << 19;
    QTest::newRow("a row more") << resized(12000, 10001) << 19 << 19;
    QTest::newRow("sizes that overflow") << resized(0x7fffffff, 0x7fffffff) << 19 << 19;
    QTest::newRow("no height") << resized(10, 0) << 19 << 19;
}

void tst_UserFiles::contents() {
    QFETCH(QByteArray, bytes);
    QFETCH(int, mapCode);
    QFETCH(int, iconCode);
    UserFilesWorld user;
    QVERIFY(user.good);
    const auto file = user.put("in/图 1.dat", bytes);
    const Json map = flow(user.sdk, mapUpload(file));
    QVERIFY2(codeOf(map) == mapCode, toText(map).c_str());
    QCOMPARE(user.added(), std::size_t{mapCode == 0 ? 1U : 0U});
    const Json icon = flow(user.sdk, iconUpload(file));
    QVERIFY2(codeOf(icon) == iconCode, toText(icon).c_str());
    QCOMPARE(icons(user.sdk).size(), std::size_t{iconCode == 0 ? 1U : 0U});
    QCOMPARE(user.added(), std::size_t{mapCode == 0 ? 1U : 0U}); // the same content is kept once
}

void tst_UserFiles::requests_data() {
    QTest::addColumn<QByteArray>("patch"); // merged into a good upload of a map
    QTest::addColumn<int>("code");
    QTest::newRow("good") << QByteArray("{}") << 0;
    QTest::newRow("unknown type") << QByteArray(R"({"type":"videos"})") << 2;
    QTest::newRow("relative path") << QByteArray(R"({"uploadpath":"in/a.png"})") << 2;
    QTest::newRow("folder") << QByteArray(R"({"uploadpath":"/tmp"})") << 19;
    QTest::newRow("device") << QByteArray(R"({"uploadpath":"/dev/zero"})") << 19;
    QTest::newRow("missing") << QByteArray(R"({"uploadpath":"/nowhere/a.png"})") << 19;
    QTest::newRow("path of a wrong type") << QByteArray(R"({"uploadpath":["/tmp/a.png"]})") << 2;
    QTest::newRow("no mapinfo") << QByteArray(R"({"mapinfo":null})") << 2;
    QTest::newRow("online") << QByteArray(R"({"mapinfo":{"type":"online"}})") << 2;
    QTest::newRow("no name") << QByteArray(R"({"mapinfo":{"name":null}})") << 2;
    QTest::newRow("no range") << QByteArray(R"({"mapinfo":{"range":null}})") << 2;
    QTest::newRow("range is nan") << QByteArray(R"({"mapinfo":{"range":{"distance":{"w":"nan"}}}})") << 2;
}

void tst_UserFiles::requests() {
    QFETCH(QByteArray, patch);
    QFETCH(int, code);
    UserFilesWorld user;
    QVERIFY(user.good);
    Json message = mapUpload(user.put("in/a.png", picture("PNG")));
    message.merge_patch(Json::parse(patch.toStdString()));
    const Json response = flow(user.sdk, message);
    QVERIFY2(codeOf(response) == code, toText(response).c_str());
    QCOMPARE(response.at("state"), Json(code == 0 ? "ok" : "error"));
    QCOMPARE(user.added(), std::size_t{code == 0 ? 1U : 0U});
    TestSdk stranger;
    QCOMPARE(stranger.start(), emSuccess);
    QCOMPARE(codeOf(flow(stranger, message)), 3);
}

void tst_UserFiles::mapComesBackAsItWas() {
    UserFilesWorld user;
    QVERIFY(user.good);
    const QByteArray bytes = picture("PNG") + QByteArray(3 * 1024 * 1024, 'x');
    user.sdk.settle();
    user.sdk.client.clear();
    std::vector<Json> progress;
    const Json response = flow(user.sdk, mapUpload(user.put("in/a.png", bytes)), &progress);
    QCOMPARE(codeOf(response), 0);
    QVERIFY(!user.sdk.client.waitForType("freshuserinfo").is_null());
    // The clock stands, so one message is all that a tenth of a second allows.
    QCOMPARE(progress.size(), std::size_t{1});
    QCOMPARE(progress.front().at("state"), Json("progress"));
    QCOMPARE(progress.front().at("total"), Json(bytes.size()));
    QCOMPARE(response.at("done"), Json(bytes.size()));
    const Json map = user.sdk.document("userinfo").at("userconfig").at("maps").back();
    QCOMPARE(map.at("pid"), response.at("resp").at("mapid"));
    QCOMPARE(map.at("filename"), Json(hashOf(bytes) + ".png"));
    QCOMPARE(map.at("filename"), response.at("resp").at("filename"));
    QCOMPARE(map.at("size"), Json(bytes.size()));
    QCOMPARE(map.at("k"), Json(1));
    const auto target = user.sdk.path("out.png");
    const Json got =
        download(user.sdk, {{"type", "maps"}, {"filename", map.at("filename")}, {"savepath", target.string()}});
    QCOMPARE(codeOf(got), 0);
    QCOMPARE(got.at("clienttype"), Json("userdown"));
    QVERIFY(contentOf(target) == bytes);
    // With progress, for who asks for it.
    const Json params = {
        {"type", "maps"}, {"filename", map.at("filename")}, {"savepath", target.string()}, {"progress", true}};
    const Json request = {{"reqtype", "urlreq"}, {"urlreq", {{"reqtype", "userdown"}, {"params", params}}}};
    QCOMPARE(codeOf(flow(user.sdk, request, &progress)), 0);
    QCOMPARE(progress.size(), std::size_t{1});
}

void tst_UserFiles::contentsAreKeptOnceAndAsLongAsNeeded() {
    UserFilesWorld user;
    QVERIFY(user.good);
    TestSdk other; // another process and account
    other.joinStoreOf(user.sdk);
    QCOMPARE(other.start(), emSuccess);
    QVERIFY(other.signIn("13700137000"));
    const auto file = user.put("in/a.png", picture("PNG"));
    const Json first = flow(user.sdk, mapUpload(file));
    const Json second = flow(other, mapUpload(file));
    QCOMPARE(codeOf(flow(other, iconUpload(file))), 0);
    QCOMPARE(user.added(), std::size_t{1});
    QCOMPARE(codeOf(user.sdk.askAccount("delmap", {{"mapid", first.at("resp").at("mapid")}})), 0);
    QCOMPARE(codeOf(other.askAccount("delmap", {{"mapid", second.at("resp").at("mapid")}})), 0);
    QCOMPARE(user.added(), std::size_t{1});
    QCOMPARE(codeOf(other.askAccount("deluserfile", {{"type", "icons"}, {"filename", "a.png"}})), 0);
    QCOMPARE(user.added(), std::size_t{0});
}

void tst_UserFiles::iconsHaveNames() {
    UserFilesWorld user;
    QVERIFY(user.good);
    const auto code = [&](const std::string& name, int seed = 0) {
        return codeOf(flow(user.sdk, iconUpload(user.put("in/" + name, picture("PNG", 48, 32, seed)))));
    };
    QCOMPARE(code("泵.png"), 0);
    QCOMPARE(code("<b>'%1.png"), 2); // file systems elsewhere refuse it
    QCOMPARE(code("a:b.png"), 2);
    QCOMPARE(code(std::string(129, 'n')), 2);
    QCOMPARE(code("Pump.png", 1), 0);
    QCOMPARE(code("pump.PNG", 2), 37);
    QCOMPARE(user.added(), std::size_t{2});
    QCOMPARE(icons(user.sdk).size(), std::size_t{2});
    const Json icon = icons(user.sdk).at(0);
    QCOMPARE(icon.at("filename"), Json("Pump.png"));
    QCOMPARE(icon.at("hash"), Json(hashOf(picture("PNG", 48, 32, 1))));
    const auto remove = [&](const char* type, const char* name) {
        return codeOf(user.sdk.askAccount("deluserfile", {{"type", type}, {"filename", name}}));
    };
    QCOMPARE(remove("icons", "camera.png"), 33); // everybody's
    QCOMPARE(remove("icons", "../service.db"), 404);
    QCOMPARE(remove("maps", "Pump.png"), 2);
    QCOMPARE(remove("icons", "Pump.png"), 0);
    QCOMPARE(remove("icons", "Pump.png"), 404);
    QCOMPARE(user.sdk.sqlite("with recursive n(i) as (select 1 union all select i + 1 from n where i < 499)"
                             " insert into userfiles select 1, 'icons', 'i' || i, '', 0 from n"),
             std::string());
    QCOMPARE(code("one-more.png"), 32);
}

void tst_UserFiles::stopLeavesNothing() {
    UserFilesWorld user;
    QVERIFY(user.good);
    const auto file = user.put("in/a.png", picture("PNG") + QByteArray(8 * 1024 * 1024, 'x'));
    auto id = std::make_shared<std::atomic<int>>(0);
    auto stopped = std::make_shared<std::promise<void>>();
    auto messages = std::make_shared<std::atomic<int>>(0);
    int given = 0;
    user.sdk.runtime.requestMessage(toText(mapUpload(file)), given, [&, id, stopped, messages](const std::string&) {
        waitFor([&] { return *id > 0; });
        user.sdk.runtime.stopRequest(*id);
        if (++*messages == 1)
            stopped->set_value();
    });
    *id = given;
    stopped->get_future().wait();
    // Behind it on the files' worker, and then on the service's.
    QCOMPARE(codeOf(flow(user.sdk, iconUpload(user.put("in/b.png", picture("PNG"))))), 0);
    user.sdk.settle();
    QCOMPARE(messages->load(), 1);
    QCOMPARE(user.added(), std::size_t{1});
    QCOMPARE(user.sdk.document("userinfo").at("userconfig").at("maps").size(), std::size_t{3});
}

void tst_UserFiles::fullDisk() {
    UserFilesWorld user;
    QVERIFY(user.good);
    const QByteArray bytes = picture("PNG") + QByteArray(24 * 1024 * 1024, 'x');
    const auto file = user.put("in/a.png", bytes);
    const Json kept = flow(user.sdk, mapUpload(file));
    QCOMPARE(codeOf(kept), 0);
    const Json params = {{"type", "maps"},
                         {"filename", kept.at("resp").at("filename")},
                         {"savepath", user.sdk.path("out/out.png").string()}};
    user.sdk.write("out/out.png", "older");
    // A file that may not grow is what a program sees of a disk that is full.
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = before;
    limit.rlim_cur = 16 * 1024 * 1024;
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const int up = codeOf(flow(user.sdk, mapUpload(file)));
    const int down = codeOf(download(user.sdk, params));
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, old);
    QCOMPARE(up, 19);
    QCOMPARE(down, 19);
    QCOMPARE(user.added(), std::size_t{1});
    QCOMPARE(user.sdk.filesIn("out"), std::vector<std::string>{"out.png"});
    QCOMPARE(contentOf(user.sdk.path("out/out.png")), QByteArray("older"));
    QCOMPARE(codeOf(download(user.sdk, params)), 0);
}

void tst_UserFiles::startClearsUp() {
    UserFilesWorld user;
    QVERIFY(user.good);
    QCOMPARE(codeOf(flow(user.sdk, mapUpload(user.put("in/a.png", picture("PNG"))))), 0);
    QCOMPARE(user.sdk.runtime.cleanup(), emSuccess);
    const std::string inside = std::string(filesFolder) + "/";
    const std::string kept = hashOf(picture("PNG")) + ".png";
    user.put(inside + std::string(64, 'a') + ".png", "left by a crash");
    user.put(inside + "1-2.part", "being received by another process");
    user.put(inside + "readme.txt", "not ours");
    const auto old = user.put(inside + "3-4.part", "received long ago");
    fs::last_write_time(old, fs::file_time_type::clock::now() - std::chrono::hours(48));
    QCOMPARE(user.sdk.start(), emSuccess);
    std::vector<std::string> left = user.sdk.filesIn(filesFolder);
    QCOMPARE(left.size(), user.count + 3);
    for (const std::string& name : {kept, std::string("1-2.part"), std::string("readme.txt")})
        QVERIFY(std::find(left.begin(), left.end(), name) != left.end());
}

void tst_UserFiles::damagedStoreTakesItsFilesAlong() {
    UserFilesWorld user;
    QVERIFY(user.good);
    QCOMPARE(codeOf(flow(user.sdk, mapUpload(user.put("in/a.png", picture("PNG"))))), 0);
    QCOMPARE(user.sdk.runtime.cleanup(), emSuccess);
    user.sdk.write("service/service.db", "no store");
    QCOMPARE(user.sdk.start(), emSuccess);
    std::string aside;
    for (const std::string& name : user.sdk.filesIn("service")) {
        if (name.find(".damaged-") != std::string::npos && name.find(".files") != std::string::npos)
            aside = name;
    }
    QCOMPARE(user.sdk.filesIn("service/" + aside).size(), user.count + 1);
    QCOMPARE(user.sdk.filesIn(filesFolder).size(), user.count);
}

QTEST_APPLESS_MAIN(tst_UserFiles)
#include "tst_UserFiles.moc"
