#include "Sight.h"
#include "TestSdk.h"
#include "scene/CodeScene.h"
#include "world/FirstWorld.h"
#include "world/MeasuringWorld.h"

#include <QImage>
#include <QtTest>

#include <filesystem>

using namespace ipncsdk;
using namespace ipncsdk::test;

namespace {

const Json calibration = {{"info",
                           {{"QRwidth", "220"},
                            {"cameraMatrix", "[1004, 0, 648.5;\n 0, 1001, 352;\n 0, 0, 1]"},
                            {"inintDataList", {{"qr_inint_x", "1.5"}}},
                            {"input", {{{"pid", 1201}, {"type", "QRcode_x"}, {"isupload", true}}}},
                            {"未来", {1, nullptr, "\"'<br />"}}}}};

Json measuring(const char* type, const std::string& ipncid, const Json& value) {
    return {{"type", type}, {"ipncid", ipncid}, {type, value}};
}

int retcodeOf(TestSdk& sdk, const Json& command) {
    return sdk.command(command).at("retcode").get<int>();
}

cv::Mat1b greyOf(const QImage& image) {
    const QImage grey = image.convertToFormat(QImage::Format_Grayscale8);
    return cv::Mat(grey.height(), grey.width(), CV_8U, const_cast<uchar*>(grey.constBits()),
                   static_cast<std::size_t>(grey.bytesPerLine()))
        .clone();
}

/// A picture of the camera as it is now; a null one when none comes.
QImage pictureOf(TestSdk& sdk, const std::string& ipncid) {
    auto image = std::make_shared<std::promise<QImage>>();
    auto future = image->get_future();
    int id = 0;
    sdk.runtime.requestMessage(
        toText({{"reqtype", "preview"}, {"ipncid", ipncid}, {"width", 640}}), id, [image](const std::string& text) {
            const Json answer = Json::parse(text);
            QImage picture;
            if (answer.at("retcode") == 0) {
                const auto address = answer.at("data").get<std::uintptr_t>();
                picture.loadFromData(reinterpret_cast<const uchar*>(address), answer.at("len").get<int>());
            }
            image->set_value(picture);
        });
    return future.wait_for(std::chrono::minutes(1)) == std::future_status::ready ? future.get() : QImage();
}

int switchOutput(TestSdk& sdk, const char* ipncid, int pid, int value) {
    return codeOf(
        sdk.askDevice({{"ipncid", ipncid}, {"setcmds", {{"sensorwrite", {{"pid", pid}, {"value", value}}}}}}));
}

} // namespace

/// How cameras measure is kept by the service; the cameras of the first start that can be measured.
class tst_Measuring final : public QObject {
    Q_OBJECT

private slots:
    void keptAsItIs();
    void refused_data();
    void refused();
    void everybodySeesIt();
    void keptOfConfiguredCameras();
    void worldCanBeMeasured();
};

void tst_Measuring::keptAsItIs() {
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json before = sdk.device("CAM0001").at("info");
    QVERIFY(before.at("QRinfo").empty() && before.at("Laserinfo").empty());
    sdk.settle();
    sdk.client.clear();
    QCOMPARE(sdk.command(measuring("QRinfo", "CAM0001", calibration)),
             (Json{{"type", "QRinfo"}, {"retcode", 0}, {"ipncid", "CAM0001"}}));
    QVERIFY(!sdk.client.waitForType("freshlist").is_null());
    sdk.settle();
    QCOMPARE(sdk.client.ofType("freshlist").size(), std::size_t{1});
    QCOMPARE(retcodeOf(sdk, measuring("Laserinfo", "CAM0001", {{"info", {{"scale", "0.5"}}}})), 0);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Json expected = before;
    expected["QRinfo"] = calibration;
    expected["Laserinfo"] = {{"info", {{"scale", "0.5"}}}};
    QCOMPARE(sdk.device("CAM0001").at("info"), expected);
    // A later one takes the place of the whole.
    QCOMPARE(retcodeOf(sdk, measuring("QRinfo", "CAM0001", {{"info", Json::object()}})), 0);
    QCOMPARE(sdk.device("CAM0001").at("info").at("QRinfo"), (Json{{"info", Json::object()}}));
    // So it is of a camera that cannot be reached now.
    QCOMPARE(retcodeOf(sdk, measuring("QRinfo", "CAM0061", calibration)), 0);
}

