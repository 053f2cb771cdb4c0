#include "app/AppManager.h"
#include "base/JsonText.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"
#include "vision/CodePicture.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QVector<QImage>& pictures() {
    static const QVector<QImage> all(20, codePicture::make({640, 480}, {400, 240}, 8));
    return all;
}

} // namespace

/// From the message of an alarm to what is reported to its device.
class tst_VideoMeasurer final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { manager_.reset(); }
    void aVideoIsReported();
    void nothingIsReported_data();
    void nothingIsReported();
    void oneAtATime();
    void endingInTheMiddle();
    void aResultNobodyAskedFor();

private:
    void alarm(const QString& path);
    /// What the device was sent.
    QList<QVariantMap> uploads();
    QString folder() const { return dir_->filePath(QStringLiteral("ZEL/CAM1/LocalRecord")); }

    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;
};

void tst_VideoMeasurer::init() {
    sdk_.reset();
    dir_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(folder()));
    QVERIFY(QDir(dir_->path()).mkdir(QStringLiteral("config")));
    QFile settings(dir_->filePath(QStringLiteral("config/set.json")));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write(QJsonDocument(QJsonObject{{corvanta::keys::DriveFolders, QJsonArray{dir_->path()}}}).toJson());
    settings.close();
    sdk_.setDocument(R"({"type":"ipnclist"})", R"({"group":[],"ipnclist":[
        {"ipncid":"CAM1","type":"video","info":{"QRinfo":{"info":{"QRwidth":"105",
            "cameraMatrix":"[800, 0, 320;\n 0, 800, 240;\n 0, 0, 1]","distCoeffs":"[0, 0, 0, 0, 0]",
            "inintDataList":{"qr_inint_x":"0","qr_inint_y":"0","qr_inint_z":"-500"},
            "input":[{"pid":11,"ifpid":10,"ifname":"QR-1","type":"QRcode_x","isupload":true},
                     {"pid":12,"ifpid":10,"ifname":"QR-1","type":"QRcode_y","isupload":false},
                     {"pid":13,"ifpid":10,"ifname":"QR-1","type":"QRcode_z","isupload":true}]}}}},
        {"ipncid":"CAM2","type":"video"}]})");
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    manager_->deviceFresh();
}

void tst_VideoMeasurer::alarm(const QString& path) {
    const QJsonObject message{
        {QStringLiteral("type"), QStringLiteral("trigger")},
        {QStringLiteral("alarm"),
         QJsonObject{{QStringLiteral("ipncid"), QStringLiteral("CAM1")}, {QStringLiteral("videopath"), path}}}};
    sdk_.sendToClient(QJsonDocument(message).toJson().toStdString());
}

QList<QVariantMap> tst_VideoMeasurer::uploads() {
    QList<QVariantMap> result;
    for (const FakeSdk::Request& request : sdk_.requests()) {
        const QVariantMap map = corvanta::json::parseObject(request.json);
        if (map.contains(QStringLiteral("setcmds")))
            result += map;
    }
    return result;
}

void tst_VideoMeasurer::aVideoIsReported() {
    const QString path = folder() + QStringLiteral("/a.avi");
    QVERIFY(codePicture::makeVideo(path, pictures()));
    alarm(path);
    QTRY_COMPARE(uploads().size(), 1);
    const QVariantMap upload = uploads().first();
    QCOMPARE(upload.value(QStringLiteral("ipncid")).toString(), QStringLiteral("CAM1"));
    QCOMPARE(upload.value(QStringLiteral("reqtype")).toString(), QStringLiteral("p2pmsg"));
    const QVariantList values =
        upload.value(QStringLiteral("setcmds")).toMap().value(QStringLiteral("uploadinputs")).toList();
    QCOMPARE(values.size(), 2);
    const QVariantMap x = values[0].toMap();
    QCOMPARE(x.value(QStringLiteral("pid")).toInt(), 11);
    QCOMPARE(x.value(QStringLiteral("ifpid")).toInt(), 10);
    QCOMPARE(x.value(QStringLiteral("ifname")).toString(), QStringLiteral("QR-1"));
    QCOMPARE(x.value(QStringLiteral("type")).toString(), QStringLiteral("QRcode_x"));
    // 168 px of 800 are 105 mm at 500 mm, so 80 px to the right are 50 mm.
    QVERIFY(qAbs(x.value(QStringLiteral("data")).toString().toDouble() + 50) < 2);
    const QVariantMap z = values[1].toMap();
    QCOMPARE(z.value(QStringLiteral("pid")).toInt(), 13);
    QVERIFY(qAbs(z.value(QStringLiteral("data")).toString().toDouble()) < 8);
}

void tst_VideoMeasurer::nothingIsReported_data() {
    QTest::addColumn<QString>("path");
    const auto row = [](const char* name, const QString& path) {
        QTest::newRow(name) << path;
    };
    row("a file that is not there", QStringLiteral("%1/ZEL/CAM1/LocalRecord/gone.avi"));
    row("a folder", QStringLiteral("%1/ZEL/CAM1/LocalRecord"));
    row("a device without a code", QStringLiteral("%1/ZEL/CAM2/LocalRecord/a.avi"));
    row("a device that is not known", QStringLiteral("%1/ZEL/CAM9/LocalRecord/a.avi"));
    row("no path", {});
    row("a short one", QStringLiteral("/"));
    row("no device", QStringLiteral("D:/ZEL"));
}

void tst_VideoMeasurer::nothingIsReported() {
    QFETCH(const QString, path);
    alarm(path.contains(QLatin1String("%1")) ? path.arg(dir_->path()) : path);
    // What comes behind it is measured all the same.
    const QString good = folder() + QStringLiteral("/good.png");
    QVERIFY(pictures().first().save(good));
    QTRY_VERIFY((alarm(good), uploads().size() >= 1));
}

void tst_VideoMeasurer::oneAtATime() {
    const QString path = folder() + QStringLiteral("/a.avi");
    QVERIFY(codePicture::makeVideo(path, pictures()));
    // Both are delivered in one turn of the event loop, so the second comes while the first is measured.
    alarm(path);
    alarm(path);
    QTRY_COMPARE(uploads().size(), 1);
    QTRY_VERIFY((alarm(path), uploads().size() == 2)); // once it is over, the next one
}

void tst_VideoMeasurer::endingInTheMiddle() {
    const QString path = folder() + QStringLiteral("/long.avi");
    QVERIFY(codePicture::makeVideo(path, pictures() + pictures() + pictures()));
    QSignalSpy alarms(manager_.get(), &AppEvents::Onsig_TriggerAlarm);
    alarm(path);
    QTRY_COMPARE(alarms.size(), 1);
    manager_.reset();
    QCOMPARE(uploads().size(), 0);
}

void tst_VideoMeasurer::aResultNobodyAskedFor() {
    manager_->OngetVideoQRcodepoint({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    manager_->OngetVideoQRcodepoint({});
    QCOMPARE(uploads().size(), 0);
}

QTEST_MAIN(tst_VideoMeasurer)
#include "tst_VideoMeasurer.moc"
