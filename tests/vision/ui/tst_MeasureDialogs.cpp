#include "account/AccountTest.h"
#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "sensor/ui/SensorDialog.h"
#include "vision/CodePicture.h"
#include "vision/MediaPictures.h"
#include "vision/ui/LaserSetDialog.h"
#include "vision/ui/PictureView.h"
#include "vision/ui/QRcodeInputsetDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>

#include <cmath>

using namespace corvanta::vision;
using corvanta::json::parseObject;

namespace {

const QSize Picture(640, 480); // px, of the photographs and of what else the camera shows

/// A photograph of a chessboard with 9 x 6 corners, published with OpenCV's examples.
QImage photograph(int number) {
    return readPicture(
        QStringLiteral("/usr/share/doc/opencv-doc/examples/data/left%1.jpg").arg(number, 2, 10, QLatin1Char('0')));
}

QImage wall(int grey = 60) {
    QImage picture(Picture, QImage::Format_RGB32);
    picture.fill(qRgb(grey, grey, grey));
    return picture;
}

/// A red spot with a white core on a plate.
QImage spotAt(QPointF centre) {
    QImage picture = wall();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const double distance = std::hypot(x + 0.5 - centre.x(), y + 0.5 - centre.y());
            const double light = std::exp(-distance * distance / 50);
            const auto level = [light](double strength) {
                return qMin(255, qRound(60 + strength * light));
            };
            picture.setPixel(x, y, qRgb(level(500), level(220), level(220)));
        }
    }
    return picture;
}

/// As a stream brings it: three planes, full range.
QByteArray planesOf(const QImage& picture) {
    QByteArray luma;
    QByteArray blue;
    QByteArray red;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            const double light = 0.299 * qRed(pixel) + 0.587 * qGreen(pixel) + 0.114 * qBlue(pixel);
            luma += static_cast<char>(qRound(light));
            if (x % 2 != 0 || y % 2 != 0)
                continue;
            blue += static_cast<char>(qBound(0, qRound(127.5 + (qBlue(pixel) - light) / 2.03211), 255));
            red += static_cast<char>(qBound(0, qRound(127.5 + (qRed(pixel) - light) / 1.13983), 255));
        }
    }
    return luma + blue + red;
}

const char* const Matrix = "[536.0733846, 0, 342.370953;\\n 0, 536.0163619, 235.536852;\\n 0, 0, 1]";
const char* const Distortion = "[-0.26509, -0.04674, 0.00183, -0.00031, 0.25231]";

} // namespace

