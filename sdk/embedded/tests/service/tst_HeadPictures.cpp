#include "TestSdk.h"
#include "world/FirstWorld.h"

#include <QBuffer>
#include <QImage>
#include <QtTest>

#include <sys/stat.h>

#include <filesystem>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Pictures of accounts: only whole PNG and JPEG files are taken, and they come back as they were.
class tst_HeadPictures final : public QObject {
    Q_OBJECT

private slots:
    void files_data();
    void files();
    void largestFile();
    void paths_data();
    void paths();
    void whatIsNoFile();
    void friendsPicture();
    void linksAreNotFollowed();
};

namespace {

QByteArray picture(const char* format, int side = 32) {
    QImage image(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            image.setPixel(x, y, qRgb(x * 5 % 256, y * 7 % 256, (x * y) % 256));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

int upload(TestSdk& sdk, const std::filesystem::path& file) {
    return codeOf(sdk.ask({{"reqtype", "urlreq"},
                           {"urlreq", {{"reqtype", "uploadhead"}, {"params", {{"uploadpath", file.string()}}}}}}));
}

Json download(TestSdk& sdk, const Json& params) {
    return sdk.ask({{"reqtype", "urlreq"}, {"urlreq", {{"reqtype", "downhead"}, {"params", params}}}});
}

} // namespace

void tst_HeadPictures::files_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("code");
    const QByteArray png = picture("PNG");
    const QByteArray jpeg = picture("JPEG");
    QVERIFY(!png.isEmpty() && !jpeg.isEmpty());
    QTest::newRow("PNG") << png << 0;
    QTest::newRow("JPEG") << jpeg << 0;
    QTest::newRow("BMP") << picture("BMP") << 19;
    QTest::newRow("empty") << QByteArray() << 19;
    QTest::newRow("text") << QByteArray("not a picture") << 19;
    QTest::newRow("mark of a PNG alone") << png.left(8) << 19;
    QTest::newRow("mark of a JPEG alone") << jpeg.left(3) << 19;
    QTest::newRow("half a PNG") << png.left(png.size() / 2) << 19;
    QByteArray damaged = png;
    damaged[damaged.size() / 2] = static_cast<char>(~damaged[damaged.size() / 2]);
    QTest::newRow("a damaged PNG") << damaged << 19;
    QByteArray huge = png;
    huge.replace(16, 8, QByteArray::fromHex("0000ffff0000ffff"));
    QTest::newRow("a PNG of four billion pixels") << huge << 19;
    QTest::newRow("a script behind a mark") << QByteArray(png.left(8) + "<script>alert(1)</script>") << 19;
}

void tst_HeadPictures::files() {
    QFETCH(QByteArray, content);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.write("chosen.bmp", content.toStdString()); // its name means nothing
    QCOMPARE(upload(sdk, sdk.path("chosen.bmp")), code);
    const Json person = sdk.askAccount("getpersioninfo").at("resp").at("persioninfo");
    QCOMPARE(person.at("hashead"), Json(code == 0));
    sdk.runtime.cleanup();
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json response = download(sdk, {{"downpath", sdk.path("head.jpg").string()}});
    QCOMPARE(codeOf(response), code == 0 ? 0 : 404);
    if (code == 0) {
        QCOMPARE(response.at("resp").at("size"), Json(content.size()));
        QVERIFY(contentOf(sdk.path("head.jpg")) == content);
    }
    QCOMPARE(std::filesystem::exists(sdk.path("head.jpg")), code == 0);
}

void tst_HeadPictures::largestFile() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    // What follows the end of a PNG belongs to the file.
    const QByteArray png = picture("PNG");
    sdk.write("below", (png + QByteArray(1024 * 1024 - 1 - png.size(), '\0')).toStdString());
    sdk.write("above", (png + QByteArray(1024 * 1024 - png.size(), '\0')).toStdString());
    QCOMPARE(upload(sdk, sdk.path("above")), 19);
    QCOMPARE(upload(sdk, sdk.path("below")), 0);
    QCOMPARE(codeOf(download(sdk, {{"downpath", sdk.path("head").string()}})), 0);
    QVERIFY(contentOf(sdk.path("head")) == contentOf(sdk.path("below")));
}

