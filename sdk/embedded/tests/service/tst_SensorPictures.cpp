#include "TestSdk.h"

#include <QtTest>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// Inputs that are measured on the pictures of a recorded scene.
class tst_SensorPictures final : public QObject {
    Q_OBJECT

private slots:
    void brightnessAndMotionOfAScene();
};

void tst_SensorPictures::brightnessAndMotionOfAScene() {
    TestSdk sdk(api::makeStreamHub, 0, true);
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json board = {{"type", "VIDEO"},
                        {"ifname", "VIDEO-1"},
                        {"name", "画面"},
                        {"params", {{"period", 200}}},
                        {"input",
                         {{{"name", "亮度"}, {"unit", "%"}, {"params", {{"measure", "brightness"}}}},
                          {{"name", "移动"}, {"unit", "%"}, {"params", {{"measure", "motion"}}}}}}};
    const Json answer = sdk.askAccount("submitsensorinfo", {{"ipncid", "CAM0001"}, {"sensorinfo", board}});
    QCOMPARE(codeOf(answer), 0);
    const auto port = [&](std::size_t at) {
        return sdk.device("CAM0001").at("interfaces").at(0).at("input").at(at);
    };
    QVERIFY(waitFor([&] { return port(0).at("state") == 1; }));
    const auto brightness = port(0).at("value").get<double>();
    QVERIFY2(brightness > 2 && brightness < 98, QByteArray::number(brightness));
    // Something moves in every scene.
    QVERIFY(waitFor([&] { return port(1).at("state") == 1 && port(1).at("value").get<double>() > 0; }));
    QCOMPARE(sdk.runtime.cleanup(), emSuccess);
}

QTEST_GUILESS_MAIN(tst_SensorPictures)
#include "tst_SensorPictures.moc"
