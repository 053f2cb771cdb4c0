#include "Sight.h"
#include "scene/CodeScene.h"
#include "scene/LaserScene.h"
#include "scene/MeasuringScene.h"

#include <QtTest>

#include <opencv2/calib3d.hpp>
#include <opencv2/imgproc.hpp>

#include <cmath>

using namespace ipncsdk;
using namespace ipncsdk::scene;

namespace {

using Kind = MeasuringScene::Kind;
using Exhibit = MeasuringScene::Exhibit;

const cv::Size mainSize(1280, 720);
const cv::Size lightSize(640, 360);

double longest(const std::vector<cv::Point2f>& found, const std::vector<cv::Point2d>& expected) {
    // A board may be found from its other end.
    double forwards = 0;
    double backwards = 0;
    for (std::size_t i = 0; i < found.size(); ++i) {
        forwards = std::max(forwards, cv::norm(cv::Point2d(found[i]) - expected[i]));
        backwards = std::max(backwards, cv::norm(cv::Point2d(found[i]) - expected[expected.size() - 1 - i]));
    }
    return std::min(forwards, backwards);
}

cv::Mat1b painted(Kind kind, Exhibit exhibit, const cv::Size& size, double seconds,
                  const MeasuringScene::Cutout& cutout = {}) {
    MeasuringScene scene(kind, exhibit, size);
    scene.aim(cutout);
    cv::Mat3b picture = scene.backdrop().clone();
    scene.paint(seconds, picture);
    cv::Mat1b grey;
    cv::cvtColor(picture, grey, cv::COLOR_BGR2GRAY);
    return grey;
}

} // namespace

class tst_Scene final : public QObject {
    Q_OBJECT

private slots:
    void lensAgreesWithOpenCv_data();
    void lensAgreesWithOpenCv();
    void lensOfAPart();
    void boardIsWhereItIs_data();
    void boardIsWhereItIs();
    void codeIsRead_data();
    void codeIsRead();
    void textTooLongForACode();
    void targetBehindTheCamera();
    void flawsRepeat();
    void motionSmears();
    void camerasCanBeCalibrated();
    void codeMovesThroughItsPeriod();
    void spotIsWhereItIs_data();
    void spotIsWhereItIs();
};

void tst_Scene::lensAgreesWithOpenCv_data() {
    QTest::addColumn<int>("lens");
    QTest::newRow("code camera") << 0;
    QTest::newRow("laser camera") << 1;
    QTest::newRow("light stream") << 2;
    QTest::newRow("all five terms") << 3;
    QTest::newRow("none") << 4;
}

void tst_Scene::lensAgreesWithOpenCv() {
    QFETCH(int, lens);
    Lens strong;
    strong.distortion = {-0.3, 0.12, 0.002, -0.0015, -0.02};
    const Lens lenses[] = {CodeScene::lens(), LaserScene::lens(), CodeScene::lens().scaled(lightSize), strong,
                           Lens()};
    const Lens& used = lenses[lens];
    const Pose pose = Pose::turned({20, -15, 40}, {30, -20, 700});
    std::vector<cv::Point3d> points;
    for (int x = -200; x <= 200; x += 50) {
        for (int y = -120; y <= 120; y += 40)
            points.emplace_back(x, y, (x + y) / 10.0);
    }
    const auto expected = sight::projected(used, pose, points);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const cv::Point2d seen = project(used, pose, points[i]);
        QVERIFY(cv::norm(seen - expected[i]) < 1e-6);
        QVERIFY(cv::norm(used.pixelOf(used.directionOf(seen)) - seen) < 1e-6);
    }
}

void tst_Scene::lensOfAPart() {
    // What lies at a place of the picture lies at the corresponding one of the part.
    const Lens whole = CodeScene::lens();
    const Lens part = whole.zoomed({320, 90}, 2.5);
    const cv::Point2d direction(-0.1, 0.05);
    const cv::Point2d corner = (whole.pixelOf(direction) + cv::Point2d(0.5 - 320, 0.5 - 90)) * 2.5;
    QVERIFY(cv::norm(part.pixelOf(direction) - (corner - cv::Point2d(0.5, 0.5))) < 1e-9);
}

