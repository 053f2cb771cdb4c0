#include "base/DeviceModel.h"
#include "vision/MatrixText.h"
#include "vision/MediaPictures.h"
#include "vision/QrPose.h"
#include "vision/QrSensor.h"
#include "vision/VideoPath.h"

#include <QJsonDocument>
#include <QTest>
#include <QtMath>

#include <opencv2/core.hpp>

#include <sstream>
#include <vector>

using namespace corvanta::vision;

/// What is computed of corners and positions: texts of matrices, means, angles, and what is reported.
class tst_QrRules : public QObject {
    Q_OBJECT

private slots:
    void matricesAreTexts();
    void badMatricesAreNone_data();
    void badMatricesAreNone();
    void badSetupsAreNone_data();
    void badSetupsAreNone();
    void meansAreTrimmed_data();
    void meansAreTrimmed();
    void positionsAreTurnedBack_data();
    void positionsAreTurnedBack();
    void pathsTellWhatTheyAre_data();
    void pathsTellWhatTheyAre();
    void pathsNameTheDevice_data();
    void pathsNameTheDevice();
    void movementsAreReported_data();
    void movementsAreReported();
    void inputsComeFromTheBoard();
};

namespace {

const QString goodMatrix = QStringLiteral("[800, 0, 320;\n 0, 800, 240;\n 0, 0, 1]");
const QString goodDistortion = QStringLiteral("[0.1, -0.2, 0, 0, 0.3]");

QVariantMap object(const char* text) {
    return QJsonDocument::fromJson(text).toVariant().toMap();
}

} // namespace

void tst_QrRules::matricesAreTexts() {
    const std::vector<double> values = {535.91573396163199, 0, 342.28315473308373, 0, 535.9, 235.5, -1e-7, 1e21, 1};
    const QString text = matrixText({3, 3, values});
    QCOMPARE(text, QStringLiteral("[535.915733961632, 0, 342.2831547330837;\n 0, 535.9, 235.5;\n -1e-07, 1e+21, 1]"));
    std::ostringstream printed;
    printed << cv::Mat(values).reshape(1, 3);
    QCOMPARE(text, QString::fromStdString(printed.str()));
    const Matrix read = matrixFromText(text);
    QCOMPARE(read.rows, 3);
    QCOMPARE(read.columns, 3);
    for (std::size_t i = 0; i < values.size(); ++i)
        QCOMPARE(read.values[i], static_cast<double>(static_cast<float>(values[i])));
}

void tst_QrRules::badMatricesAreNone_data() {
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QString& text) {
        QTest::newRow(name) << text;
    };
    row("nothing", {});
    row("words", QStringLiteral("camera matrix"));
    row("nan", QStringLiteral("[nan, 0, 0;\n 0, 1, 0;\n 0, 0, 1]"));
    row("infinite", QStringLiteral("[1e999, 0]"));
    row("rows of different lengths", QStringLiteral("[1, 2, 3;\n 4, 5]"));
    row("an element is missing", QStringLiteral("[1, , 3]"));
    row("a decimal comma", QStringLiteral("[1;2;]"));
    row("very long", QString(100000, QLatin1Char('1')));
}

void tst_QrRules::badMatricesAreNone() {
    QFETCH(const QString, text);
    QVERIFY(matrixFromText(text).isEmpty());
    QVERIFY(!QrPose::make({text, goodDistortion, QStringLiteral("100")}));
    QVERIFY(!QrPose::make({goodMatrix, text, QStringLiteral("100")}));
}

void tst_QrRules::badSetupsAreNone_data() {
    QTest::addColumn<QString>("matrix");
    QTest::addColumn<QString>("distortion");
    QTest::addColumn<QString>("width");
    QTest::addColumn<bool>("isGood");
    const auto row = [](const char* name, const QString& matrix, const QString& distortion, const QString& width,
                        bool isGood = false) {
        QTest::newRow(name) << matrix << distortion << width << isGood;
    };
    const QString width = QStringLiteral("100");
    row("good", goodMatrix, goodDistortion, width, true);
    row("blanks around the width", goodMatrix, goodDistortion, QStringLiteral(" 99.5 "), true);
    row("a matrix of two rows", QStringLiteral("[1, 0, 0;\n 0, 1, 0]"), goodDistortion, width);
    row("the distortion in place of the matrix", goodDistortion, goodDistortion, width);
    row("the matrix in place of the distortion", goodMatrix, goodMatrix, width);
    row("four coefficients", goodMatrix, QStringLiteral("[0, 0, 0, 0]"), width);
    row("no focal length", QStringLiteral("[0, 0, 320;\n 0, 800, 240;\n 0, 0, 1]"), goodDistortion, width);
    row("no width", goodMatrix, goodDistortion, {});
    row("width zero", goodMatrix, goodDistortion, QStringLiteral("0"));
    row("width below zero", goodMatrix, goodDistortion, QStringLiteral("-100"));
    row("width nan", goodMatrix, goodDistortion, QStringLiteral("nan"));
    row("width a word", goodMatrix, goodDistortion, QStringLiteral("ten"));
}