void tst_Measuring::refused_data() {
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const Json& command, int code) {
        QTest::newRow(name) << QByteArray::fromStdString(toText(command)) << code;
    };
    const auto sized = [](std::size_t bytes) {
        return Json{{"info", {{"x", std::string(bytes, 'x')}}}};
    };
    row("no device", {{"type", "QRinfo"}, {"QRinfo", calibration}}, 2);
    row("device of a number", {{"type", "QRinfo"}, {"ipncid", 1}, {"QRinfo", calibration}}, 2);
    row("nothing to keep", {{"type", "QRinfo"}, {"ipncid", "CAM0001"}}, 2);
    row("under another name", {{"type", "QRinfo"}, {"ipncid", "CAM0001"}, {"Laserinfo", calibration}}, 2);
    row("a text", measuring("Laserinfo", "CAM0001", "x"), 2);
    row("a list", measuring("Laserinfo", "CAM0001", Json::array({1})), 2);
    row("no info", measuring("QRinfo", "CAM0001", {{"input", Json::array()}}), 2);
    row("info is a list", measuring("QRinfo", "CAM0001", {{"info", Json::array()}}), 2);
    row("large", measuring("QRinfo", "CAM0001", sized(65'000)), 0);
    row("too large", measuring("QRinfo", "CAM0001", sized(65'536)), 2);
    row("unknown device", measuring("QRinfo", "x'; drop table devices; --", calibration), 7);
    row("device that waits", measuring("QRinfo", "SPARE001", calibration), 7);
    row("of a friend", measuring("QRinfo", "FRD0001", calibration), 6);
}

void tst_Measuring::refused() {
    QFETCH(QByteArray, command);
    QFETCH(int, code);
    TestSdk sdk;
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json message = Json::parse(command.toStdString());
    const Json before = sdk.document("ipnclist");
    QCOMPARE(retcodeOf(sdk, message), code);
    QCOMPARE(sdk.document("ipnclist") == before, code != 0);
    QCOMPARE(sdk.command({{"type", "logout"}}).at("retcode"), Json(0));
    QCOMPARE(retcodeOf(sdk, message), 3);
}

void tst_Measuring::everybodySeesIt() {
    TestSdk one;
    TestSdk two;
    TestSdk three;
    two.joinStoreOf(one);
    three.joinStoreOf(one);
    QVERIFY(one.start() == emSuccess && two.start() == emSuccess && three.start() == emSuccess);
    QVERIFY(one.signIn() && two.signIn() && three.signIn("13700137000")); // who sees CAM0052, and not CAM0001
    for (TestSdk* sdk : {&one, &two, &three}) {
        sdk->settle();
        sdk->client.clear();
    }
    QCOMPARE(retcodeOf(one, measuring("QRinfo", "CAM0052", calibration)), 0);
    for (TestSdk* sdk : {&one, &two, &three}) {
        QVERIFY(!sdk->client.waitForType("freshlist").is_null());
        QCOMPARE(sdk->device("CAM0052").at("info").at("QRinfo"), calibration);
        sdk->client.clear();
    }
    QCOMPARE(retcodeOf(three, measuring("QRinfo", "CAM0052", calibration)), 6);
    QCOMPARE(retcodeOf(one, measuring("QRinfo", "CAM0001", calibration)), 0);
    QVERIFY(!two.client.waitForType("freshlist").is_null());
    three.settle();
    QVERIFY(three.client.ofType("freshlist").empty());
}

void tst_Measuring::keptOfConfiguredCameras() {
    TestSdk sdk;
    sdk.write("config/service.json", R"({"cameras":[{"ipncid":"porch","main":"rtsp://192.0.2.1/"}]})");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(retcodeOf(sdk, measuring("QRinfo", "porch", calibration)), 0);
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
    // The file decides on the name, not on this.
    sdk.write("config/service.json",
              R"({"cameras":[{"ipncid":"porch","name":"门口","group":"仓库","main":"rtsp://192.0.2.2/"}]})");
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    QCOMPARE(sdk.device("porch").at("name"), Json("门口"));
    QCOMPARE(sdk.device("porch").at("info").at("QRinfo"), calibration);
}

void tst_Measuring::worldCanBeMeasured() {
    TestSdk sdk(api::makeStreamHub, 0, true);
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    std::filesystem::create_directories(sdk.path("alarms"));
    sdk.runtime.setClientCallback([&sdk](const std::string& message, std::string& answer) {
        sdk.client.add(message);
        if (message.find("reqalarmpath") != std::string::npos)
            answer = sdk.path("alarms").string();
    });
    const Json group = sdk.document("ipnclist").at("group").back();
    QCOMPARE(group.at("name"), Json("测量"));
    QCOMPARE(group.at("ipnclist"), Json::array({world::codeCameraId, world::laserCameraId}));

    // Nothing is raised before somebody wants it.
    QVERIFY(waitFor([&] { return switchOutput(sdk, world::codeCameraId, 1206, 0) == 0; }));
    const auto alarms = [&] {
        int count = 0;
        for (const Json& message : sdk.client.ofType("trigger"))
            count += message.at("alarm").at("ipncid") == world::codeCameraId ? 1 : 0;
        return count;
    };
    QCOMPARE(alarms(), 0);
    QCOMPARE(switchOutput(sdk, world::codeCameraId, 1206, 1), 0);
    QVERIFY(waitFor([&] { return alarms() == 1; }));
    QVERIFY(waitFor([&] {
        const auto files = sdk.filesIn("alarms");
        return files.size() == 1 && files.front().ends_with(".jpg"); // whole: under another name before
    }));
    const QImage alarm(QString::fromStdString((sdk.path("alarms") / sdk.filesIn("alarms").front()).string()));
    const auto code = sight::readCode(greyOf(alarm));
    QVERIFY(code && code->text == scene::CodeScene::text);

    // The board is shown, and then the code again.
    const auto boardIsSeen = [&] {
        return !sight::findBoard(greyOf(pictureOf(sdk, world::codeCameraId)), scene::CodeScene::boardColumns,
                                 scene::CodeScene::boardRows)
                    .empty();
    };
    QVERIFY(!boardIsSeen());
    QCOMPARE(switchOutput(sdk, world::codeCameraId, 1205, 1), 0);
    QVERIFY(waitFor(boardIsSeen));
    QCOMPARE(switchOutput(sdk, world::codeCameraId, 1205, 0), 0);
    QVERIFY(waitFor([&] { return sight::readCode(greyOf(pictureOf(sdk, world::codeCameraId))).has_value(); }));

    // What the client measures becomes values of the boards.
    const auto upload = [&](const char* ipncid, int pid) {
        return codeOf(sdk.askDevice(
            {{"ipncid", ipncid}, {"setcmds", {{"uploadinputs", {{{"pid", pid}, {"data", "-12.25"}}}}}}}));
    };
    QVERIFY(waitFor([&] { return upload(world::laserCameraId, 1222) == 0; }));
    QCOMPARE(upload(world::codeCameraId, 1203), 0);
    QCOMPARE(upload(world::codeCameraId, 1208), 30);
    const auto valueOf = [&](const char* ipncid, std::size_t port) {
        return sdk.device(ipncid).at("interfaces").at(0).at("input").at(port).at("value");
    };
    QVERIFY(waitFor(
        [&] { return valueOf(world::laserCameraId, 1) == -12.25 && valueOf(world::codeCameraId, 2) == -12.25; }));
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
}

QTEST_GUILESS_MAIN(tst_Measuring)
#include "tst_Measuring.moc"
