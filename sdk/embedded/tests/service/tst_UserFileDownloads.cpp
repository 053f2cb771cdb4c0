#include "UserFilesWorld.h"
#include "world/FirstWorld.h"

#include <QImage>
#include <QtTest>

#include <filesystem>

using namespace ipncsdk;
using namespace ipncsdk::test;
namespace fs = std::filesystem;

/// Who may read which pictures of maps and icons, and where they are written.
class tst_UserFileDownloads final : public QObject {
    Q_OBJECT

private slots:
    void downloads_data();
    void downloads();
    void publicIcons();
    void linkIsNotFollowed();
    void iconsOfFriends();
};

void tst_UserFileDownloads::downloads_data() {
    QTest::addColumn<QByteArray>("patch"); // merged into a good download of an icon
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const QByteArray& patch, int code) {
        QTest::newRow(name) << patch << code;
    };
    row("good", "{}", 0);
    row("own by number", R"({"userid":"13800138000"})", 0);
    row("another kind", R"({"type":"maps"})", 404);
    row("unknown kind", R"({"type":"heads"})", 2);
    row("unknown name", R"({"filename":"b.png"})", 404);
    row("out of the folder", R"({"filename":"../service.db"})", 2);
    row("absolute", R"({"filename":"/etc/passwd"})", 2);
    row("backslashes", R"({"filename":"..\\service.db"})", 2);
    row("dots", R"({"filename":".."})", 2);
    row("pattern", R"({"filename":"%.png"})", 404);
    row("SQL", R"({"filename":"' or '1'='1"})", 404);
    row("of a wrong type", R"({"filename":1})", 2);
    row("savepath relative", R"({"savepath":"out.png"})", 2);
    row("savepath without folder", R"({"savepath":"/nowhere/at/all/out.png"})", 19);
    row("savepath a folder", R"({"savepath":"/tmp/"})", 2);
    row("no savepath", R"({"savepath":null})", 2);
    row("another's", R"({"userid":"13900139000"})", 404);
    row("nobody's", R"({"userid":"12345678"})", 404);
    row("not a public one", R"({"public":true})", 404);
    row("public as a text", R"({"public":"true"})", 2);
}

void tst_UserFileDownloads::downloads() {
    QFETCH(QByteArray, patch);
    QFETCH(int, code);
    UserFilesWorld user;
    QVERIFY(user.good);
    QCOMPARE(codeOf(flow(user.sdk, iconUpload(user.put("in/a.png", picture("PNG"))))), 0);
    user.sdk.write("out/older", "");
    Json params = {{"type", "icons"}, {"filename", "a.png"}, {"savepath", user.sdk.path("out/out.png").string()}};
    params.merge_patch(Json::parse(patch.toStdString()));
    const Json response = download(user.sdk, params);
    QVERIFY2(codeOf(response) == code, toText(response).c_str());
    QCOMPARE(user.sdk.filesIn("out").size(), std::size_t{code == 0 ? 2U : 1U});
    if (code == 0)
        QVERIFY(contentOf(user.sdk.path("out/out.png")) == picture("PNG"));
}

void tst_UserFileDownloads::publicIcons() {
    UserFilesWorld user;
    QVERIFY(user.good);
    const Json info = user.sdk.document("userinfo");
    for (const Json& icon : info.at("fileinfo").at("icons").at("public")) {
        const auto target = user.sdk.path("icon.png");
        QCOMPARE(codeOf(download(user.sdk, {{"type", "icons"},
                                            {"filename", icon.at("filename")},
                                            {"public", true},
                                            {"savepath", target.string()}})),
                 0);
        const QByteArray bytes = contentOf(target);
        QCOMPARE(hashOf(bytes), icon.at("hash").get<std::string>());
        QCOMPARE(QImage::fromData(bytes, "PNG").size(), QSize(64, 64));
    }
}

void tst_UserFileDownloads::linkIsNotFollowed() {
    UserFilesWorld user;
    QVERIFY(user.good);
    QCOMPARE(codeOf(flow(user.sdk, iconUpload(user.put("in/a.png", picture("PNG"))))), 0);
    user.sdk.write("precious", "kept");
    fs::create_symlink(user.sdk.path("precious"), user.sdk.path("out.png"));
    const Json params = {{"type", "icons"}, {"filename", "a.png"}, {"savepath", user.sdk.path("out.png").string()}};
    QCOMPARE(codeOf(download(user.sdk, params)), 0);
    QCOMPARE(contentOf(user.sdk.path("precious")), QByteArray("kept"));
    QVERIFY(!fs::is_symlink(user.sdk.path("out.png")));
}

void tst_UserFileDownloads::iconsOfFriends() {
    UserFilesWorld user;
    QVERIFY(user.good);
    const QByteArray bytes = picture("PNG");
    QCOMPARE(codeOf(flow(user.sdk, iconUpload(user.put("in/a.png", bytes)))), 0);
    QCOMPARE(codeOf(flow(user.sdk, iconUpload(user.put("in/b.png", bytes)))), 0);
    const Json map = flow(user.sdk, mapUpload(user.put("in/m.png", picture("PNG", 64, 64, 5)))).at("resp");
    const Json info = {{"name", "x"}, {"point", {{"x", "0"}, {"y", "0"}}}, {"icon", "a.png"}, {"iconpublic", false}};
    const Json marker = {{"mapid", map.at("mapid")}, {"ipncid", "CAM0001"}, {"sensorinfo", info}};
    QCOMPARE(codeOf(user.sdk.askAccount("submitmapsensor", marker)), 0);
    const auto codes = [&] {
        std::vector<int> all;
        for (Json params : {Json{{"type", "icons"}, {"filename", "a.png"}, {"userid", world::firstPhone}},
                            Json{{"type", "icons"}, {"filename", "b.png"}, {"userid", world::firstPhone}},
                            Json{{"type", "icons"}, {"filename", "a.png"}},
                            Json{{"type", "maps"}, {"filename", map.at("filename")}}}) {
            params["savepath"] = user.sdk.path("out.png").string();
            all.push_back(codeOf(download(user.sdk, params)));
        }
        return all;
    };
    QVERIFY(user.sdk.signIn("13700137000"));
    QCOMPARE(codes(), (std::vector<int>{404, 404, 404, 404}));
    QVERIFY(user.sdk.signIn());
    QCOMPARE(
        codeOf(user.sdk.askAccount("setmapshare", {{"mapid", map.at("mapid")}, {"friendphones", {"13700137000"}}})),
        0);
    QVERIFY(user.sdk.signIn("13700137000"));
    // The icon that the shared map shows, no other.
    QCOMPARE(codes(), (std::vector<int>{0, 404, 404, 0}));
}

QTEST_APPLESS_MAIN(tst_UserFileDownloads)
#include "tst_UserFileDownloads.moc"
