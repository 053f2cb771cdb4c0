#include "RealHub.h"
#include "Viewer.h"
#include "support/RtspServer.h"

#include <QImage>
#include <QProcess>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

using namespace ipncsdk;
using namespace ipncsdk::test;

/// The exchange of light and main stream over real ones: recorded scenes and a network camera.
class tst_LiveChange final : public QObject {
    Q_OBJECT

private slots:
    void noGap();
    void sixteenStreams();
    void networkCamera();
    void networkCameraHangs();
    void recordedFiles();
};

namespace {

constexpr auto oneCamera = R"({"cameras": [{"ipncid": "porch", "main": "%1", "light": "%2"}]})";

std::string configured(const std::string& main, const std::string& light) {
    return QString(oneCamera).arg(QString::fromStdString(main), QString::fromStdString(light)).toStdString();
}

/// How many pictures of another viewer came between a viewer's last picture of one size and its first of the next.
class GapMeter final {
public:
    GapMeter(Viewer& viewer, const Viewer& pace) {
        viewer.onMessage = [this, &pace](const std::string& text) {
            if (text.find("decodevideodata") == std::string::npos)
                return;
            const int width = Json::parse(text).at("w").get<int>();
            const int now = pace.frames();
            if (width_ != 0 && width != width_) {
                widest_ = std::max(widest_.load(), now - last_);
            }
            width_ = width;
            last_ = now;
        };
    }
    [[nodiscard]] int widest() const { return widest_; }

private:
    int width_ = 0;
    int last_ = 0;
    std::atomic<int> widest_{0};
};

constexpr int fewPictures = 5;

} // namespace

void tst_LiveChange::noGap() {
    TestSdk sdk(realHub());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer pace(sdk);
    pace.open("CAM0001");
    Viewer viewer(sdk);
    const GapMeter meter(viewer, pace);
    viewer.open("CAM0001");
    QVERIFY(pace.waitForFrames(10) && viewer.waitForFramesOf(false));
    for (std::size_t round = 0; round < 4; ++round) {
        const bool hd = round % 2 == 0;
        viewer.change(hd);
        QCOMPARE(viewer.waitForResult(round), 0);
        QVERIFY(viewer.waitForFramesOf(hd));
        QVERIFY(viewer.waitForFrames(10));
        const Json opened = viewer.messages.all().back();
        QCOMPARE(opened.at("avparam").at("weidth"), Json(hd ? 1280 : 640));
        QCOMPARE(opened.at("avparam").at("height"), Json(hd ? 720 : 360));
        const Json message = {{"type", "avchange"}, {"reqid", viewer.id()}, {"capture", "x.jpg"}};
        QCOMPARE(sdk.command(message).at("retcode"), Json(0));
        QCOMPARE(QImage(QString::fromStdString(sdk.path("x.jpg").string())).width(), hd ? 1280 : 640);
    }
    QVERIFY2(meter.widest() <= fewPictures, qPrintable(QString::number(meter.widest())));
    QVERIFY(viewer.messages.ofType("avclose").empty());
    QCOMPARE(viewer.fault(), std::string());
}

void tst_LiveChange::sixteenStreams() {
    TestSdk sdk(realHub());
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    const Json codedKeys = {{"recvavdata", true}, {"recvdecodeavdata", false}};
    std::vector<std::unique_ptr<Viewer>> viewers;
    for (std::size_t index = 0; index < 16; ++index) {
        viewers.push_back(std::make_unique<Viewer>(sdk));
        viewers.back()->open("CAM000" + std::to_string(1 + index % 4), index >= 8 ? codedKeys : Json::object());
    }
    for (const auto& viewer : viewers)
        QVERIFY(viewer->waitForFramesOf(false));
    std::size_t number = 0;
    for (const int waited : {0, 3, 0, 0, 1, 0, 5}) {
        for (std::size_t index = 0; index < viewers.size(); ++index)
            viewers[index]->change((number + index) % 2 == 0);
        QVERIFY(viewers[number]->waitForFrames(waited));
        ++number;
    }
    for (std::size_t index = 0; index < viewers.size(); ++index) {
        Viewer& viewer = *viewers[index];
        QCOMPARE(viewer.waitForResult(number - 1), 0);
        QVERIFY(viewer.waitForFramesOf((number - 1 + index) % 2 == 0));
        QVERIFY(viewer.waitForFrames(5));
        for (std::size_t earlier = 0; earlier + 1 < number; ++earlier) {
            const int code = viewer.waitForResult(earlier);
            QVERIFY(code == 0 || code == 22);
        }
        QCOMPARE(viewer.fault(), std::string());
    }
}

