#include "vision/CodePicture.h"
#include "vision/MediaPictures.h"
#include "vision/ui/MeasureTest.h"
#include "vision/ui/PictureView.h"
#include "vision/ui/QRcodeInputsetDialog.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>

using namespace corvanta::vision;

namespace {

/// A photograph of a chessboard with 9 x 6 corners, published with OpenCV's examples.
QImage photograph(int number) {
    return readPicture(
        QStringLiteral("/usr/share/doc/opencv-doc/examples/data/left%1.jpg").arg(number, 2, 10, QLatin1Char('0')));
}

const char* const Matrix = "[536.0733846, 0, 342.370953;\\n 0, 536.0163619, 235.536852;\\n 0, 0, 1]";
const char* const Distortion = "[-0.26509, -0.04674, 0.00183, -0.00031, 0.25231]";

} // namespace

/// The dialog in which a camera that measures codes is calibrated and set up.
class tst_CodeDialog final : public MeasureTest {
    Q_OBJECT

private slots:
    void aCodeCameraIsSetUp();
    void photosAreTakenAgain();
    void unusablePhotosEndACalibration_data();
    void unusablePhotosEndACalibration();
    void whatIsStoredIsShownAndKept();
    void wrongMeasuresAreRefused_data();
    void wrongMeasuresAreRefused();
    void withoutVideoThereAreNoPhotos();
    void closingEndsEverything();
    void controlsAreNamed();

private:
    static QByteArray codeInfo(const char* rest = "") {
        return QByteArray(R"({"QRinfo":{"info":{"QRwidth":"60","cameraMatrix":")") + Matrix + R"(","distCoeffs":")" +
               Distortion + "\"" + rest + "}}}";
    }
    static QString photoState(const QWidget& dialog, int number) {
        return find<QListWidget>(dialog, "photoList")->item(number - 1)->text();
    }
    void takePhotos(const QWidget& dialog, int count) {
        find<QSpinBox>(dialog, "photoCount")->setValue(count);
        for (int number = 1; number <= count; ++number) {
            capture(dialog, "photoCapture", photograph(number));
            QTRY_COMPARE(photoState(dialog, number), QStringLiteral("%1 可用").arg(number));
        }
    }
    QString fileOf(const char* name) const {
        return dir_->filePath(QStringLiteral("workspaces/measuring/a/") + QLatin1String(name));
    }
};

