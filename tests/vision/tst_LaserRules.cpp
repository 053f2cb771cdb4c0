#include "base/DeviceModel.h"
#include "vision/LaserMeasure.h"
#include "vision/LaserSensor.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

using namespace corvanta::vision;

Q_DECLARE_METATYPE(corvanta::vision::LaserScale::Points)

namespace {

QVariantMap object(const QByteArray& text) {
    return QJsonDocument::fromJson(text).toVariant().toMap();
}

QByteArray text(const QVariantMap& map) {
    return QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact);
}

LaserScale::Points points(const QVector<double>& numbers) {
    LaserScale::Points result;
    for (std::size_t index = 0; index < result.size(); ++index) {
        const double* const one = numbers.constData() + 4 * index;
        result[index] = {QPointF(one[0], one[1]), QPointF(one[2], one[3])};
    }
    return result;
}

double distance(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// As a record keeps it once all is set up.
const QByteArray complete =
    R"({"colour":"red","input":[{"ifname":"L1","ifpid":7,"isupload":true,"pid":71,"type":"laser_x"},)"
    R"({"ifname":"L1","ifpid":7,"isupload":true,"pid":72,"type":"laser_y"}],)"
    R"("inintDataList":{"laser_inint_x":"12.5","laser_inint_y":"-3"},"maxdiameter":"80","mindiameter":"4",)"
    R"("mode":"scale","points":[{"px":"10","py":"20","x":"0","y":"0"},{"px":"600","py":"30","x":"100","y":"0"},)"
    R"({"px":"590","py":"400","x":"100","y":"60"},{"px":"15.5","py":"410","x":"0","y":"60"}],)"
    R"("reference":"laserpic/CAM1/reference.png","roundness":"0.6","scale":"0.125","threshold":"50"})";

QVariantMap changed(const QByteArray& change) {
    QVariantMap map = object(complete);
    const QVariantMap changes = object(change);
    for (auto key = changes.begin(); key != changes.end(); ++key)
        map.insert(key.key(), key.value());
    return map;
}

} // namespace

/// What is computed beside the pictures: scales, setups as records keep them, what is reported.
class tst_LaserRules : public QObject {
    Q_OBJECT

private slots:
    void scalesMeasure();
    void tiltedPlatesAreMeasured();
    void badPointsAreRefused_data();
    void badPointsAreRefused();
    void setupsAreKept();
    void badSetupsAreRefused_data();
    void badSetupsAreRefused();
    void referencesStayInTheirFolder_data();
    void referencesStayInTheirFolder();
    void movementsAreReported_data();
    void movementsAreReported();
    void meansAreTrimmed();
    void inputsComeFromTheBoard();
};

