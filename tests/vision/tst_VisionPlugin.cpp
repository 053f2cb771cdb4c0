#include "vision/CodePicture.h"
#include "vision/LaserSpot.h"
#include "vision/QrFile.h"
#include "vision/VisionBackend.h"
#include "vision/setup/CalibrationRun.h"
#include "vision/setup/QrDraft.h"

#include <QFile>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

using namespace corvanta::vision;

namespace {

/// Whether the libraries that cameras are measured with are in this process.
bool isLoaded() {
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = maps.readAll();
    return text.contains("libopencv_calib3d") || text.contains("libzbar");
}

} // namespace

/// The libraries come with the plugin, and without it the user is told so.
class tst_VisionPlugin final : public QObject {
    Q_OBJECT
private slots:
    void withoutIt();
    void withIt();
};

// Nothing lies beside this program.
void tst_VisionPlugin::withoutIt() {
    const QVariantMap info{
        {QStringLiteral("cameraMatrix"), QStringLiteral("[800, 0, 320;\n 0, 800, 240;\n 0, 0, 1]")},
        {QStringLiteral("distCoeffs"), QStringLiteral("[0, 0, 0, 0, 0]")},
        {QStringLiteral("QRwidth"), QStringLiteral("105")}};
    const QrDraft draft = QrDraft::fromInfo(info);
    QVERIFY(draft.isCalibrated());
    QCOMPARE(draft.measureProblem().value_or(QString()), noVisionText());
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.png"));
    const QImage picture = codePicture::make({640, 480}, {320, 240}, 8);
    QVERIFY(picture.save(file));
    QVERIFY(!measureFile(file, *QrPose::make(draft.setup()), {}));
    const SpotSearch search = findSpot(picture, {}, {});
    QVERIFY(!search.spot);
    QCOMPARE(problemText(search.problem), noVisionText());
    const BoardShape shape{9, 6, 25, 25};
    QVERIFY(!findBoard(picture, shape));
    QVERIFY(drawBoard(picture, shape, {}) == picture);
    QVERIFY(!calibrate({}, shape, {640, 480}));
    CalibrationRun run({file, file, file}, shape);
    QSignalSpy steps(&run, &CalibrationRun::sigSteps);
    run.start();
    QTRY_VERIFY(!steps.isEmpty());
    const auto told = run.takeSteps();
    QCOMPARE(told.size(), std::size_t{1});
    QCOMPARE(stepText(told.front()), noVisionText());
    QVERIFY(!isLoaded());
}

void tst_VisionPlugin::withIt() {
    QPluginLoader loader(QStringLiteral(PLUGIN));
    const auto* const backend = qobject_cast<VisionBackend*>(loader.instance());
    QVERIFY2(backend != nullptr, qPrintable(loader.errorString()));
#ifndef Q_OS_WIN
    QVERIFY(isLoaded());
#endif
    const auto corners = backend->makeCodeReader()->find(codePicture::make({640, 480}, {320, 240}, 8));
    QVERIFY(corners.has_value());
    const auto pose = backend->poseOfCode(*corners, 52.5F, {{800, 0, 320, 0, 800, 240, 0, 0, 1}, {}});
    QVERIFY(pose.has_value());
    QVERIFY(std::abs(pose->translation[2] - 800.0 * 105 / (codePicture::Modules * 8)) < 10);
}

QTEST_GUILESS_MAIN(tst_VisionPlugin)
#include "tst_VisionPlugin.moc"