void tst_CodeDialog::aCodeCameraIsSetUp() {
    begin();
    QWidget window;
    QRcodeInputsetDialog dialog(context(), QStringLiteral("a"), &window);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("二维码测距配置"));
    showLive(dialog);
    QCOMPARE(saved(dialog), QStringLiteral("请先标定摄像机参数!"));
    turnTo(dialog, 1);
    click(dialog, "initialSet");
    QCOMPARE(tip(), QStringLiteral("请先标定摄像机参数!"));

    turnTo(dialog, 0);
    takePhotos(dialog, 5);
    QCOMPARE(QImage(fileOf("qrpic/5.jpg")).size(), Picture);
    // What is shown large is the photo with its corners, in colour.
    const QImage drawn = find<PictureView>(dialog, "capturedPicture")->picture();
    QCOMPARE(drawn.size(), Picture);
    QVERIFY(!drawn.allGray());
    click(dialog, "calibrate");
    auto* const log = find<QPlainTextEdit>(dialog, "calibrationLog");
    QTRY_VERIFY(log->toPlainText().contains(QStringLiteral("标定完成!\n重投影误差：")));
    QVERIFY(log->toPlainText().contains(QStringLiteral("开始标定………………")));
    QTRY_VERIFY(find<QLabel>(dialog, "cameraMatrix")->text().contains(QLatin1Char('[')));
    QCOMPARE(saved(dialog), QStringLiteral("请先确定二维码初始位置!"));

    turnTo(dialog, 1);
    click(dialog, "initialSet");
    QCOMPARE(tip(), QStringLiteral("请输入正确的二维码宽度!"));
    turnTo(dialog, 0);
    type(dialog, "codeWidth", QStringLiteral("60"));
    turnTo(dialog, 1);
    capture(dialog, "initialSet", wall());
    QCOMPARE(tip(), QStringLiteral("初始值确定失败!"));
    QCOMPARE(saved(dialog), QStringLiteral("请先确定二维码初始位置!"));
    capture(dialog, "initialSet", codePicture::make(Picture, {300, 240}, 8));
    QCOMPARE(tip(), QStringLiteral("初始值确定成功!"));
    QVERIFY(QFile::exists(fileOf("QRinint.jpg")));
    QCOMPARE(cell(dialog, 2, 3), QString("0"));
    capture(dialog, "positionMeasure", codePicture::make(Picture, {356, 240}, 8)); // 7 modules to the right: 20 mm
    QTRY_VERIFY(cell(dialog, 0, 3) != QString("0"));
    QVERIFY2(qAbs(qAbs(cell(dialog, 0, 3).toDouble()) - 20) < 4, qPrintable(cell(dialog, 0, 3)));

    turnTo(dialog, 2);
    auto* const inputs = find<QTreeWidget>(dialog, "measuredInputs");
    QCOMPARE(inputs->topLevelItemCount(), 2);
    inputs->topLevelItem(1)->setCheckState(0, Qt::Unchecked);
    QCOMPARE(saved(dialog), QStringLiteral("保存成功!"));
    const QVariantMap info = stored("QRinfo");
    QCOMPARE(info["QRwidth"].toString(), QString("60"));
    QVERIFY(info["cameraMatrix"].toString().startsWith(QLatin1Char('[')));
    QCOMPARE(info["distCoeffs"].toString().count(QLatin1Char(',')), 4);
    QCOMPARE(info["inintDataList"].toMap()["qr_inint_x"].toString(), cell(dialog, 0, 1));
    QCOMPARE(info["inintDataList"].toMap().size(), 3);
    const QVariantMap input{{"pid", 52}, {"ifpid", 5}, {"ifname", "QR-1"}, {"type", "QRcode_y"}, {"isupload", false}};
    QCOMPARE(info["input"].toList().value(1).toMap(), input);
    QCOMPARE(this->log(), QStringList(QStringLiteral("传感器设置|二维码测距配置|a")));
}

void tst_CodeDialog::photosAreTakenAgain() {
    begin();
    {
        QRcodeInputsetDialog dialog(context(), QStringLiteral("a"), nullptr);
        showLive(dialog);
        find<QSpinBox>(dialog, "photoCount")->setValue(3);
        capture(dialog, "photoCapture", wall());
        QTRY_COMPARE(photoState(dialog, 1), QStringLiteral("1 无棋盘"));
        capture(dialog, "photoRetake", photograph(1));
        QTRY_COMPARE(photoState(dialog, 1), QStringLiteral("1 可用"));
        capture(dialog, "photoCapture", photograph(2));
        QTRY_COMPARE(photoState(dialog, 2), QStringLiteral("2 可用"));
        find<QListWidget>(dialog, "photoList")->setCurrentRow(0);
        find<QListWidget>(dialog, "photoList")->setFocus();
        QTest::keyClick(find<QListWidget>(dialog, "photoList"), Qt::Key_Delete);
        QCOMPARE(photoState(dialog, 1), QStringLiteral("1 未拍"));
        QVERIFY(!QFile::exists(fileOf("qrpic/1.jpg")));
        capture(dialog, "photoCapture", photograph(3)); // fills the gap
        QTRY_COMPARE(photoState(dialog, 1), QStringLiteral("1 可用"));
        find<QSpinBox>(dialog, "rowCorners")->setValue(20); // another board is not on these
        QTRY_COMPARE(photoState(dialog, 2), QStringLiteral("2 无棋盘"));
        find<QSpinBox>(dialog, "rowCorners")->setValue(9);
        type(dialog, "squareWidth", QStringLiteral("30"));
        QTRY_COMPARE(photoState(dialog, 2), QStringLiteral("2 可用"));
        capture(dialog, "photoCapture", photograph(4));
        QTRY_COMPARE(photoState(dialog, 3), QStringLiteral("3 可用"));
        click(dialog, "photoCapture"); // all are there, and good
        QVERIFY(find<QLabel>(dialog, "problem")->text().contains(QStringLiteral("已拍满")));
        find<QLineEdit>(dialog, "codeWidth")->setFocus(); // the measure is entered
    }
    QRcodeInputsetDialog again(context(), QStringLiteral("a"), nullptr);
    QCOMPARE(find<QSpinBox>(again, "photoCount")->value(), 3);
    QCOMPARE(find<QLineEdit>(again, "squareWidth")->text(), QString("30"));
    QTRY_COMPARE(photoState(again, 3), QStringLiteral("3 可用"));
    showLive(again);
    click(again, "photoClear");
    QVERIFY(tip().contains(QLatin1Char('3')));
    QTRY_COMPARE(photoState(again, 3), QStringLiteral("3 未拍"));
    QVERIFY(!QFile::exists(fileOf("qrpic/3.jpg")));
}