void tst_LaserRules::scalesMeasure() {
    for (const double bad :
         {0.0, -0.1, 1001.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        QVERIFY(!LaserScale::fromScale(bad));
    const auto scale = LaserScale::fromScale(0.25);
    QVERIFY(scale);
    QCOMPARE(scale->toPlace({100, 60}).value(), QPointF(25, 15));
    QCOMPARE(scale->toPixel({25, 15}).value(), QPointF(100, 60));
}

/// A camera 500 mm before a plate that is turned about its upright axis; y of the plate is upwards.
void tst_LaserRules::tiltedPlatesAreMeasured() {
    for (const double degrees : {0.0, 20.0, -45.0, 65.0}) {
        const auto seen = [turned = degrees * std::numbers::pi / 180](const QPointF& place) {
            const double away = 500 + place.x() * std::sin(turned);
            return QPointF(640 + 900 * place.x() * std::cos(turned) / away, 360 - 900 * place.y() / away);
        };
        LaserScale::Points known;
        const std::array<QPointF, 4> places = {QPointF(-80, -50), QPointF(80, -50), QPointF(80, 50),
                                               QPointF(-80, 50)};
        for (std::size_t index = 0; index < known.size(); ++index)
            known[index] = {seen(places[index]), places[index]};
        const auto scale = LaserScale::fromPoints(known);
        QVERIFY2(scale, qPrintable(LaserScale::problem(known).value_or(QString())));
        for (const QPointF place : {QPointF(0, 0), QPointF(33.3, -41), QPointF(-79, 12), QPointF(110, 70)}) {
            const auto found = scale->toPlace(seen(place));
            QVERIFY(found && distance(*found, place) < 1e-3);
            QVERIFY(distance(scale->toPixel(place).value(), seen(place)) < 1e-3);
        }
    }
    // Beyond the horizon of a floor that the camera looks over there is no place.
    const auto floor =
        LaserScale::fromPoints(points({100, 400, 0, 0, 540, 400, 100, 0, 380, 200, 100, 200, 260, 200, 0, 200}));
    QVERIFY(floor);
    QVERIFY(floor->toPlace({320, 300}));
    QVERIFY(!floor->toPlace({320, 20}));
}

void tst_LaserRules::badPointsAreRefused_data() {
    QTest::addColumn<LaserScale::Points>("points");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char* name, const QVector<double>& numbers, const char* problem) {
        QTest::newRow(name) << points(numbers) << QString::fromUtf8(problem);
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    row("good", {0, 0, 0, 0, 100, 0, 10, 0, 100, 100, 10, 10, 0, 100, 0, 10}, "");
    row("mirrored", {0, 0, 0, 10, 100, 0, 10, 10, 100, 100, 10, 0, 0, 100, 0, 0}, "");
    row("one within the others", {0, 0, 0, 0, 300, 0, 30, 0, 100, 200, 10, 20, 120, 60, 12, 6}, "");
    row("far from zero", {90000, 9, 0, 0, 90100, 9, 10, 0, 90100, 109, 10, 10, 90000, 109, 0, 10}, "");
    const char* const number = "标定点坐标不是有效的数字";
    row("no number", {0, nan, 0, 0, 100, 0, 10, 0, 100, 100, 10, 10, 0, 100, 0, 10}, number);
    row("endless", {0, 0, 0, 0, 100, 0, 1e300 * 1e300, 0, 100, 100, 10, 10, 0, 100, 0, 10}, number);
    row("too far", {0, 0, 0, 0, 2e6, 0, 10, 0, 100, 100, 10, 10, 0, 100, 0, 10}, number);
    const char* const equal = "标定点不能重合";
    row("all zero", QVector<double>(16), equal);
    row("equal pixels", {0, 0, 0, 0, 100, 0, 10, 0, 100, 0.5, 10, 10, 0, 100, 0, 10}, equal);
    row("equal places", {0, 0, 0, 0, 100, 0, 10, 0, 100, 100, 10, 0, 0, 100, 0, 10}, equal);
    const char* const line = "任意三个标定点不能在一条直线上";
    row("three pixels on a line", {0, 0, 0, 0, 50, 51, 10, 0, 100, 100, 10, 10, 0, 100, 0, 10}, line);
    row("all places on a line", {0, 0, 0, 0, 100, 0, 1, 1, 100, 100, 2, 2, 0, 100, 3, 3}, line);
    row("two mixed up", {0, 0, 0, 0, 100, 0, 10, 10, 100, 100, 10, 0, 0, 100, 0, 10},
        "标定点的图上位置与实际坐标不对应,请检查顺序");
}

void tst_LaserRules::badPointsAreRefused() {
    QFETCH(LaserScale::Points, points);
    QFETCH(QString, problem);
    QCOMPARE(LaserScale::problem(points).value_or(QString()), problem);
    const auto scale = LaserScale::fromPoints(points);
    QCOMPARE(scale.has_value(), problem.isEmpty());
    for (const ScalePoint& point : points)
        QVERIFY(!scale || distance(scale->toPlace(point.pixel).value(), point.place) < 1e-3);
}

void tst_LaserRules::setupsAreKept() {
    QCOMPARE(text(LaserInfo::fromMap(object(complete)).toMap()), text(object(complete)));
    QVERIFY(!LaserInfo::fromMap(object(complete)).validate());
    // What others put there stays; numbers are taken for texts.
    const QVariantMap more = changed(R"({"lens":{"f":8},"scale":0.5,"input":[{"pid":"3","type":"laser_y","note":"n"},
                                        {"pid":4,"type":"QRcode_x"},5]})");
    const LaserInfo info = LaserInfo::fromMap(more);
    QCOMPARE(info.scale, 0.5);
    QCOMPARE(info.inputs.size(), 1);
    QCOMPARE(info.inputs[0].rest.value(QStringLiteral("note")).toString(), QStringLiteral("n"));
    QVERIFY(info.inputs[0].isUpload);
    QCOMPARE(text(info.toMap().value(QStringLiteral("lens")).toMap()), QByteArray(R"({"f":8})"));
    QCOMPARE(LaserInfo::fromMap(info.toMap()).toMap(), info.toMap());
    // A new one is that of an empty object.
    QCOMPARE(LaserInfo::fromMap({}).toMap(), LaserInfo().toMap());
}