void tst_HeadPictures::paths_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("code");
    QTest::newRow("missing") << QByteArray() << 2;
    QTest::newRow("a number") << QByteArray("5") << 2;
    QTest::newRow("empty") << QByteArray(R"("")") << 2;
    QTest::newRow("relative") << QByteArray(R"("head.png")") << 2;
    QTest::newRow("NUL") << QByteArray(R"("/tmp/a\u0000b")") << 2;
    QTest::newRow("10,000 characters") << "\"/" + QByteArray(10000, 'x') + '"' << 2;
    QTest::newRow("nothing there") << QByteArray(R"("/nothing/here.png")") << 19;
}

void tst_HeadPictures::paths() {
    QFETCH(QByteArray, value);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.write("head.png", picture("PNG").toStdString());
    QCOMPARE(upload(sdk, sdk.path("head.png")), 0);
    for (const char* key : {"uploadpath", "downpath"}) {
        Json params = Json::object();
        if (!value.isEmpty())
            params[key] = Json::parse(value.toStdString());
        const char* operation = std::string(key) == "uploadpath" ? "uploadhead" : "downhead";
        QCOMPARE(codeOf(sdk.ask({{"reqtype", "urlreq"}, {"urlreq", {{"reqtype", operation}, {"params", params}}}})),
                 code);
    }
}

void tst_HeadPictures::whatIsNoFile() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(upload(sdk, sdk.path("service")), 19);
    // Nobody ever writes to this one: reading it would not end.
    QCOMPARE(mkfifo(sdk.path("pipe").c_str(), 0600), 0);
    QCOMPARE(upload(sdk, sdk.path("pipe")), 19);
    QCOMPARE(upload(sdk, "/dev/zero"), 19);
    sdk.write("head.png", picture("PNG").toStdString());
    QCOMPARE(upload(sdk, sdk.path("head.png")), 0);
    QCOMPARE(codeOf(download(sdk, {{"downpath", sdk.path("service").string()}})), 19);
    QVERIFY(std::filesystem::is_directory(sdk.path("service")));
    for (const std::string& name : sdk.filesIn("."))
        QVERIFY(name.find(".part") == std::string::npos);
}

void tst_HeadPictures::friendsPicture() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn("13900139000"));
    sdk.write("head.png", picture("PNG").toStdString());
    QCOMPARE(upload(sdk, sdk.path("head.png")), 0);
    const Json params = {{"downpath", sdk.path("friend.jpg").string()}, {"friendphone", "13900139000"}};
    QVERIFY(sdk.signIn("13700137000"));
    QCOMPARE(codeOf(download(sdk, params)), 16);
    QVERIFY(!std::filesystem::exists(sdk.path("friend.jpg")));
    QVERIFY(sdk.signIn());
    QCOMPARE(codeOf(download(sdk, params)), 0);
    QVERIFY(contentOf(sdk.path("friend.jpg")) == contentOf(sdk.path("head.png")));
    QCOMPARE(codeOf(download(sdk, {{"downpath", sdk.path("own.jpg").string()}})), 404);
}

void tst_HeadPictures::linksAreNotFollowed() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    sdk.write("head.png", picture("PNG").toStdString());
    sdk.write("precious", "kept");
    QCOMPARE(upload(sdk, sdk.path("head.png")), 0);
    std::filesystem::create_symlink(sdk.path("precious"), sdk.path("head.jpg"));
    QCOMPARE(codeOf(download(sdk, {{"downpath", sdk.path("head.jpg").string()}})), 0);
    QCOMPARE(contentOf(sdk.path("precious")), QByteArray("kept"));
    QVERIFY(!std::filesystem::is_symlink(sdk.path("head.jpg")));
    QVERIFY(contentOf(sdk.path("head.jpg")) == contentOf(sdk.path("head.png")));
}

QTEST_APPLESS_MAIN(tst_HeadPictures)
#include "tst_HeadPictures.moc"
