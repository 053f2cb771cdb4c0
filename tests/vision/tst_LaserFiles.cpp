#include "support/PaintedSpot.h"
#include "vision/CodePicture.h"
#include "vision/LaserFile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <cmath>

using namespace corvanta::vision;
using paintedSpot::Light;

namespace {

/// A spot of a red laser at a place in mm; 0.5 mm are a pixel. Beside it shines another light, which is as strong.
QImage pictureOf(std::optional<QPointF> place, bool isLampOn = true) {
    paintedSpot::Scene scene;
    scene.noise = 2;
    if (isLampOn)
        scene.lights.push_back({{60, 180}, 14, 900});
    if (place)
        scene.lights.push_back({*place * 2, 14, 900});
    return paintedSpot::paint(scene);
}

QVariantMap setup(const QString& reference) {
    LaserInfo info;
    info.scale = 0.5;
    info.spot.colour = SpotColour::Red;
    info.reference = reference;
    return info.toMap();
}

bool isNear(const QStringList& position, double x, double y) {
    const auto found = LaserPosition::fromTexts(position);
    return found && std::hypot(static_cast<double>(found->x) - x, static_cast<double>(found->y) - y) < 0.1;
}

} // namespace

/// Measuring the spot of a laser in files: pictures, videos, and such that show none.
class tst_LaserFiles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void picturesAreMeasured();
    void videosAreMeasuredWhole_data();
    void videosAreMeasuredWhole();
    void filesThatAreNone_data();
    void filesThatAreNone();
    void itCanBeEnded();

private:
    QString file(const QString& name) const { return folder_.filePath(name); }
    QStringList measure(const QString& name, const QString& reference = QStringLiteral("laserpic/off.png")) const {
        return laserMeasurement(setup(reference), folder_.path())(file(name), [] { return false; });
    }

    QTemporaryDir folder_;
};

void tst_LaserFiles::initTestCase() {
    QVERIFY(QDir(folder_.path()).mkpath(QStringLiteral("laserpic")));
    QVERIFY(pictureOf({}).save(file(QStringLiteral("laserpic/off.png"))));
    QVERIFY(pictureOf(QPointF(100, 50)).save(file(QStringLiteral("on.jpg")), nullptr, 92));
    QVERIFY(pictureOf({}).save(file(QStringLiteral("off.png"))));
}

void tst_LaserFiles::picturesAreMeasured() {
    QVERIFY(isNear(measure(QStringLiteral("on.jpg")), 100, 50));
    // Without a reference the two lights are alike; one that is named must be there.
    QVERIFY(measure(QStringLiteral("on.jpg"), QString()).isEmpty());
    QVERIFY(measure(QStringLiteral("on.jpg"), QStringLiteral("laserpic/gone.png")).isEmpty());
    QVERIFY(measure(QStringLiteral("on.jpg"), QStringLiteral("../off.png")).isEmpty());
}

void tst_LaserFiles::videosAreMeasuredWhole_data() {
    QTest::addColumn<QVector<QPointF>>("places"); // null: a frame without the laser
    QTest::addColumn<QPointF>("mean");
    QTest::newRow("one") << QVector<QPointF>{{100, 50}} << QPointF(100, 50);
    QTest::newRow("two") << QVector<QPointF>{{100, 50}, {110, 56}} << QPointF(105, 53);
    QTest::newRow("the ends are left out") << QVector<QPointF>{{100, 90}, {102, 60}, {140, 58}} << QPointF(102, 60);
    QTest::newRow("frames without") << QVector<QPointF>{{}, {100, 50}, {}, {}, {104, 50}} << QPointF(102, 50);
}

void tst_LaserFiles::videosAreMeasuredWhole() {
    QFETCH(QVector<QPointF>, places);
    QFETCH(QPointF, mean);
    QVector<QImage> pictures;
    for (const QPointF& place : places)
        pictures += pictureOf(place.isNull() ? std::nullopt : std::optional(place));
    QVERIFY(codePicture::makeVideo(file(QStringLiteral("spot.avi")), pictures));
    const QStringList position = measure(QStringLiteral("spot.avi"));
    QVERIFY2(isNear(position, mean.x(), mean.y()), qPrintable(position.join(QLatin1Char(' '))));
}

void tst_LaserFiles::filesThatAreNone_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("missing picture") << "gone.png" << QByteArray();
    QTest::newRow("missing video") << "gone.avi" << QByteArray();
    QTest::newRow("no picture") << "no.jpg" << QByteArray("text");
    QTest::newRow("no video") << "no.avi" << QByteArray("RIFF....AVI LIST");
    QTest::newRow("another name") << "on.txt" << QByteArray("text");
    QTest::newRow("laser off") << "off.png" << QByteArray();
}

void tst_LaserFiles::filesThatAreNone() {
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFile written(file(name));
    if (!content.isEmpty())
        QVERIFY(written.open(QIODevice::WriteOnly) && written.write(content) == content.size());
    written.close();
    QVERIFY(measure(name).isEmpty());
}

void tst_LaserFiles::itCanBeEnded() {
    const QVector<QImage> pictures(30, pictureOf(QPointF(100, 50)));
    QVERIFY(codePicture::makeVideo(file(QStringLiteral("long.avi")), pictures));
    std::atomic<int> asked = 0;
    const FileMeasurement measurement = laserMeasurement(setup(QStringLiteral("laserpic/off.png")), folder_.path());
    QVERIFY(measurement(file(QStringLiteral("long.avi")), [&asked] { return ++asked > 3; }).isEmpty());
}

QTEST_GUILESS_MAIN(tst_LaserFiles)
#include "tst_LaserFiles.moc"