void tst_Scene::boardIsWhereItIs_data() {
    QTest::addColumn<int>("pose");
    QTest::addColumn<double>("blur");
    QTest::addColumn<double>("noise");
    QTest::addColumn<double>("uneven");
    QTest::addColumn<double>("contrast");
    QTest::addColumn<double>("tolerance");
    QTest::newRow("straight") << 0 << 0.0 << 0.0 << 0.0 << 1.0 << 0.15;
    QTest::newRow("tilted") << 1 << 0.0 << 0.0 << 0.0 << 1.0 << 0.15;
    QTest::newRow("turned and near") << 2 << 0.0 << 0.0 << 0.0 << 1.0 << 0.15;
    QTest::newRow("blurred") << 1 << 1.5 << 0.0 << 0.0 << 1.0 << 0.06;
    QTest::newRow("all flaws") << 1 << 1.0 << 4.0 << 0.4 << 0.6 << 0.3;
}

void tst_Scene::boardIsWhereItIs() {
    QFETCH(int, pose);
    QFETCH(double, blur);
    QFETCH(double, noise);
    QFETCH(double, uneven);
    QFETCH(double, contrast);
    QFETCH(double, tolerance);
    const Pose poses[] = {Pose::turned({}, {-100, -60, 600}), Pose::turned({25, -20, 10}, {-90, -70, 560}),
                          Pose::turned({-10, 15, -35}, {-110, 30, 480})};
    Flaws flaws;
    flaws.blur = blur;
    flaws.noise = noise;
    flaws.gradient = uneven;
    flaws.vignetting = uneven / 2;
    flaws.contrast = contrast;
    const Photographer photographer(CodeScene::lens());
    const cv::Mat1b picture = photographer.photograph(boardPrint(9, 6, 25), poses[pose], flaws);
    const auto found = sight::findBoard(picture, 9, 6);
    QCOMPARE(found.size(), std::size_t{54});
    const double off = longest(found, sight::projected(CodeScene::lens(), poses[pose], sight::boardPoints(9, 6, 25)));
    QVERIFY2(off < tolerance, QByteArray::number(off));
}

void tst_Scene::codeIsRead_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("distance");
    QTest::addColumn<double>("blur");
    QTest::addColumn<double>("noise");
    QTest::addColumn<double>("motion");
    QTest::newRow("plain") << "CORVANTA-01" << 700.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("far") << "CORVANTA-01" << 1800.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("not ASCII, larger code")
        << QString::fromUtf8("二维码测距 一号测点 东侧立柱") << 700.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("flaws") << "CORVANTA-01" << 700.0 << 1.5 << 6.0 << 4.0;
}

void tst_Scene::codeIsRead() {
    QFETCH(QString, text);
    QFETCH(double, distance);
    QFETCH(double, blur);
    QFETCH(double, noise);
    QFETCH(double, motion);
    Flaws flaws;
    flaws.blur = blur;
    flaws.noise = noise;
    flaws.motion = {motion, motion / 2};
    const Lens lens = CodeScene::lens();
    const Pose pose = Pose::turned({12, -14, 6}, {-30, 20, distance});
    const auto code = sight::readCode(Photographer(lens).photograph(codePrint(text.toStdString(), 200), pose, flaws));
    QVERIFY(code.has_value());
    QCOMPARE(QString::fromStdString(code->text), text);
    const cv::Vec3d off = sight::positionOf(*code, 200, lens) - pose.translation;
    // zbar's corners are whole pixels.
    const double pixel = distance / 1000;
    const double side = 200 / pixel;
    QVERIFY2(std::hypot(off[0], off[1]) < 3 * pixel + 1, QByteArray::number(std::hypot(off[0], off[1])));
    QVERIFY2(std::abs(off[2]) < distance * 4 / side, QByteArray::number(off[2]));
}