/// The dialogs in which measuring cameras are set up, against a service that answers by script and a camera that
/// shows what a test wants.
class tst_MeasureDialogs : public AccountTest {
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
    void aLaserCameraIsSetUp();
    void aLaserPlateHasFourPoints();
    void administratorsSetUp_data();
    void administratorsSetUp();
    void controlsAreNamed();

private:
    void begin(const QByteArray& info = "{}", const QByteArray& authority = "true") {
        const QByteArray record =
            R"({"group":[],"ipnclist":[{"ipncid":"a","type":"video","authority":{"admin":AUTHORITY},
            "nickname":"相机<b>","info":INFO,"interfaces":[
            {"pid":5,"type":"QR","ifname":"QR-1","name":"码","input":[
              {"pid":51,"name":"横<b>","params":{"axis":"QRcode_x"}},{"pid":52,"name":"纵","params":{"axis":"QRcode_y"}},
              {"pid":53,"name":"其他","params":{"axis":"none"}}]},
            {"pid":6,"type":"LASER","ifname":"LASER-1","name":"光","input":[
              {"pid":61,"name":"水平","params":{"axis":"laser_x"}}]},
            {"pid":7,"type":"IO","ifname":"IO","name":"开关"}]}]})";
        sdk_.setDocument(R"({"type":"ipnclist"})",
                         QByteArray(record).replace("INFO", info).replace("AUTHORITY", authority).toStdString());
        answer("", ""); // videos open when a test says so
        manager_->deviceFresh();
        QCOMPARE(context().devices.ipncIds().size(), 1);
    }
    static QByteArray codeInfo(const char* rest = "") {
        return QByteArray(R"({"QRinfo":{"info":{"QRwidth":"60","cameraMatrix":")") + Matrix + R"(","distCoeffs":")" +
               Distortion + "\"" + rest + "}}}";
    }
    void showLive(QWidget& dialog) {
        show(dialog);
        for (const FakeSdk::Request& request : sdk_.requests()) {
            if (request.json.find("avreq") != std::string::npos)
                stream_ = request.id;
        }
        QVERIFY(stream_ > 0);
        sdk_.respond(stream_,
                     R"({"type":"avopen","reqid":)" + std::to_string(stream_) + R"(,"retcode":0,"avparam":{}})");
        QTRY_COMPARE(find<QLabel>(dialog, "liveState")->text(), QStringLiteral("打开成功"));
    }
    /// Presses a button that captures; the camera shows `picture` then.
    void capture(const QWidget& dialog, const char* button, const QImage& picture) {
        click(dialog, button);
        const QByteArray planes = planesOf(picture);
        sdk_.respond(stream_, (R"({"type":"decodevideodata","w":)" + QByteArray::number(picture.width()) +
                               R"(,"h":)" + QByteArray::number(picture.height()) + R"(,"data":)" +
                               QByteArray::number(reinterpret_cast<qintptr>(planes.data())) + "}")
                                  .toStdString());
    }
    static void turnTo(const QWidget& dialog, int page) {
        find<QTabWidget>(dialog, "measurePages")->setCurrentIndex(page);
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
    static QString cell(const QWidget& dialog, int row, int column) {
        return find<QTreeWidget>(dialog, "positions")->topLevelItem(row)->text(column);
    }
    static QString saved(const QWidget& dialog) {
        click(dialog, "measureSave");
        return tip();
    }
    /// "info" of the last command, which is one of this type.
    QVariantMap stored(const char* type) {
        const QVariantMap command = parseObject(sdk_.configs().back());
        if (command.value("type").toString() != QLatin1String(type) || command.value("ipncid") != QStringLiteral("a"))
            return {};
        return command.value(QLatin1String(type)).toMap().value("info").toMap();
    }

    int stream_ = 0;
};

