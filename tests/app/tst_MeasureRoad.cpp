#include "app/AppManager.h"
#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "playback/MediaFile.h"
#include "scene/CodeScene.h"
#include "support/RecordingUi.h"
#include "vision/MatrixText.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <ipncsdk/ZELIPNCSDK.h>
#include <opencv2/core.hpp>

#include <cmath>
#include <limits>

namespace requests = corvanta::requests;
namespace scene = ipncsdk::scene;

namespace {

const QString Camera = QStringLiteral("CAM0067");
constexpr int AxisPids[] = {1201, 1202, 1203};
constexpr int Trigger = 1206;                       // the output that raises an alarm
constexpr auto Patience = std::chrono::seconds(20); // the recording ends 5 s after the alarm

QString number(double value) {
    return QString::number(value, 'g', 10);
}

} // namespace

/// The client's core over the real SDK, and a camera that looks at a moving code: an alarm is raised, its video is
/// recorded and measured, and the way that the code has come arrives as the values of its inputs, and is kept.
class tst_MeasureRoad final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void theMovementArrives();

private:
    void signIn();
    /// What the dialog would keep of the camera: its true lens, as the light stream shows it.
    void setUp();
    void switchTrigger(bool on);
    QStringList videos() const;

    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;
    QHash<int, double> values_; ///< the newest of each input
    bool isWritten_ = false;    ///< the output that raises the alarm
    QVariantList kept_;         ///< samples of the first axis
    const cv::Vec3d initial_ = {-10, 5, -600};
};

void tst_MeasureRoad::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(dir_->path()));
    QVERIFY(QDir().mkdir(QStringLiteral("config")) && QDir().mkdir(QStringLiteral("disk")));
    QFile settings(QStringLiteral("config/set.json"));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    const QString drive = dir_->path() + QStringLiteral("/disk/");
    settings.write(QJsonDocument(QJsonObject{{corvanta::keys::DriveFolders, QJsonArray{drive}},
                                             {corvanta::keys::AcceptAlarms, true}})
                       .toJson());
    settings.close();
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    connect(manager_.get(), &AppEvents::sig_UpdateSensorInputData, this,
            [this](const QString&, const QVariantList& list) {
                for (const QVariant& entry : list) {
                    const QVariantMap one = entry.toMap();
                    values_.insert(one.value(QStringLiteral("pid")).toInt(),
                                   one.value(QStringLiteral("value")).toDouble());
                }
            });
}

void tst_MeasureRoad::cleanup() {
    manager_.reset();
    QDir::setCurrent(QDir::rootPath());
}

void tst_MeasureRoad::signIn() {
    const AppContext context = manager_->context();
    const QVariantMap account = context.gateway.document(QStringLiteral("firstaccount"));
    QVERIFY(!account.isEmpty());
    context.gateway.request(requests::accountRequest(QStringLiteral("登录账号"), account), this, {});
    QTRY_VERIFY_WITH_TIMEOUT(context.devices.device(Camera) != nullptr, 60000);
}

void tst_MeasureRoad::setUp() {
    const scene::Lens lens = scene::CodeScene::lens().scaled({640, 360});
    const cv::Matx33d camera = lens.matrix();
    const QVariantMap info{
        {QStringLiteral("QRwidth"), number(scene::CodeScene::codeSide)},
        {QStringLiteral("cameraMatrix"),
         corvanta::vision::matrixText({3, 3, {std::begin(camera.val), std::end(camera.val)}})},
        {QStringLiteral("distCoeffs"),
         corvanta::vision::matrixText({1, 5, {lens.distortion.begin(), lens.distortion.end()}})},
        {QStringLiteral("inintDataList"), QVariantMap{{QStringLiteral("qr_inint_x"), number(initial_[0])},
                                                      {QStringLiteral("qr_inint_y"), number(initial_[1])},
                                                      {QStringLiteral("qr_inint_z"), number(initial_[2])}}}};
    const QVariantMap command{{QStringLiteral("type"), QStringLiteral("QRinfo")},
                              {QStringLiteral("ipncid"), Camera},
                              {QStringLiteral("QRinfo"), QVariantMap{{QStringLiteral("info"), info}}}};
    manager_->context().gateway.setConfig(corvanta::json::toText(command));
    const auto isThere = [this] {
        const DeviceRecord* const device = manager_->context().devices.device(Camera);
        return device != nullptr && !device->qrInfo.isEmpty();
    };
    QTRY_VERIFY_WITH_TIMEOUT(isThere(), 60000);
}