void tst_Scene::textTooLongForACode() {
    QVERIFY(printedCode(std::string(4000, 'x')).empty());
}

void tst_Scene::targetBehindTheCamera() {
    const Photographer photographer(CodeScene::lens());
    for (const double z : {-500.0, 0.0, 20.0}) {
        const Pose pose = Pose::turned({70, 0, 0}, {0, 0, z});
        QCOMPARE(photographer.photograph(boardPrint(9, 6, 25), pose).size(), mainSize);
    }
    QVERIFY(photographer.patch(boardPrint(9, 6, 25), Pose::turned({}, {5000, 0, 600})).area.empty());
}

void tst_Scene::flawsRepeat() {
    Flaws flaws;
    flaws.noise = 5;
    const auto taken = [&flaws] {
        cv::Mat1b picture(90, 160, static_cast<uchar>(100));
        spoil(picture, flaws);
        return picture;
    };
    const cv::Mat1b first = taken();
    QCOMPARE(cv::norm(first, taken(), cv::NORM_INF), 0.0);
    cv::Scalar mean;
    cv::Scalar deviation;
    cv::meanStdDev(first, mean, deviation);
    QVERIFY(std::abs(mean[0] - 100) < 0.3 && std::abs(deviation[0] - 5) < 0.3);
    flaws.seed = 2;
    QVERIFY(cv::norm(first, taken(), cv::NORM_INF) > 0);
}

void tst_Scene::motionSmears() {
    cv::Mat1b picture(41, 41, static_cast<uchar>(0));
    picture(20, 20) = 250;
    Flaws flaws;
    flaws.motion = {10, 0};
    spoil(picture, flaws);
    const cv::Moments moments = cv::moments(picture);
    QVERIFY(std::abs(moments.m10 / moments.m00 - 20) < 0.1); // the middle of the motion stays
    QCOMPARE(cv::countNonZero(picture.row(20)), cv::countNonZero(picture));
    QVERIFY(std::abs(cv::countNonZero(picture) - 11) <= 1);
}

/// What a user does: a picture of each pose of the board, in both streams.
void tst_Scene::camerasCanBeCalibrated() {
    for (const cv::Size& size : {mainSize, lightSize}) {
        const auto object = sight::boardPoints(CodeScene::boardColumns, CodeScene::boardRows, CodeScene::boardSquare);
        const std::vector<cv::Point3f> model(object.begin(), object.end());
        std::vector<std::vector<cv::Point3f>> objects;
        std::vector<std::vector<cv::Point2f>> images;
        for (int pose = 0; pose < CodeScene::boardPoses; ++pose) {
            const double seconds = CodeScene::boardHold * (pose + 0.5);
            const auto found = sight::findBoard(painted(Kind::Code, Exhibit::Setup, size, seconds),
                                                CodeScene::boardColumns, CodeScene::boardRows);
            QVERIFY2(found.size() == model.size(), QByteArray::number(pose));
            const double off = longest(
                found, sight::projected(CodeScene::lens().scaled(size), CodeScene::boardPoseAt(seconds), object));
            QVERIFY2(off < 0.5, QByteArray::number(off));
            objects.push_back(model);
            images.push_back(found);
        }
        cv::Mat matrix;
        cv::Mat distortion;
        std::vector<cv::Mat> turns;
        std::vector<cv::Mat> places;
        const double error = cv::calibrateCamera(objects, images, size, matrix, distortion, turns, places);
        QVERIFY2(error < 0.2, QByteArray::number(error));
        const Lens lens = CodeScene::lens().scaled(size);
        QVERIFY2(std::abs(matrix.at<double>(0, 0) / lens.focusX - 1) < 0.005,
                 QByteArray::number(matrix.at<double>(0, 0)));
        QVERIFY(std::abs(matrix.at<double>(0, 2) - lens.centre.x) < 0.004 * size.width);
        QVERIFY(std::abs(distortion.at<double>(0) - lens.distortion[0]) < 0.03);
    }
}