void tst_MeasureDialogs::aCodeCameraIsSetUp() {
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

void tst_MeasureDialogs::photosAreTakenAgain() {
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

void tst_MeasureDialogs::unusablePhotosEndACalibration_data() {
    QTest::addColumn<QImage>("third");
    QTest::addColumn<QString>("line");
    QTest::newRow("none") << QImage() << QStringLiteral("第3张：Image read fail!");
    QTest::newRow("no board") << wall() << QStringLiteral("第3张：没有检测到棋盘,请重新拍照");
    QTest::newRow("size") << photograph(3).scaled(800, 600, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                          << QStringLiteral("第3张：照片尺寸与之前的不同,请重新拍照");
}

void tst_MeasureDialogs::unusablePhotosEndACalibration() {
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

void tst_MeasureDialogs::whatIsStoredIsShownAndKept() {
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

void tst_MeasureDialogs::wrongMeasuresAreRefused_data() {
    QTest::addColumn<QString>("width");
    for (const char* const width : {"", "0", "-5", "nan", "1e9", "60mm", "<b>"})
        QTest::newRow(width) << QString::fromLatin1(width);
}

void tst_MeasureDialogs::wrongMeasuresAreRefused() {
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

void tst_MeasureDialogs::withoutVideoThereAreNoPhotos() {
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

void tst_MeasureDialogs::closingEndsEverything() {
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

void tst_MeasureDialogs::aLaserCameraIsSetUp() {
    begin();
    QWidget window;
    LaserSetDialog dialog(context(), QStringLiteral("a"), &window);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("激光光斑测距配置"));
    showLive(dialog);
    capture(dialog, "referenceTake", wall());
    auto* const state = find<QLabel>(dialog, "spotState");
    QTRY_VERIFY(state->text().contains(QStringLiteral("参考图")));
    capture(dialog, "spotFind", spotAt({200, 150}));
    QTRY_VERIFY2(state->text().contains(QStringLiteral("中心 (200.")), qPrintable(state->text()));
    type(dialog, "spotSmallest", QStringLiteral("100"));
    find<QComboBox>(dialog, "spotColour")->setCurrentIndex(1); // the same picture is looked at again
    QVERIFY(!state->text().contains(QStringLiteral("已找到")));
    type(dialog, "spotSmallest", QStringLiteral("x"));
    QVERIFY(!saved(dialog).contains(QStringLiteral("成功")));
    type(dialog, "spotSmallest", QStringLiteral("3"));
    QVERIFY(saved(dialog).contains(QStringLiteral("比例")));
    turnTo(dialog, 1);
    type(dialog, "scaleValue", QStringLiteral("0.5"));
    QCOMPARE(saved(dialog), QStringLiteral("请先确定光斑初始位置!"));
    turnTo(dialog, 2);
    capture(dialog, "initialSet", wall());
    QCOMPARE(tip(), QStringLiteral("初始值确定失败!"));
    capture(dialog, "initialSet", spotAt({200, 150}));
    QCOMPARE(tip(), QStringLiteral("初始值确定成功!"));
    QVERIFY(qAbs(cell(dialog, 0, 1).toDouble() - 100) < 0.1);
    capture(dialog, "positionMeasure", spotAt({220, 150}));
    QTRY_VERIFY(qAbs(cell(dialog, 0, 3).toDouble() - 10) < 0.1);
    QCOMPARE(saved(dialog), QStringLiteral("保存成功!"));
    const QVariantMap info = stored("Laserinfo");
    QCOMPARE(info["scale"].toString(), QString("0.5"));
    QCOMPARE(info["colour"].toString(), QString("red"));
    QCOMPARE(info["inintDataList"].toMap()["laser_inint_x"].toString(), cell(dialog, 0, 1));
    QCOMPARE(info["input"].toList().value(0).toMap()["type"].toString(), QString("laser_x"));
    QCOMPARE(info["reference"].toString(), QString("workspaces/measuring/a/laserpic/reference.png"));
    QCOMPARE(QImage(dir_->filePath(info["reference"].toString())).size(), Picture);
    turnTo(dialog, 1);
    type(dialog, "scaleValue", QStringLiteral("0.25")); // the initial position was measured with another
    QCOMPARE(saved(dialog), QStringLiteral("请先确定光斑初始位置!"));
}

void tst_MeasureDialogs::aLaserPlateHasFourPoints() {
    begin();
    LaserSetDialog dialog(context(), QStringLiteral("a"), nullptr);
    showLive(dialog);
    turnTo(dialog, 1);
    find<QComboBox>(dialog, "scaleMode")->setCurrentIndex(1);
    QVERIFY(saved(dialog).contains(QStringLiteral("四个标定点")));
    capture(dialog, "scaleCapture", spotAt({320, 240}));
    auto* const view = find<PictureView>(dialog, "capturedPicture");
    QTRY_COMPARE(view->picture().size(), Picture);
    auto* const table = find<QTableWidget>(dialog, "scalePoints");
    const QVector<QPoint> corners{{100, 100}, {500, 100}, {500, 400}, {100, 400}};
    const double zoom = qMin(view->width() / 640.0, view->height() / 480.0);
    const QPointF origin((view->width() - 640 * zoom) / 2, (view->height() - 480 * zoom) / 2);
    for (int point = 0; point < corners.size(); ++point) {
        QTest::mouseClick(view, Qt::LeftButton, {}, (origin + QPointF(corners[point]) * zoom).toPoint());
        QVERIFY(qAbs(table->item(point, 0)->text().toDouble() - corners[point].x()) <= 1 / zoom);
        for (int axis = 0; axis < 2; ++axis) { // what was clicked is corrected by hand
            const int pixel = axis == 0 ? corners[point].x() : corners[point].y();
            table->item(point, axis)->setText(QString::number(pixel));
            table->item(point, 2 + axis)->setText(QString::number(pixel / 10.0));
        }
    }
    turnTo(dialog, 2);
    QTest::mouseClick(view, Qt::LeftButton, {}, view->rect().center()); // the points are not being chosen now
    QCOMPARE(table->item(0, 0)->text(), QString("100"));
    capture(dialog, "initialSet", spotAt({320, 240}));
    QCOMPARE(tip(), QStringLiteral("初始值确定成功!"));
    QVERIFY2(qAbs(cell(dialog, 0, 1).toDouble() - 32) < 0.1, qPrintable(cell(dialog, 0, 1)));
    QVERIFY(qAbs(cell(dialog, 1, 1).toDouble() - 24) < 0.1);
    QCOMPARE(saved(dialog), QStringLiteral("保存成功!"));
    QCOMPARE(stored("Laserinfo")["mode"].toString(), QString("points"));
    QCOMPARE(stored("Laserinfo")["points"].toList().value(2).toMap()["x"].toString(), QString("50"));
    table->item(3, 2)->setText(QStringLiteral("?"));
    QVERIFY(!saved(dialog).contains(QStringLiteral("成功")));
}

void tst_MeasureDialogs::administratorsSetUp_data() {
    QTest::addColumn<QByteArray>("authority");
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("isShown");
    QTest::addColumn<QString>("opened");
    QTest::newRow("code") << QByteArray("true") << 0 << true << QStringLiteral("QRcodeInputsetDialog");
    QTest::newRow("laser") << QByteArray("true") << 1 << true << QStringLiteral("LaserSetDialog");
    QTest::newRow("other board") << QByteArray("true") << 2 << false << QString();
    QTest::newRow("no administrator") << QByteArray("false") << 0 << true << QString();
}

void tst_MeasureDialogs::administratorsSetUp() {
    QFETCH(QByteArray, authority);
    QFETCH(int, row);
    QFETCH(bool, isShown);
    QFETCH(QString, opened);
    begin("{}", authority);
    corvanta::sensor::SensorDialog dialog(context(), QStringLiteral("a"), nullptr);
    show(dialog);
    auto* const list = find<QTreeWidget>(dialog, "boardList");
    list->setCurrentItem(list->topLevelItem(row));
    auto* const button = find<QPushButton>(dialog, "boardMeasure");
    QCOMPARE(button->isVisible(), isShown);
    QCOMPARE(isShown && button->isEnabled(), !opened.isEmpty());
    if (opened.isEmpty())
        return;
    click(dialog, "boardMeasure");
    QTRY_VERIFY(QApplication::activeModalWidget() != nullptr);
    QCOMPARE(QApplication::activeModalWidget()->objectName(), opened);
    QApplication::activeModalWidget()->close();
}

void tst_MeasureDialogs::controlsAreNamed() {
    begin();
    QWidget window;
    window.resize(680, 384);
    QRcodeInputsetDialog code(context(), QStringLiteral("a"), &window);
    LaserSetDialog laser(context(), QStringLiteral("a"), &window);
    for (QDialog* const dialog : {static_cast<QDialog*>(&code), static_cast<QDialog*>(&laser)}) {
        checkNames(*dialog);
        QVERIFY(dialog->size().width() <= 680 && dialog->size().height() <= 384);
        show(*dialog);
        auto* const pages = find<QTabWidget>(*dialog, "measurePages");
        for (int page = 0; page < pages->count(); ++page) { // nothing is cut off sideways
            pages->setCurrentIndex(page);
            auto* const scroll = qobject_cast<QScrollArea*>(pages->widget(page));
            QTRY_VERIFY2(!scroll->horizontalScrollBar()->isVisible(), qPrintable(pages->tabText(page)));
        }
        dialog->close();
    }
}

QTEST_MAIN(tst_MeasureDialogs)
#include "tst_MeasureDialogs.moc"
