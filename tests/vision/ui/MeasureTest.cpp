#include "vision/ui/MeasureTest.h"

#include "base/DeviceModel.h"
#include "base/JsonText.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTreeWidget>

using corvanta::json::parseObject;

namespace {

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

} // namespace

void MeasureTest::begin(const QByteArray& info, const QByteArray& authority) {
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

void MeasureTest::showLive(QWidget& dialog) {
    show(dialog);
    for (const FakeSdk::Request& request : sdk_.requests()) {
        if (request.json.find("avreq") != std::string::npos)
            stream_ = request.id;
    }
    QVERIFY(stream_ > 0);
    sdk_.respond(stream_, R"({"type":"avopen","reqid":)" + std::to_string(stream_) + R"(,"retcode":0,"avparam":{}})");
    QTRY_COMPARE(find<QLabel>(dialog, "liveState")->text(), QStringLiteral("打开成功"));
}

void MeasureTest::capture(const QWidget& dialog, const char* button, const QImage& picture) {
    click(dialog, button);
    const QByteArray planes = planesOf(picture);
    sdk_.respond(stream_, (R"({"type":"decodevideodata","w":)" + QByteArray::number(picture.width()) + R"(,"h":)" +
                           QByteArray::number(picture.height()) + R"(,"data":)" +
                           QByteArray::number(reinterpret_cast<qintptr>(planes.data())) + "}")
                              .toStdString());
}

void MeasureTest::turnTo(const QWidget& dialog, int page) {
    find<QTabWidget>(dialog, "measurePages")->setCurrentIndex(page);
}

QString MeasureTest::cell(const QWidget& dialog, int row, int column) {
    return find<QTreeWidget>(dialog, "positions")->topLevelItem(row)->text(column);
}

QString MeasureTest::saved(const QWidget& dialog) {
    click(dialog, "measureSave");
    return tip();
}

QVariantMap MeasureTest::stored(const char* type) {
    const QVariantMap command = parseObject(sdk_.configs().back());
    if (command.value("type").toString() != QLatin1String(type) || command.value("ipncid") != QStringLiteral("a"))
        return {};
    return command.value(QLatin1String(type)).toMap().value("info").toMap();
}

QImage MeasureTest::wall() {
    QImage picture(Picture, QImage::Format_RGB32);
    picture.fill(qRgb(60, 60, 60));
    return picture;
}

void MeasureTest::checkForm(QDialog& dialog) {
    checkNames(dialog);
    QVERIFY(dialog.size().width() <= 680 && dialog.size().height() <= 384);
    show(dialog);
    auto* const pages = find<QTabWidget>(dialog, "measurePages");
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        auto* const scroll = qobject_cast<QScrollArea*>(pages->widget(page));
        QTRY_VERIFY2(!scroll->horizontalScrollBar()->isVisible(), qPrintable(pages->tabText(page)));
    }
    dialog.close();
}
