#include "RecordingListener.h"
#include "media/StreamHub.h"
#include "media/loop/LoopLibrary.h"
#include "media/loop/LoopPainter.h"

#include <QtTest>

#include <cmath>
#include <cstdlib>

using namespace ipncsdk::media;
using namespace std::chrono_literals;

namespace {

/// A control that a test sets.
class TestControl final : public LoopControl {
public:
    void set(const State& state) {
        const std::lock_guard lock(mutex_);
        state_ = state;
    }
    State now() const override {
        const std::lock_guard lock(mutex_);
        return state_;
    }

private:
    mutable std::mutex mutex_;
    State state_;
};

const LoopKey key{{"北门", 4, 0}, Quality::Light};

/// How alike the brightness of two pictures runs, -1 to 1.
double correlation(const std::uint8_t* a, const std::uint8_t* b, std::size_t count) {
    double sumA = 0;
    double sumB = 0;
    for (std::size_t index = 0; index < count; ++index) {
        sumA += a[index];
        sumB += b[index];
    }
    double ab = 0;
    double aa = 0;
    double bb = 0;
    for (std::size_t index = 0; index < count; ++index) {
        const double da = a[index] - sumA / static_cast<double>(count);
        const double db = b[index] - sumB / static_cast<double>(count);
        ab += da * db;
        aa += da * da;
        bb += db * db;
    }
    return ab / std::sqrt(aa * bb);
}

double brightness(const std::uint8_t* luma, std::size_t count) {
    double sum = 0;
    for (std::size_t index = 0; index < count; ++index) {
        sum += luma[index];
    }
    return sum / static_cast<double>(count);
}

Picture painted(std::chrono::microseconds time, const View& view) {
    LoopPainter painter(key,
                        std::make_shared<const Picture>(LoopPainter::paintBackdrop(4, key.width(), key.height())));
    Picture picture;
    painter.paint(static_cast<int>(time / 40ms) % loopLength, picture, view);
    return picture;
}

} // namespace

class tst_LoopViews : public QObject {
    Q_OBJECT

private slots:
    void windowStaysInTheScene();
    void pictureShowsTheView_data();
    void pictureShowsTheView();
    void homeIsTheRecording();
    void restartedCameraLosesItsStreams();

private:
    HubOptions options() {
        HubOptions options;
        options.loopFolder = folder_.path().toStdString();
        options.loopControl = [this](const std::string& camera) {
            return camera == "c" ? control_ : nullptr;
        };
        return options;
    }

    const QTemporaryDir folder_;
    std::shared_ptr<TestControl> control_ = std::make_shared<TestControl>();
};

void tst_LoopViews::windowStaysInTheScene() {
    QVERIFY(windowOf({}) == Window());
    for (const float pan : {-1.0F, -0.3F, 0.0F, 1.0F}) {
        for (const float tilt : {-1.0F, 0.0F, 0.6F, 1.0F}) {
            for (const float zoom : {0.0F, 0.2F, 1.0F}) {
                const Window window = windowOf({pan, tilt, zoom, 0, 0});
                QVERIFY(window.magnification >= 1);
                QVERIFY(window.origin.x >= -1e-4F && window.origin.y >= -1e-4F);
                QVERIFY(window.origin.x + 16 / window.magnification <= 16.001F);
                QVERIFY(window.origin.y + 9 / window.magnification <= 9.001F);
            }
        }
    }
    QVERIFY(windowOf({1, 0, 0, 0, 0}).origin.x > windowOf({-1, 0, 0, 0, 0}).origin.x); // 1 is to the right
    QVERIFY(windowOf({0, 1, 0, 0, 0}).origin.y < windowOf({0, -1, 0, 0, 0}).origin.y); // and up
}

void tst_LoopViews::pictureShowsTheView_data() {
    QTest::addColumn<float>("pan");
    QTest::addColumn<float>("tilt");
    QTest::addColumn<float>("zoom");
    QTest::addColumn<float>("focus");
    QTest::addColumn<float>("iris");
    QTest::newRow("right") << 1.0F << 0.0F << 0.0F << 0.0F << 0.0F;
    QTest::newRow("left and up, near") << -0.5F << 0.5F << 0.6F << 0.0F << 0.0F;
    QTest::newRow("down") << 0.0F << -1.0F << 0.0F << 0.0F << 0.0F;
    QTest::newRow("out of focus") << 0.0F << 0.0F << 0.0F << -1.0F << 0.0F;
    QTest::newRow("dark") << 0.0F << 0.0F << 0.0F << 0.0F << -1.0F;
}

