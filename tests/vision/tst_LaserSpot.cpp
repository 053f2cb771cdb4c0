#include "support/PaintedSpot.h"
#include "vision/LaserSpot.h"

#include <QBuffer>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <limits>

using namespace corvanta::vision;
using paintedSpot::Light;
using paintedSpot::paint;
using paintedSpot::Scene;
using paintedSpot::Shape;

Q_DECLARE_METATYPE(paintedSpot::Scene)
Q_DECLARE_METATYPE(corvanta::vision::SpotSettings)
Q_DECLARE_METATYPE(corvanta::vision::SpotColour)
Q_DECLARE_METATYPE(corvanta::vision::SpotProblem)
Q_DECLARE_METATYPE(std::vector<paintedSpot::Light>)

namespace {

constexpr QPointF Centre(151.37, 98.62);

Light spot(double diameter = 10, double peak = 150, QPointF centre = Centre) {
    return {centre, diameter, peak};
}

Light lamp(QPointF centre, double diameter, std::array<double, 3> colour = paintedSpot::White, double peak = 200) {
    Light light{centre, diameter, peak};
    light.colour = colour;
    light.shape = Shape::Disc;
    return light;
}

Scene with(std::vector<Light> lights) {
    Scene scene;
    scene.lights = std::move(lights);
    return scene;
}

SpotSettings settings(SpotColour colour = SpotColour::Any, double roundness = 0.5) {
    SpotSettings result;
    result.colour = colour;
    result.roundness = roundness;
    return result;
}

double distance(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

} // namespace

/// The spot of a laser in painted pictures: that it is found, where, and why it is not.
class tst_LaserSpot : public QObject {
    Q_OBJECT

private slots:
    void theCentreIsTrue_data();
    void theCentreIsTrue();
    void smallStepsAreSeen();
    void whatItIsIsTold();
    void lampsOfTheReferenceAreNone_data();
    void lampsOfTheReferenceAreNone();
    void reasonsAreTold_data();
    void reasonsAreTold();
    void theColourIsThatOfTheGlow_data();
    void theColourIsThatOfTheGlow();
    void everyFormatIsRead_data();
    void everyFormatIsRead();
    void oddPicturesAreHarmless_data();
    void oddPicturesAreHarmless();
    void oddSettingsAreHarmless();
};

void tst_LaserSpot::theCentreIsTrue_data() {
    QTest::addColumn<Scene>("scene");
    QTest::addColumn<double>("tolerance"); // px, of 20 spots with as many noises
    const auto row = [](const char* name, double tolerance, Scene scene) {
        QTest::newRow(name) << scene << tolerance;
    };
    row("clean", 0.02, with({spot()}));
    row("small", 0.06, with({spot(3.2, 180)}));
    row("large", 0.1, with({spot(90, 150)}));
    row("cut off at white", 0.02, with({spot(12, 1500)}));
    row("all channels cut off", 0.03, with({spot(20, 20000)}));
    Scene scene = with({spot(8, 150)});
    scene.noise = 4;
    row("noise", 0.1, scene);
    scene = with({spot(6, 400)});
    scene.blur = 4;
    row("blur", 0.05, scene);
    scene = with({spot(12, 120)});
    scene.slope = {90, -60};
    scene.ground = 70;
    scene.vignette = 0.4;
    row("uneven light", 0.1, scene);
    scene = with({spot(16, 2000)});
    scene.lights[0].elongation = 1.6;
    scene.lights[0].angle = 0.6;
    scene.noise = 2;
    row("oval", 0.1, scene);
    row("a weaker reflection", 0.05, with({spot(10, 150), spot(8, 70, {200, 60})}));
    Light glow = lamp({60, 60}, 110, paintedSpot::White, 400);
    glow.shape = Shape::Bell;
    row("weaker than a lamp in whose glow it is", 0.3, with({spot(10, 90, {150, 120}), glow}));
    row("near a border", 0.1, with({spot(10, 150, {9.3, 7.6})}));
}

void tst_LaserSpot::theCentreIsTrue() {
    QFETCH(Scene, scene);
    QFETCH(double, tolerance);
    const QPointF middle = scene.lights[0].centre;
    for (unsigned turn = 0; turn < 20; ++turn) {
        scene.seed = turn;
        const QPointF centre = middle + QPointF(0.17 * turn, 0.29 * turn);
        scene.lights[0].centre = centre;
        const SpotSearch search = findSpot(paint(scene), {}, settings(SpotColour::Red));
        QVERIFY2(search.spot, qPrintable(problemText(search.problem)));
        const double off = distance(search.spot->centre, centre);
        QVERIFY2(off < tolerance, qPrintable(QStringLiteral("%1 px in turn %2").arg(off).arg(turn)));
    }
}

void tst_LaserSpot::smallStepsAreSeen() {
    double last = 0;
    for (int step = 0; step < 20; ++step) {
        const QImage picture = paint(with({spot(7, 170, {100 + step * 0.1, 80})}));
        const SpotSearch search = findSpot(picture, {}, settings());
        QVERIFY(search.spot);
        QVERIFY(step == 0 || std::abs(search.spot->centre.x() - last - 0.1) < 0.04);
        last = search.spot->centre.x();
    }
}

void tst_LaserSpot::whatItIsIsTold() {
    Light oval = spot(20, 120);
    oval.elongation = 1.5;
    const SpotSearch search = findSpot(paint(with({oval})), {}, settings(SpotColour::Red));
    QVERIFY(search.spot);
    QVERIFY2(std::abs(search.spot->diameter - 20) < 1, qPrintable(QString::number(search.spot->diameter)));
    QVERIFY2(std::abs(search.spot->roundness - 1 / 1.5) < 0.06, qPrintable(QString::number(search.spot->roundness)));
    QVERIFY2(std::abs(search.spot->contrast - 120) < 6, qPrintable(QString::number(search.spot->contrast)));
}

void tst_LaserSpot::lampsOfTheReferenceAreNone_data() {
    QTest::addColumn<std::vector<Light>>("lamps");
    QTest::addColumn<double>("darker"); // by how much the camera shows the picture darker than the reference
    const std::vector<Light> lamps = {lamp({60, 60}, 40), lamp({240, 180}, 12, paintedSpot::Warm),
                                      spot(11, 1500, {220, 50})};
    QTest::newRow("no lamps") << std::vector<Light>() << 0.0;
    QTest::newRow("lamps and a red light") << lamps << 0.0;
    QTest::newRow("the camera adapted") << lamps << 15.0;
    QTest::newRow("a lamp beside the spot") << std::vector<Light>{lamp(Centre + QPointF(14, 3), 16)} << 0.0;
}

void tst_LaserSpot::lampsOfTheReferenceAreNone() {
    QFETCH(std::vector<Light>, lamps);
    QFETCH(double, darker);
    Scene scene = with(lamps);
    scene.ground = 60;
    scene.noise = 2;
    const QImage reference = paint(scene);
    scene.seed = 2;
    scene.ground -= darker;
    scene.lights.push_back(spot(9, 400));
    const SpotSearch search = findSpot(paint(scene), reference, settings());
    QVERIFY2(search.spot, qPrintable(problemText(search.problem)));
    const double off = distance(search.spot->centre, Centre);
    QVERIFY2(off < 0.15, qPrintable(QString::number(off)));
    // With the laser off nothing is left.
    scene.lights.pop_back();
    QCOMPARE(findSpot(paint(scene), reference, settings()).problem, SpotProblem::NothingBright);
}

void tst_LaserSpot::reasonsAreTold_data() {
    QTest::addColumn<Scene>("scene");
    QTest::addColumn<SpotSettings>("settings");
    QTest::addColumn<SpotProblem>("problem");
    const auto row = [](const char* name, const Scene& scene, const SpotSettings& settings, SpotProblem problem) {
        QTest::newRow(name) << scene << settings << problem;
    };
    const SpotSettings any = settings();
    row("nothing there", with({}), any, SpotProblem::NothingBright);
    row("too weak", with({spot(10, 30)}), any, SpotProblem::NothingBright);
    Scene noisy = with({});
    noisy.noise = 8;
    row("noise alone", noisy, any, SpotProblem::NothingBright);
    row("green for red", with({[] {
            Light light = spot(10, 500);
            light.colour = paintedSpot::Green;
            return light;
        }()}),
        settings(SpotColour::Red), SpotProblem::WrongColour);
    row("a lamp for a laser", with({lamp(Centre, 14)}), settings(SpotColour::Red), SpotProblem::WrongColour);
    row("too small", with({spot(1.2, 200)}), any, SpotProblem::TooSmall);
    SpotSettings small = any;
    small.largestDiameter = 30;
    row("too large", with({spot(45)}), small, SpotProblem::TooLarge);
    Light streak = spot(14);
    streak.elongation = 6;
    row("a streak", with({streak}), any, SpotProblem::NotRound);
    Light ring = lamp(Centre, 30);
    ring.shape = Shape::Ring;
    row("a ring", with({ring}), any, SpotProblem::NotRound);
    row("cut by the border", with({spot(10, 150, {0.5, 100})}), any, SpotProblem::CutByBorder);
    row("in the corner", with({spot(20, 150, {319, 239})}), any, SpotProblem::CutByBorder);
    row("two alike", with({spot(), spot(10, 150, {220, 60})}), any, SpotProblem::Several);
    row("two cut off at white", with({spot(10, 3000), spot(9, 2500, {220, 60})}), any, SpotProblem::Several);
    row("two in one", with({spot(), spot(10, 150, Centre + QPointF(17, 0))}), any, SpotProblem::Several);
}

void tst_LaserSpot::reasonsAreTold() {
    QFETCH(Scene, scene);
    QFETCH(SpotSettings, settings);
    QFETCH(SpotProblem, problem);
    const SpotSearch search = findSpot(paint(scene), {}, settings);
    QVERIFY(!search.spot);
    QCOMPARE(problemText(search.problem), problemText(problem));
    QVERIFY(!problemText(problem).isEmpty());
}

void tst_LaserSpot::theColourIsThatOfTheGlow_data() {
    QTest::addColumn<SpotColour>("wanted");
    QTest::addColumn<double>("peak");
    for (const double peak : {120.0, 900.0, 12000.0}) {
        const auto name = [peak](const char* colour) {
            return QByteArray(colour) + " " + QByteArray::number(peak);
        };
        QTest::newRow(name("red").constData()) << SpotColour::Red << peak;
        QTest::newRow(name("green").constData()) << SpotColour::Green << peak;
        QTest::newRow(name("blue").constData()) << SpotColour::Blue << peak;
    }
}

/// Three lasers of the same strength: the one of the wanted colour is found, and through JPEG.
void tst_LaserSpot::theColourIsThatOfTheGlow() {
    QFETCH(SpotColour, wanted);
    QFETCH(double, peak);
    const std::array<QPointF, 3> centres = {QPointF(80.4, 70.7), QPointF(160.2, 160.3), QPointF(250.6, 90.1)};
    Scene scene;
    scene.noise = 2;
    const std::array colours = {paintedSpot::Red, paintedSpot::Green, paintedSpot::Blue};
    for (std::size_t index = 0; index < colours.size(); ++index) {
        Light light = spot(12, peak, centres[index]);
        light.colour = colours[index];
        scene.lights.push_back(light);
    }
    const QImage picture = paint(scene);
    QByteArray file;
    QBuffer buffer(&file);
    QVERIFY(buffer.open(QIODevice::WriteOnly) && picture.save(&buffer, "JPG", 85));
    const QPointF centre = centres[static_cast<std::size_t>(wanted) - 1];
    for (const QImage& one : {picture, QImage::fromData(file)}) {
        const SpotSearch search = findSpot(one, {}, settings(wanted));
        QVERIFY2(search.spot, qPrintable(problemText(search.problem)));
        const double off = distance(search.spot->centre, centre);
        QVERIFY2(off < 0.2, qPrintable(QString::number(off)));
    }
    QCOMPARE(findSpot(picture, {}, settings()).problem, SpotProblem::Several);
}

void tst_LaserSpot::everyFormatIsRead_data() {
    QTest::addColumn<int>("format");
    for (const QImage::Format format :
         {QImage::Format_Grayscale8, QImage::Format_Grayscale16, QImage::Format_Indexed8, QImage::Format_RGB888,
          QImage::Format_RGB16, QImage::Format_ARGB32_Premultiplied, QImage::Format_RGBA64, QImage::Format_RGB30,
          QImage::Format_RGBA8888, QImage::Format_BGR888})
        QTest::addRow("%d", format) << static_cast<int>(format);
}

void tst_LaserSpot::everyFormatIsRead() {
    QFETCH(int, format);
    // An odd width, so that lines of some formats have bytes at their end that are none of the picture.
    Scene scene = with({spot()});
    scene.size = {317, 239};
    const QImage picture = paint(scene).convertToFormat(static_cast<QImage::Format>(format));
    const SpotSearch search = findSpot(picture, {}, settings());
    QVERIFY2(search.spot, qPrintable(problemText(search.problem)));
    QVERIFY(distance(search.spot->centre, Centre) < 0.15);
}

void tst_LaserSpot::oddPicturesAreHarmless_data() {
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("reference");
    QTest::addColumn<SpotProblem>("problem");
    const QSize none;
    QTest::newRow("null") << none << none << SpotProblem::NoPicture;
    QTest::newRow("a pixel") << QSize(1, 1) << none << SpotProblem::NoPicture;
    QTest::newRow("a line") << QSize(70000, 1) << none << SpotProblem::NoPicture;
    QTest::newRow("huge") << QSize(8001, 8000) << none << SpotProblem::NoPicture;
    QTest::newRow("least") << QSize(3, 3) << none << SpotProblem::NothingBright;
    QTest::newRow("wide and low") << QSize(60000, 3) << none << SpotProblem::NothingBright;
    QTest::newRow("narrow and high") << QSize(3, 30000) << none << SpotProblem::NothingBright;
    QTest::newRow("small reference") << QSize(320, 240) << QSize(160, 120) << SpotProblem::ReferenceDiffers;
    QTest::newRow("turned reference") << QSize(320, 240) << QSize(240, 320) << SpotProblem::ReferenceDiffers;
}

void tst_LaserSpot::oddPicturesAreHarmless() {
    QFETCH(QSize, size);
    QFETCH(QSize, reference);
    QFETCH(SpotProblem, problem);
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(qRgb(50, 50, 50));
    QImage without(reference, QImage::Format_RGB32);
    without.fill(0);
    QCOMPARE(problemText(findSpot(picture, without, settings()).problem), problemText(problem));
    // White all over, and a chequered one: much that is bright, and no spot.
    picture.fill(Qt::white);
    QVERIFY(!findSpot(picture, without, settings()).spot);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = y % 2; x < picture.width(); x += 2)
            picture.setPixel(x, y, 0);
    }
    QVERIFY(!findSpot(picture, without, settings()).spot);
}

void tst_LaserSpot::oddSettingsAreHarmless() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double huge = std::numeric_limits<double>::infinity();
    const QImage picture = paint(with({spot()}));
    for (const double value : {nan, huge, -huge, -1.0, 0.0, 1e300}) {
        SpotSettings odd;
        odd.threshold = value;
        odd.smallestDiameter = value;
        odd.largestDiameter = value;
        odd.roundness = value;
        const SpotSearch search = findSpot(picture, {}, odd);
        QCOMPARE(search.spot.has_value(), search.problem == SpotProblem::None);
    }
    SpotSettings usual;
    usual.threshold = nan;
    usual.largestDiameter = nan;
    QVERIFY(findSpot(picture, {}, usual).spot);
}

QTEST_APPLESS_MAIN(tst_LaserSpot)
#include "tst_LaserSpot.moc"