void tst_LaserRules::badSetupsAreRefused_data() {
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char* name, const char* change, const char* problem) {
        QTest::newRow(name) << QByteArray(change) << QString::fromUtf8(problem);
    };
    row("points", R"({"mode":"points"})", "");
    row("no scale is needed for points", R"({"mode":"points","scale":""})", "");
    row("no reference", R"({"reference":""})", "");
    row("no scale", R"({"scale":""})", "请输入比例(毫米/像素)!");
    row("no number for a scale", R"({"scale":"1,5"})", "请输入比例(毫米/像素)!");
    row("endless scale", R"({"scale":"inf"})", "请输入比例(毫米/像素)!");
    row("negative scale", R"({"scale":"-1"})", "比例应大于0且不大于1000毫米/像素");
    row("no points", R"({"mode":"points","points":[]})", "请先设置四个标定点!");
    row("three points", R"({"mode":"points","points":[{},{},{}]})", "请先设置四个标定点!");
    row("empty points", R"({"mode":"points","points":[{},{},{},{}]})", "标定点坐标不是有效的数字");
    row("dim", R"({"threshold":"0"})", "光斑亮度应为1~255");
    row("no threshold", R"({"threshold":"x"})", "光斑亮度应为1~255");
    row("diameter", R"({"maxdiameter":"2001"})", "光斑直径应为1~2000像素");
    row("diameters", R"({"mindiameter":"80"})", "光斑最小直径应小于最大直径");
    row("roundness", R"({"roundness":1.5})", "光斑圆度应为0~1");
    row("reference", R"({"reference":"../x.png"})", "参考图文件名无效");
    row("no initial position", R"({"inintDataList":{}})", "请先确定光斑初始位置!");
    row("half an initial position", R"({"inintDataList":{"laser_inint_x":"1"}})", "请先确定光斑初始位置!");
}

void tst_LaserRules::badSetupsAreRefused() {
    QFETCH(QByteArray, change);
    QFETCH(QString, problem);
    const LaserInfo info = LaserInfo::fromMap(changed(change));
    QCOMPARE(info.validate().value_or(QString()), problem);
    QCOMPARE(LaserMeter::make(info, {}).has_value(), !info.measureProblem());
}

void tst_LaserRules::referencesStayInTheirFolder_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    QTest::newRow("below") << "laserpic/CAM1/reference.png"
                           << "/data/laserpic/CAM1/reference.png";
    QTest::newRow("none") << ""
                          << "";
    for (const char* const bad :
         {"/etc/passwd", "../up.png", "a/../../up.png", "C:/x.png", "a//b.png", "a\\b.png", "."})
        QTest::newRow(bad) << bad << "";
}