void tst_LiveChange::networkCamera() {
    RtspServer server;
    QVERIFY(server.start());
    TestSdk sdk(realHub());
    sdk.write("config/service.json", configured(server.url("/nothing"), server.url("/live")));
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewer(sdk);
    viewer.open("porch", {{"recvavdata", true}});
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), 11);
    QVERIFY(viewer.waitForFrames(20));
    QCOMPARE(viewer.course().back(), std::string("avopen light"));
    QCOMPARE(sdk.device("porch").at("online"), Json(true));
    viewer.stop();
    // A request of the stream that is not there ends as always.
    Viewer other(sdk);
    other.open("porch", {{"hd", true}});
    QCOMPARE(other.messages.waitForType("avclose").at("retcode"), Json(11));
    QCOMPARE(viewer.fault() + other.fault(), std::string());
}

void tst_LiveChange::networkCameraHangs() {
    RtspServer server;
    QVERIFY(server.start());
    TestSdk sdk(realHub(std::chrono::seconds(10)));
    sdk.write("config/service.json", configured(server.url("/hang"), server.url("/live")));
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewer(sdk);
    viewer.open("porch");
    QVERIFY(viewer.waitForFramesOf(false));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), 14);
    QVERIFY(viewer.waitForFrames(5));
    // Stopping does not wait for a camera that is silent.
    viewer.change(true);
    sdk.settle();
    viewer.stop();
    QCOMPARE(viewer.waitForResult(1), 23);
    QCOMPARE(viewer.fault(), std::string());
}

void tst_LiveChange::recordedFiles() {
    TestSdk sdk(realHub());
    const auto make = [&sdk](const char* name, const char* size) {
        return QProcess::execute("ffmpeg", {"-v", "error", "-f", "lavfi", "-i",
                                            QString("testsrc=size=%1:rate=25:duration=1").arg(size), "-c:v",
                                            "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-g", "10",
                                            QString::fromStdString(sdk.path(name).string())}) == 0;
    };
    QVERIFY(make("small film.mp4", "320x240"));
    QVERIFY(make("big.mkv", "640x480"));
    sdk.write("config/service.json", configured("file://" + sdk.path("big.mkv").string(), "file:small%20film.mp4"));
    QCOMPARE(sdk.start(), emSuccess);
    QVERIFY(sdk.signIn());
    Viewer viewer(sdk);
    viewer.open("porch", {{"recvavdata", true}});
    QVERIFY(viewer.waitForFramesOf(false));
    const Json opened = viewer.messages.all().back();
    QCOMPARE(opened.at("contype"), Json("FILE"));
    QCOMPARE(opened.at("avparam").at("weidth"), Json(320));
    viewer.change(true);
    QCOMPARE(viewer.waitForResult(0), 0);
    QVERIFY(viewer.waitForFramesOf(true));
    QCOMPARE(viewer.messages.all().back().at("avparam").at("weidth"), Json(640));
    // The one that is gone cannot be gone back to.
    std::filesystem::remove(sdk.path("small film.mp4"));
    viewer.change(false);
    QCOMPARE(viewer.waitForResult(1), 11);
    QVERIFY(viewer.waitForFrames(40));
    QCOMPARE(viewer.fault(), std::string());
}

QTEST_GUILESS_MAIN(tst_LiveChange)
#include "tst_LiveChange.moc"