void tst_LoopViews::pictureShowsTheView() {
    QFETCH(float, pan);
    QFETCH(float, tilt);
    QFETCH(float, zoom);
    QFETCH(float, focus);
    QFETCH(float, iris);
    const View view{pan, tilt, zoom, focus, iris};
    control_->set({true, view});
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    QVERIFY(hub.subscribe({"c", Quality::Light, key.source, true, false, {}}, listener) > 0);
    QVERIFY(listener->waitForPictures(30));
    const Picture seen = listener->record().newest;
    const Picture expected = painted(seen.time, view);
    const Picture home = painted(seen.time, {});
    const auto count = static_cast<std::size_t>(seen.width) * static_cast<std::size_t>(seen.height);
    QCOMPARE(seen.width, key.width());
    QVERIFY(correlation(seen.plane(0), expected.plane(0), count) > 0.99);
    if (iris != 0) {
        QVERIFY(brightness(seen.plane(0), count) < 0.6 * brightness(home.plane(0), count));
        return;
    }
    QVERIFY(correlation(seen.plane(0), home.plane(0), count) < 0.97);
    // The title stays where it is, whatever is behind it: its white is in the picture.
    const auto* const corner = seen.plane(0) + static_cast<std::ptrdiff_t>(12) * seen.width;
    QVERIFY(std::any_of(corner, corner + static_cast<std::ptrdiff_t>(24) * seen.width,
                        [](std::uint8_t luma) { return luma > 235; }));
}

void tst_LoopViews::homeIsTheRecording() {
    control_->set({});
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe({"c", Quality::Light, key.source, false, true, {}}, listener);
    QVERIFY(listener->waitForCoded(30));
    control_->set({true, {0.4F, 0, 0, 0, 0}});
    const auto away = listener->record().coded.size();
    QVERIFY(listener->waitForCoded(away + 40));
    control_->set({});
    const auto back = listener->record().coded.size();
    QVERIFY(listener->waitForCoded(back + 2 * loopGopLength + 5));
    LoopLibrary library(folder_.path().toStdString(), {});
    const auto loop = library.acquire(key);
    const auto record = listener->record();
    QCOMPARE(record.opened.size(), std::size_t{1});
    std::size_t painted = 0;
    bool afterSwitch = false;
    bool wasRecorded = true;
    for (std::size_t index = 0; index < record.coded.size(); ++index) {
        const auto& frame = record.coded[index];
        const int place = static_cast<int>(frame.time / 40ms) % loopLength;
        const auto gop = loop->gop(static_cast<std::size_t>(place / loopGopLength), 60s);
        std::size_t offset = 0;
        for (int before = 0; before < place % loopGopLength; ++before) {
            offset += gop->sizes[static_cast<std::size_t>(before)];
        }
        const auto from = gop->bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        const std::vector<std::uint8_t> recorded(from,
                                                 from + gop->sizes[static_cast<std::size_t>(place % loopGopLength)]);
        const bool isRecorded = frame.bytes == recorded;
        // Whoever joins or decodes gets over each change at a key frame, which begins with its parameter sets.
        if (isRecorded != wasRecorded) {
            QVERIFY(frame.keyFrame);
            afterSwitch = true;
        }
        if (frame.keyFrame) {
            QCOMPARE(int(frame.bytes[4]), 0x67);
        }
        wasRecorded = isRecorded;
        painted += isRecorded ? 0U : 1U;
        QCOMPARE(frame.time.count(), static_cast<qint64>(index) * 40000);
    }
    QVERIFY(afterSwitch && wasRecorded);
    QVERIFY(painted >= 40 && painted <= 40 + 2 * loopGopLength + 25);
}

void tst_LoopViews::restartedCameraLosesItsStreams() {
    control_->set({});
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe({"c", Quality::Light, key.source, true, false, {}}, listener);
    QVERIFY(listener->waitForPictures(5));
    control_->set({false, {}});
    QVERIFY(listener->waitFor(
        [](const auto& record) { return !record.stages.empty() && record.stages.back() == OpenStage::Connecting; }));
    const int pictures = listener->record().decoded;
    control_->set({});
    QVERIFY(listener->waitForPictures(pictures + 5));
    const auto record = listener->record();
    QCOMPARE(record.opened.size(), std::size_t{2});
    QVERIFY(!record.closed);
    // One who comes while the camera is away waits for it, and can leave.
    control_->set({false, {}});
    const auto late = std::make_shared<RecordingListener>();
    const auto id = hub.subscribe({"c", Quality::Main, key.source, true, false, {}}, late);
    QVERIFY(late->waitFor(
        [](const auto& other) { return !other.stages.empty() && other.stages.back() == OpenStage::Connecting; }));
    hub.unsubscribe(id);
    QVERIFY(late->record().opened.empty());
}

QTEST_GUILESS_MAIN(tst_LoopViews)
#include "tst_LoopViews.moc"