void tst_CodeDialog::unusablePhotosEndACalibration_data() {
    QTest::addColumn<QImage>("third");
    QTest::addColumn<QString>("line");
    QTest::newRow("none") << QImage() << QStringLiteral("第3张：Image read fail!");
    QTest::newRow("no board") << wall() << QStringLiteral("第3张：没有检测到棋盘,请重新拍照");
    QTest::newRow("size") << photograph(3).scaled(800, 600, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                          << QStringLiteral("第3张：照片尺寸与之前的不同,请重新拍照");
}

void tst_CodeDialog::unusablePhotosEndACalibration() {
    QFETCH(QImage, third);
    QFETCH(QString, line);
    begin();
    QRcodeInputsetDialog dialog(context(), QStringLiteral("a"), nullptr);
    showLive(dialog);
    find<QSpinBox>(dialog, "photoCount")->setValue(3);
    for (int number = 1; number < 3; ++number) {
        capture(dialog, "photoCapture", photograph(number));
        QTRY_COMPARE(photoState(dialog, number), QStringLiteral("%1 可用").arg(number));
    }
    if (!third.isNull())
        capture(dialog, "photoCapture", third);
    QTRY_VERIFY(find<QPushButton>(dialog, "photoCapture")->isEnabled());
    QTRY_COMPARE(QFile::exists(fileOf("qrpic/3.jpg")), !third.isNull());
    click(dialog, "calibrate");
    QTRY_VERIFY(find<QPushButton>(dialog, "calibrate")->isEnabled());
    const QString log = find<QPlainTextEdit>(dialog, "calibrationLog")->toPlainText();
    QVERIFY2(log.contains(line), qPrintable(log));
    QVERIFY(!log.contains(QStringLiteral("开始标定")));
    QCOMPARE(saved(dialog), QStringLiteral("请先标定摄像机参数!"));
}

void tst_CodeDialog::whatIsStoredIsShownAndKept() {
    begin(codeInfo(R"(,"own":{"k":7},"inintDataList":{"qr_inint_x":"1.5","qr_inint_y":"-2","qr_inint_z":"300"},
        "input":[{"pid":51,"isupload":false,"mine":"kept"},{"pid":99,"isupload":true}])"));
    QRcodeInputsetDialog dialog(context(), QStringLiteral("a"), nullptr);
    showLive(dialog);
    QCOMPARE(find<QLineEdit>(dialog, "codeWidth")->text(), QString("60"));
    QVERIFY(find<QLabel>(dialog, "cameraMatrix")->text().contains(QString("536.07")));
    QCOMPARE(cell(dialog, 1, 1), QString("-2"));
    // A position counts for the width that it was measured with.
    type(dialog, "codeWidth", QStringLiteral("61"));
    QCOMPARE(saved(dialog), QStringLiteral("请先确定二维码初始位置!"));
    QVERIFY(!find<QLabel>(dialog, "initialOld")->isHidden());
    type(dialog, "codeWidth", QStringLiteral(" 60.0 "));
    QVERIFY(find<QLabel>(dialog, "initialOld")->isHidden());
    sdk_.configResult = error("(not authority)").toStdString();
    const QString refusal = saved(dialog);
    QVERIFY2(!refusal.contains(QStringLiteral("成功")), qPrintable(refusal));
    QVERIFY(dialog.isVisible() && log().isEmpty());
    sdk_.configResult = R"({"retcode":0})";
    QCOMPARE(saved(dialog), QStringLiteral("保存成功!"));
    const QVariantMap info = stored("QRinfo");
    QCOMPARE(info["own"].toMap()["k"].toInt(), 7);
    QCOMPARE(info["inintDataList"].toMap()["qr_inint_z"].toString(), QString("300"));
    const QVariantList inputs = info["input"].toList();
    QCOMPARE(inputs.size(), 2); // one is gone from the board, one is new there
    QCOMPARE(inputs[0].toMap()["mine"].toString(), QString("kept"));
    QVERIFY(!inputs[0].toMap()["isupload"].toBool() && inputs[1].toMap()["isupload"].toBool());
}

void tst_CodeDialog::wrongMeasuresAreRefused_data() {
    QTest::addColumn<QString>("width");
    for (const char* const width : {"", "0", "-5", "nan", "1e9", "60mm", "<b>"})
        QTest::newRow(width) << QString::fromLatin1(width);
}

void tst_CodeDialog::wrongMeasuresAreRefused() {
    QFETCH(QString, width);
    begin(codeInfo(R"(,"inintDataList":{"qr_inint_x":"1.5","qr_inint_y":"-2","qr_inint_z":"300"})"));
    QRcodeInputsetDialog dialog(context(), QStringLiteral("a"), nullptr);
    showLive(dialog);
    type(dialog, "codeWidth", width);
    QCOMPARE(saved(dialog), QStringLiteral("请输入正确的二维码宽度!"));
    type(dialog, "squareLength", width);
    click(dialog, "calibrate");
    QCOMPARE(find<QLabel>(dialog, "problem")->text(), QStringLiteral("请输入正确的棋盘格宽度和长度!"));
    QVERIFY(sdk_.configs().empty());
}

void tst_CodeDialog::withoutVideoThereAreNoPhotos() {
    begin(codeInfo());
    QRcodeInputsetDialog dialog(context(), QStringLiteral("a"), nullptr);
    show(dialog);
    click(dialog, "photoCapture"); // the video is not open yet
    QVERIFY(tip().contains(QStringLiteral("还没有视频画面")));
    QVERIFY(find<QPushButton>(dialog, "photoCapture")->isEnabled());
    showLive(dialog);
    click(dialog, "photoCapture"); // no picture comes, and then the video ends
    sdk_.respond(stream_, R"({"type":"avclose","reqid":)" + std::to_string(stream_) + R"(,"retcode":7})");
    QVERIFY(tip().contains(QStringLiteral("还没有视频画面")));
    QVERIFY(!QFile::exists(fileOf("qrpic/1.jpg")));
    turnTo(dialog, 1);
    click(dialog, "positionMeasure");
    QVERIFY(tip().contains(QStringLiteral("还没有视频画面")));
    QVERIFY(find<QPushButton>(dialog, "positionMeasure")->isEnabled());
}

void tst_CodeDialog::closingEndsEverything() {
    begin();
    {
        QRcodeInputsetDialog dialog(context(), QStringLiteral("a"), nullptr);
        showLive(dialog);
        takePhotos(dialog, 4);
        click(dialog, "calibrate");
        dialog.reject();
        QVERIFY(sdk_.stopped() == std::vector<int>{stream_});
    }
    const std::string late = R"({"type":"decodevideodata","w":2,"h":2,"data":64})";
    sdk_.respond(stream_, late); // an address that must not be followed
}

void tst_CodeDialog::controlsAreNamed() {
    begin();
    QWidget window;
    window.resize(680, 384);
    QRcodeInputsetDialog dialog(context(), QStringLiteral("a"), &window);
    checkForm(dialog);
}

QTEST_MAIN(tst_CodeDialog)
#include "tst_CodeDialog.moc"