void tst_MeasureRoad::switchTrigger(bool on) {
    isWritten_ = false;
    const QVariantMap write{{QStringLiteral("pid"), Trigger}, {QStringLiteral("value"), on ? 1 : 0}};
    manager_->context().gateway.request(
        requests::deviceRequest(QStringLiteral("写入控制输出"),
                                {{QStringLiteral("ipncid"), Camera}, {QStringLiteral("sensorwrite"), write}}),
        this, [this](const QVariantMap& reply) {
            isWritten_ = reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("state")).toString() ==
                         QLatin1String("ok");
        });
    QTRY_VERIFY_WITH_TIMEOUT(isWritten_, 60000);
}

QStringList tst_MeasureRoad::videos() const {
    QStringList found;
    QDirIterator files(dir_->path() + QStringLiteral("/disk/ZEL/") + Camera, {QStringLiteral("*.avi")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        found += files.next();
    return found;
}

void tst_MeasureRoad::theMovementArrives() {
    signIn();
    if (!QTest::currentTestFailed())
        setUp();
    const auto isMeasured = [this] {
        return std::all_of(std::begin(AxisPids), std::end(AxisPids),
                           [this](int pid) { return values_.contains(pid); });
    };
    // What is recorded begins with the camera's first pictures; an alarm that comes before them has no video.
    constexpr int alarms = 8;
    bool isDone = false;
    for (int alarm = 0; alarm < alarms && !isDone && !QTest::currentTestFailed(); ++alarm) {
        switchTrigger(false);
        switchTrigger(true);
        isDone = QTest::qWaitFor(isMeasured, static_cast<int>(std::chrono::milliseconds(Patience).count()));
    }
    if (QTest::currentTestFailed())
        return;
    QVERIFY(isDone);
    QVERIFY(!videos().isEmpty());
    corvanta::playback::MediaFile video;
    QCOMPARE(video.open(videos().first().toStdU16String(), {}), corvanta::playback::OpenError::None);
    const double length = std::chrono::duration<double>(video.duration()).count();
    // The camera as seen from the code moves the other way. When the recording began is not known here, so the
    // place is looked for on the code's whole way.
    const cv::Vec3d seen = -(initial_ + cv::Vec3d(values_[1201], values_[1202], values_[1203]));
    double nearest = std::numeric_limits<double>::max();
    for (double begin = 0; begin < scene::CodeScene::codePeriod; begin += 0.1) {
        cv::Vec3d mean;
        constexpr int steps = 20;
        for (int step = 0; step < steps; ++step)
            mean += scene::CodeScene::positionAt(begin + length * step / steps) / steps;
        nearest = std::min(nearest, cv::norm(mean - seen));
    }
    QVERIFY2(nearest < 8, qPrintable(QStringLiteral("%1 mm beside the way").arg(nearest)));
    // It is kept as every sensor's values are, for charts.
    const auto ask = [this] {
        manager_->context().gateway.request(
            requests::deviceRequest(QStringLiteral("获取传感器采集输入数据"),
                                    {{QStringLiteral("inputid"), QVariantList{AxisPids[0]}},
                                     {QStringLiteral("mode"), QStringLiteral("all")},
                                     {QStringLiteral("begin"), QStringLiteral("oldest")}}),
            this, [this](const QVariantMap& reply) {
                const QVariantMap inputs =
                    reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("sensordataresp")).toMap();
                kept_ = inputs.value(QString::number(AxisPids[0])).toMap().value(QStringLiteral("datas")).toList();
            });
        return !kept_.isEmpty();
    };
    QTRY_VERIFY_WITH_TIMEOUT(ask(), 60000);
    QVERIFY(std::abs(kept_.last().toMap().value(QStringLiteral("value")).toDouble() - values_[AxisPids[0]]) < 1e-3);
}

QTEST_MAIN(tst_MeasureRoad)
#include "tst_MeasureRoad.moc"