void tst_QrRules::badSetupsAreNone() {
    QFETCH(const QString, matrix);
    QFETCH(const QString, distortion);
    QFETCH(const QString, width);
    QFETCH(const bool, isGood);
    QCOMPARE(QrPose::make({matrix, distortion, width}).has_value(), isGood);
}

void tst_QrRules::meansAreTrimmed_data() {
    QTest::addColumn<QVector<float>>("values");
    QTest::addColumn<QVector<float>>("mean");
    using Values = QVector<float>;
    QTest::newRow("none") << Values() << Values();
    QTest::newRow("one") << Values{7} << Values{7};
    QTest::newRow("two") << Values{10, 100} << Values{55};
    QTest::newRow("three") << Values{10, 12, 100} << Values{12};
    QTest::newRow("three in disorder") << Values{100, 10, 12} << Values{12};
    QTest::newRow("equal ones") << Values{5, 5, 5, 5} << Values{5};
    QTest::newRow("five") << Values{-1000, 1, 2, 3, 1000} << Values{2};
}

void tst_QrRules::meansAreTrimmed() {
    QFETCH(const QVector<float>, values);
    QFETCH(const QVector<float>, mean);
    // Each axis in an order of its own.
    std::vector<Position> positions;
    for (int i = 0; i < values.size(); ++i)
        positions.push_back({values[i], values[values.size() - 1 - i], -values[i]});
    const auto result = trimmedMean(positions);
    QCOMPARE(result.has_value(), !mean.isEmpty());
    if (!result)
        return;
    QCOMPARE(result->x, mean.first());
    QCOMPARE(result->y, mean.first());
    QCOMPARE(result->z, -mean.first());
}

void tst_QrRules::positionsAreTurnedBack_data() {
    QTest::addColumn<QVector<double>>("angles");
    QTest::addColumn<QVector<double>>("expected");
    using Three = QVector<double>;
    // Of the translation (10, 20, 1000). The sine of half a turn, taken for degrees, is 0.0548...
    const double turn = M_PI / 2;
    const double c = std::cos(turn * M_PI / 180);
    const double s = std::sin(turn * M_PI / 180);
    QTest::newRow("not turned") << Three{0, 0, 0} << Three{-10, -20, -1000};
    QTest::newRow("about x") << Three{turn, 0, 0} << Three{-10, -(c * 20 + s * 1000), -(-s * 20 + c * 1000)};
    QTest::newRow("about y") << Three{0, turn, 0} << Three{-(c * 10 - s * 1000), -20, -(c * 1000 + s * 10)};
    QTest::newRow("about z") << Three{0, 0, turn} << Three{-(c * 10 + s * 20), -(-s * 10 + c * 20), -1000};
}

void tst_QrRules::positionsAreTurnedBack() {
    QFETCH(const QVector<double>, angles);
    QFETCH(const QVector<double>, expected);
    const Position position = cameraPosition({10, 20, 1000}, {angles[0], angles[1], angles[2]});
    QCOMPARE(position.x, static_cast<float>(expected[0]));
    QCOMPARE(position.y, static_cast<float>(expected[1]));
    QCOMPARE(position.z, static_cast<float>(expected[2]));
}

void tst_QrRules::pathsTellWhatTheyAre_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("kind");
    const auto row = [](const char* path, MediaKind kind) {
        QTest::newRow(path) << QString::fromLatin1(path) << static_cast<int>(kind);
    };
    row("D:/ZEL/CAM1/a.jpg", MediaKind::Picture);
    row("a.png", MediaKind::Picture);
    row("a.avi", MediaKind::Video);
    row("a.avi.jpg", MediaKind::Picture);
    row("a.avi.part", MediaKind::Video);
    row("a.mp4", MediaKind::Unknown);
    row("a.JPG", MediaKind::Unknown);
    row("", MediaKind::Unknown);
}

void tst_QrRules::pathsTellWhatTheyAre() {
    QFETCH(const QString, path);
    QTEST(static_cast<int>(mediaKindOf(path)), "kind");
}

void tst_QrRules::pathsNameTheDevice_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("device");
    const auto row = [](const char* path, const char* device) {
        QTest::newRow(path) << QString::fromLatin1(path) << QString::fromLatin1(device);
    };
    row("D:/ZEL/CAM1/LocalRecord/a.avi", "CAM1");
    row("E:/ZEL/CAM1/a.avi", "CAM1"); // a drive that is not known
    row("/ZEL/CAM1/a.avi", "CAM1");
    row("/mnt/disk/ZEL/CAM1/a.avi", "CAM1");
    row("/mnt/ZEL/ZEL/ZEL/a.avi", "ZEL");
    row("/srv/other/ZEL/a.avi", "other");
    row("D:/ZEL", "");
    row("D:/ZEL/", "");
    row("a.avi", "");
    row("", "");
}

