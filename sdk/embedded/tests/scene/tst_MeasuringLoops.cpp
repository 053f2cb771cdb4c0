#include "RecordingListener.h"
#include "Sight.h"
#include "media/StreamHub.h"
#include "media/loop/LoopFormat.h"
#include "media/loop/View.h"
#include "scene/CodeScene.h"
#include "scene/LaserScene.h"

#include <QtTest>

#include <atomic>
#include <cmath>

using namespace ipncsdk;
using namespace ipncsdk::media;
using namespace std::chrono_literals;

namespace {

class Switch final : public LoopControl {
public:
    State now() const override { return {true, {}, exhibit}; }
    std::atomic<int> exhibit{0};
};

cv::Mat1b lumaOf(const Picture& picture) {
    return cv::Mat(picture.height, picture.width, CV_8U, const_cast<std::uint8_t*>(picture.plane(0))).clone();
}

Subscription watched(int scene, Quality quality = Quality::Light) {
    Subscription subscription;
    subscription.camera = std::string("camera");
    subscription.quality = quality;
    subscription.source = LoopSource{"测距", scene, 0};
    subscription.decoded = true;
    return subscription;
}

/// Seconds within the loop of a frame, while it is the first one that is shown.
double secondsOf(const Picture& picture) {
    return std::chrono::duration<double>(picture.time).count();
}

} // namespace

/// The recordings of measuring cameras as a stream shows them: painted, coded and decoded.
class tst_MeasuringLoops final : public QObject {
    Q_OBJECT

private slots:
    void positionOfTheCodeInItsStream_data();
    void positionOfTheCodeInItsStream();
    void exhibitChangesWithinAStream();
    void spotGoesOut();

private:
    HubOptions options() {
        HubOptions options;
        options.loopFolder = folder_.path().toStdString();
        options.loopControl = [this](const std::string&) {
            return switch_;
        };
        return options;
    }

    const QTemporaryDir folder_;
    std::shared_ptr<Switch> switch_ = std::make_shared<Switch>();
};

void tst_MeasuringLoops::positionOfTheCodeInItsStream_data() {
    QTest::addColumn<bool>("isMain");
    QTest::newRow("light") << false;
    QTest::newRow("main") << true;
}

void tst_MeasuringLoops::positionOfTheCodeInItsStream() {
    QFETCH(bool, isMain);
    switch_->exhibit = 0;
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(watched(codeScene, isMain ? Quality::Main : Quality::Light), listener);
    for (const int count : {2, 40, 75}) {
        QVERIFY(listener->waitForPictures(count));
        const Picture picture = listener->record().newest;
        const auto code = sight::readCode(lumaOf(picture));
        QVERIFY(code.has_value());
        QVERIFY(code->text == scene::CodeScene::text);
        const scene::Lens lens = scene::CodeScene::lens().scaled({picture.width, picture.height});
        const cv::Vec3d found = sight::positionOf(*code, scene::CodeScene::codeSide, lens);
        const cv::Vec3d off = found - scene::CodeScene::positionAt(secondsOf(picture));
        // Corners to a whole pixel.
        const double pixel = 620 / lens.focusX;
        QVERIFY2(std::hypot(off[0], off[1]) < 3 * pixel, QByteArray::number(std::hypot(off[0], off[1])));
        QVERIFY2(std::abs(off[2]) < 12 * pixel, QByteArray::number(off[2]));
    }
}

void tst_MeasuringLoops::exhibitChangesWithinAStream() {
    switch_->exhibit = 0;
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    Subscription subscription = watched(codeScene);
    subscription.coded = true;
    hub.subscribe(subscription, listener);
    QVERIFY(listener->waitForPictures(3));
    const auto boardIsSeen = [&] {
        return sight::findBoard(lumaOf(listener->record().newest), scene::CodeScene::boardColumns,
                                scene::CodeScene::boardRows)
                   .size() == 54;
    };
    QVERIFY(!boardIsSeen());
    switch_->exhibit = 1;
    QTRY_VERIFY_WITH_TIMEOUT(boardIsSeen(), 60'000);
    QVERIFY(!sight::readCode(lumaOf(listener->record().newest)));
    switch_->exhibit = 0;
    QTRY_VERIFY_WITH_TIMEOUT(sight::readCode(lumaOf(listener->record().newest)).has_value(), 60'000);
    // Nobody who takes the coded stream loses a picture or its order.
    const auto record = listener->record();
    QCOMPARE(record.opened.size(), std::size_t{1});
    for (std::size_t index = 0; index < record.coded.size(); ++index) {
        QCOMPARE(record.coded[index].time, 40ms * static_cast<int>(index));
        QCOMPARE(record.coded[index].keyFrame, index % loopGopLength == 0);
    }
}

void tst_MeasuringLoops::spotGoesOut() {
    switch_->exhibit = 0;
    StreamHub hub(options());
    const auto listener = std::make_shared<RecordingListener>();
    hub.subscribe(watched(laserScene), listener);
    QVERIFY(listener->waitForPictures(2));
    const auto spotIsSeen = [&] {
        const Picture picture = listener->record().newest;
        const cv::Point2d at = scene::LaserScene::positionAt(secondsOf(picture));
        const cv::Point2d place = project(scene::LaserScene::lens().scaled({picture.width, picture.height}),
                                          scene::LaserScene::platePose(), {at.x, at.y, 0});
        return lumaOf(picture)(cv::Point(cvRound(place.x), cvRound(place.y))) > 230;
    };
    QVERIFY(spotIsSeen());
    switch_->exhibit = 1;
    const auto brightest = [&] {
        double most = 0;
        const cv::Mat1b luma = lumaOf(listener->record().newest);
        cv::minMaxLoc(luma.rowRange(60, luma.rows - 20), nullptr, &most);
        return most;
    };
    QTRY_VERIFY_WITH_TIMEOUT(brightest() < 200, 60'000);
}

QTEST_GUILESS_MAIN(tst_MeasuringLoops)
#include "tst_MeasuringLoops.moc"