void tst_LaserRules::referencesStayInTheirFolder() {
    QFETCH(QString, name);
    QFETCH(QString, path);
    LaserInfo info;
    info.reference = name;
    QCOMPARE(info.referencePath(QStringLiteral("/data")), path);
}

void tst_LaserRules::movementsAreReported_data() {
    QTest::addColumn<QStringList>("position");
    QTest::addColumn<QStringList>("data");
    QTest::newRow("at rest") << QStringList{"12.5", "-3"} << QStringList{"0", "0"};
    QTest::newRow("moved") << QStringList{"13.0625", "-4.5"} << QStringList{"0.5625", "-1.5"};
    QTest::newRow("six digits") << QStringList{"1247.06", "0.333333"} << QStringList{"1234.56", "3.33333"};
    QTest::newRow("no numbers") << QStringList{"1", "nan"} << QStringList();
    QTest::newRow("one") << QStringList{"1"} << QStringList();
    QTest::newRow("none") << QStringList() << QStringList();
}

void tst_LaserRules::movementsAreReported() {
    QFETCH(QStringList, position);
    QFETCH(QStringList, data);
    LaserInfo info = LaserInfo::fromMap(object(complete));
    const auto dataOf = [&] {
        QStringList texts;
        const QVariantList values = laserUpload(info, position);
        for (const QVariant& value : values)
            texts += value.toMap().value(QStringLiteral("data")).toString();
        return texts;
    };
    QCOMPARE(dataOf(), data);
    if (data.isEmpty())
        return;
    QVariantMap first = laserUpload(info, position)[0].toMap();
    first.remove(QStringLiteral("data"));
    QCOMPARE(text(first), QByteArray(R"({"ifname":"L1","ifpid":7,"pid":71,"type":"laser_x"})"));
    info.inputs[0].isUpload = false;
    QCOMPARE(dataOf(), data.mid(1));
    info.initial.reset();
    QVERIFY(dataOf().isEmpty());
}

void tst_LaserRules::meansAreTrimmed() {
    QVERIFY(!trimmedMean(std::vector<LaserPosition>()));
    const auto mean = trimmedMean(std::vector<LaserPosition>{{10, 5}, {100, 6}, {12, 1}});
    QVERIFY(mean);
    QCOMPARE(mean->texts(), (QStringList{"12", "5"}));
    QCOMPARE(trimmedMean(std::vector<LaserPosition>{{1, 5}, {2, 6}})->texts(), (QStringList{"1.5", "5.5"}));
}

void tst_LaserRules::inputsComeFromTheBoard() {
    QVariantMap record = object(R"({"ipncid":"A","type":"video","interfaces":[
        {"pid":5,"type":"QR","input":[{"pid":51,"params":{"axis":"QRcode_x"}}]},
        {"pid":7,"type":"LASER","ifname":"L1","input":[{"pid":71,"params":{"axis":"laser_x"}},
         {"pid":72,"params":{"axis":"laser_y"}},{"pid":73}]}]})");
    const auto inputsOf = [&record] {
        QStringList texts;
        const QList<LaserInput> inputs = laserInputsOf(DeviceRecord::fromMap(record));
        for (const LaserInput& input : inputs)
            texts += input.pid.toString() + input.ifpid.toString() + input.ifname + input.typeText();
        return texts;
    };
    QCOMPARE(inputsOf(), (QStringList{"717L1laser_x", "727L1laser_y"}));
    record.insert(QStringLiteral("info"), object(R"({"Laserinfo":{"info":{"input":[
        {"pid":72,"ifpid":7,"ifname":"L1","type":"laser_y","isupload":false}]}}})"));
    QCOMPARE(inputsOf(), (QStringList{"727L1laser_y"}));
}

QTEST_APPLESS_MAIN(tst_LaserRules)
#include "tst_LaserRules.moc"