void tst_Scene::codeMovesThroughItsPeriod() {
    cv::Vec3d least(1e9, 1e9, 1e9);
    cv::Vec3d most = -least;
    for (int second = 0; second <= CodeScene::codePeriod; ++second) {
        const cv::Vec3d at = CodeScene::positionAt(second);
        for (int axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], at[axis]);
            most[axis] = std::max(most[axis], at[axis]);
        }
        if (second % 4 != 0)
            continue;
        const auto code = sight::readCode(painted(Kind::Code, Exhibit::Usual, lightSize, second));
        QVERIFY(code && code->text == CodeScene::text);
    }
    QVERIFY(cv::norm(CodeScene::positionAt(0) - CodeScene::positionAt(CodeScene::codePeriod)) < 1e-9);
    for (int axis = 0; axis < 3; ++axis)
        QVERIFY(most[axis] - least[axis] > 40);
    // A camera that looks elsewhere sees another part of the same.
    const auto whole = sight::readCode(painted(Kind::Code, Exhibit::Usual, mainSize, 5));
    const auto part = sight::readCode(painted(Kind::Code, Exhibit::Usual, mainSize, 5, {{0.1, 0.05}, 1.2}));
    QVERIFY(whole && part);
    const cv::Point2f expected = (whole->corners[0] - cv::Point2f(128, 36)) * 1.2F;
    QVERIFY(cv::norm(part->corners[0] - expected) < 3);
}

void tst_Scene::spotIsWhereItIs_data() {
    QTest::addColumn<bool>("isMain");
    QTest::addColumn<double>("seconds");
    QTest::newRow("main") << true << 0.0;
    QTest::newRow("main, elsewhere") << true << 9.4;
    QTest::newRow("light") << false << 21.0;
}

void tst_Scene::spotIsWhereItIs() {
    QFETCH(bool, isMain);
    QFETCH(double, seconds);
    const cv::Size size = isMain ? mainSize : lightSize;
    MeasuringScene lit(Kind::Laser, Exhibit::Usual, size);
    MeasuringScene dark(Kind::Laser, Exhibit::Setup, size);
    cv::Mat3b picture = lit.backdrop().clone();
    cv::Mat3b reference = dark.backdrop().clone();
    const cv::Rect area = lit.paint(seconds, picture);
    QVERIFY(dark.paint(seconds, reference).empty());
    cv::Mat difference;
    cv::absdiff(picture, reference, difference);
    std::vector<cv::Mat> channels;
    cv::split(difference, channels);
    const cv::Moments moments = cv::moments(channels[2]);
    const cv::Point2d seen(moments.m10 / moments.m00, moments.m01 / moments.m00);
    const cv::Point2d at = LaserScene::positionAt(seconds);
    const cv::Point2d expected = project(LaserScene::lens().scaled(size), LaserScene::platePose(), {at.x, at.y, 0});
    QVERIFY2(cv::norm(seen - expected) < 0.25, QByteArray::number(cv::norm(seen - expected)));
    QVERIFY(area.contains(cv::Point(seen)));
    const cv::Vec3b core = picture(cv::Point(cvRound(expected.x), cvRound(expected.y)));
    QVERIFY(core[2] == 255 && core[1] > 230 && core[0] > 230);
    for (const cv::Point2d& cross : LaserScene::crosses()) {
        const cv::Point2d place =
            project(LaserScene::lens().scaled(size), LaserScene::platePose(), {cross.x, cross.y, 0});
        QVERIFY(reference(cv::Point(cvRound(place.x), cvRound(place.y)))[1] < 80);
    }
}

QTEST_GUILESS_MAIN(tst_Scene)
#include "tst_Scene.moc"