void tst_QrRules::pathsNameTheDevice() {
    QFETCH(const QString, path);
    const QStringList drives{QStringLiteral("/"), QStringLiteral("D:/"), QStringLiteral("/mnt/disk/"),
                             QStringLiteral("/mnt/ZEL/")};
    QTEST(deviceOfVideo(path, drives), "device");
}

void tst_QrRules::movementsAreReported_data() {
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QStringList>("position");
    QTest::addColumn<QString>("data"); // empty: not reported
    const auto row = [](const char* name, const char* input, const QStringList& position, const char* data) {
        QTest::newRow(name) << QByteArray(input) << position << QString::fromLatin1(data);
    };
    const QStringList still = {QStringLiteral("1.5"), QStringLiteral("-2"), QStringLiteral("1000.25")};
    row("not moved", R"({"pid":1,"type":"QRcode_x"})", still, "0");
    row("the second axis", R"({"pid":1,"type":"QRcode_y"})",
        {QStringLiteral("1.5"), QStringLiteral("0.123456"), QStringLiteral("0")}, "2.12346");
    row("the third axis", R"({"pid":1,"type":"QRcode_z","isupload":true})",
        {QStringLiteral("1.5"), QStringLiteral("-2"), QStringLiteral("1e+07")}, "9.999e+06");
    row("not to be reported", R"({"pid":1,"type":"QRcode_z","isupload":false})", still, "");
    row("of another kind", R"({"pid":1,"type":"temperature"})", still, "");
    row("of no kind", R"({"pid":1})", still, "");
    row("two values only", R"({"pid":1,"type":"QRcode_x"})", {QStringLiteral("1"), QStringLiteral("2")}, "");
    row("no number", R"({"pid":1,"type":"QRcode_x"})",
        {QStringLiteral("x"), QStringLiteral("2"), QStringLiteral("3")}, "");
}

void tst_QrRules::movementsAreReported() {
    QFETCH(const QByteArray, input);
    QFETCH(const QStringList, position);
    QFETCH(const QString, data);
    const QVariantMap initial = object(R"({"qr_inint_x":"1.5","qr_inint_y":"-2","qr_inint_z":"1000.25"})");
    QVariantMap entry = object(input);
    entry.insert(QStringLiteral("ifpid"), 9);
    entry.insert(QStringLiteral("ifname"), QStringLiteral("QR-1"));
    entry.insert(QStringLiteral("name"), QStringLiteral("X"));
    const QVariantList values = uploadOf({entry}, initial, position);
    QCOMPARE(values.size(), data.isEmpty() ? 0 : 1);
    if (data.isEmpty())
        return;
    QCOMPARE(values.first().toMap(), (QVariantMap{{QStringLiteral("pid"), entry.value(QStringLiteral("pid"))},
                                                  {QStringLiteral("ifpid"), 9},
                                                  {QStringLiteral("ifname"), QStringLiteral("QR-1")},
                                                  {QStringLiteral("type"), entry.value(QStringLiteral("type"))},
                                                  {QStringLiteral("data"), data}}));
}

void tst_QrRules::inputsComeFromTheBoard() {
    QVariantMap record = object(R"({"ipncid":"CAM1","type":"video","info":{"QRinfo":{"info":{"QRwidth":"100"}}},
        "interfaces":[{"pid":5,"type":"VIDEO","ifname":"VIDEO-1","input":[{"pid":6}]},
                      {"pid":7,"type":"QR","ifname":"QR-1","input":[{"pid":8,"params":{"axis":"QRcode_z"}}]}]})");
    DeviceRecord device = DeviceRecord::fromMap(record);
    const QVariantList inputs = qrInputsOf(device);
    QCOMPARE(inputs.size(), 1);
    const QVariantList values = uploadOf(inputs, {}, {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    QCOMPARE(values.first().toMap().value(QStringLiteral("pid")).toInt(), 8);
    QCOMPARE(values.first().toMap().value(QStringLiteral("ifpid")).toInt(), 7);
    QCOMPARE(values.first().toMap().value(QStringLiteral("data")).toString(), QStringLiteral("3"));
    // What was set up counts.
    record.insert(
        QStringLiteral("info"),
        object(R"({"QRinfo":{"info":{"input":[{"pid":1,"type":"QRcode_x"},{"pid":2,"type":"QRcode_y"}]}}})"));
    device = DeviceRecord::fromMap(record);
    QCOMPARE(qrInputsOf(device).size(), 2);
}

QTEST_GUILESS_MAIN(tst_QrRules)
#include "tst_QrRules.moc"
