#include "base/DeviceModel.h"
#include "base/InputFields.h"
#include "map/MapFiles.h"
#include "map/MarkerRules.h"
#include "map/PicturePyramid.h"
#include "map/SensorIndex.h"

#include <QColor>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QtTest>

using namespace corvanta::map;

Q_DECLARE_METATYPE(corvanta::map::MapDraft)

namespace {

QVariantMap parse(const char* json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        qFatal("no object: %s", json);
    return document.object().toVariantMap();
}

MapMarker markerOf(const char* pid, const char* ipncId, bool showDatas = true) {
    MapMarker marker;
    marker.id = QLatin1String(pid) + QLatin1String(ipncId);
    marker.pid = QLatin1String(pid);
    marker.ipncId = QLatin1String(ipncId);
    marker.name = QStringLiteral("M");
    marker.showDatas = showDatas;
    return marker;
}

DeviceModel devices() {
    return DeviceModel::fromDocument(parse(R"({"ipnclist":[
        {"ipncid":"A","type":"video","online":true,"nickname":"甲","interfaces":[
            {"pid":10,"name":"温度","protocol":"x","input":[{"pid":101,"ifpid":10,"name":"T","unit":"℃","value":21.5,"state":1},
                                                            {"pid":102,"name":"H","unit":"%"}]},
            {"pid":11,"name":"门","input":[{"pid":111,"ifpid":11,"name":"开","unit":"","value":1,"state":0}]}]},
        {"ipncid":"B","type":"sensor","interfaces":[{"pid":20,"input":[{"pid":201,"ifpid":20,"name":"P"}]}]}],"group":[]})"));
}

} // namespace

/// Values and rules of maps.
class tst_MapRules : public QObject {
    Q_OBJECT

private slots:
    void numbersOfMarkers_data();
    void numbersOfMarkers();
    void unknownKeysSurvive();
    void recordsOfMaps();
    void iconsInEitherForm();
    void namesOfFiles_data();
    void namesOfFiles();
    void labels();
    void markersOfAlarms_data();
    void markersOfAlarms();
    void reasons_data();
    void reasons();
    void placesOnAPicture();
    void picturesOfAlarms();
    void halvesOfAPicture();
    void filesThatAreNoPictures();
};

void tst_MapRules::numbersOfMarkers_data() {
    QTest::addColumn<QVariant>("told");
    QTest::addColumn<double>("x");
    QTest::newRow("text") << QVariant("0.123456789012345678") << 0.123456789012345678;
    QTest::newRow("number") << QVariant(0.25) << 0.25;
    QTest::newRow("outside") << QVariant("17") << 1.0;
    QTest::newRow("negative") << QVariant(-3) << 0.0;
    QTest::newRow("not finite") << QVariant("nan") << 0.0;
    QTest::newRow("infinite") << QVariant("inf") << 0.0;
    QTest::newRow("no number") << QVariant("0,5") << 0.0;
    QTest::newRow("truth") << QVariant(true) << 0.0;
    QTest::newRow("list") << QVariant(QVariantList{1}) << 0.0;
    QTest::newRow("nothing") << QVariant() << 0.0;
}

void tst_MapRules::numbersOfMarkers() {
    QFETCH(QVariant, told);
    const MapMarker marker = MapMarker::fromMap({{"point", QVariantMap{{"x", told}, {"y", "1e0"}}}, {"lat", told}});
    QTEST(marker.x, "x");
    QCOMPARE(marker.y, 1.0);
    QVERIFY(std::abs(marker.lat) <= 90);
    const MapMarker again = MapMarker::fromMap(marker.toMap());
    QCOMPARE(again.x, marker.x); // to the last bit
    QCOMPARE(again.toMap(), marker.toMap());
}

void tst_MapRules::unknownKeysSurvive() {
    const QVariantMap told =
        parse(R"({"sensorid":"7","pid":"10","ipncid":"A","name":"n","point":{"x":"0.5","y":"0.5"},
        "lat":1.5,"lng":2.5,"icon":"i.png","iconname":"i","iconpublic":true,"showmode":"mousein","showdatas":true,
        "isupdate":false,"inputs":[101],"protocol":"4353","info":{"locations":[{"x":"3","y":4},{"x":"?"}],"more":[1]},
        "future":{"a":[1,2]}})");
    const MapMarker marker = MapMarker::fromMap(told);
    QCOMPARE(marker.toMap(), told);
    QVERIFY(marker.isPositioning() && !marker.isCamera() && !marker.isUpdate && marker.showMode == ShowMode::MouseIn);
    QCOMPARE(marker.locations, (QVector<QPointF>{{3, 4}, {0, 0}}));
    // What is missing: seen always, kept up to date, without values, all inputs.
    const MapMarker bare = MapMarker::fromMap({});
    QVERIFY(bare.isCamera() && bare.isUpdate && !bare.showDatas && bare.showMode == ShowMode::Always && !bare.inputs);
}

void tst_MapRules::recordsOfMaps() {
    const MapRecord own =
        MapRecord::fromMap(parse(R"({"pid":"1","name":"n","type":"local","filename":"f.png","friends":["139"],
                  "range":{"distance":{"w":"12.5","h":"x"}},"sensors":[{"sensorid":"5"},17,{"sensorid":"6"}]})"),
                           false);
    QCOMPARE(own.width, 12.5);
    QCOMPARE(own.height, 0.0);
    QCOMPARE(own.friends, QStringList("139"));
    QCOMPARE(own.indexOf("6"), 2);
    QCOMPARE(own.indexOf(""), -1); // also where one has no id
    const MapRecord odd = MapRecord::fromMap(parse(R"({"pid":"2","type":"<b>","userid":"138"})"), true);
    QVERIFY(odd.type == MapType::Unknown && odd.shared);
    QCOMPARE(ownerText(odd), QStringLiteral("其他账号"));
    QCOMPARE(ownerText(own), QStringLiteral("本账号"));
    QCOMPARE(typeText(own.type), QStringLiteral("自定义地图"));
    QCOMPARE(typeText(MapType::Online), QStringLiteral("在线地图"));
}

void tst_MapRules::iconsInEitherForm() {
    const auto names = [](const char* json) {
        QStringList result;
        for (const MapIcon& icon : iconsOf(parse(json)))
            result += icon.fileName + QLatin1Char(icon.isPublic ? '+' : '-');
        return result;
    };
    const QStringList expected{"p.png+", "p.png-", "u.png-"};
    QCOMPARE(names(R"({"fileinfo":{"icons":{"public":[{"filename":"p.png"},{"filename":""}],
        "user":[{"filename":"p.png"},{"filename":"u.png"},{"filename":"u.png"}]}}})"),
             expected);
    QCOMPARE(names(R"({"public":{"icons":{"fileinfo":[{"filename":"p.png"}]}},
        "user":{"icons":{"fileinfo":[{"filename":"p.png"},{"filename":"u.png"}]}}})"),
             expected);
    QCOMPARE(names(R"({"fileinfo":[],"public":"x"})"), QStringList());
}

void tst_MapRules::namesOfFiles_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    const QString hash(64, 'a');
    QTest::newRow("by content") << hash + ".png"
                                << "/r/maps/" + hash + ".png";
    QTest::newRow("by name") << "plan.png"
                             << "/r/maps/138/plan.png";
    QTest::newRow("up") << "../../x.png"
                        << "";
    QTest::newRow("absolute") << "/etc/passwd"
                              << "";
    QTest::newRow("backwards") << "..\\x.png"
                               << "";
    QTest::newRow("hash and up") << hash + ".png/../../x"
                                 << "";
    QTest::newRow("device") << "con.png"
                            << "";
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("long") << QString(10000, 'x') << "";
}

void tst_MapRules::namesOfFiles() {
    QFETCH(QString, name);
    MapRecord map;
    map.fileName = name;
    QTEST(mapPath("/r/", map, "138"), "path");
    MapIcon icon;
    icon.fileName = name;
    const QString path = iconPath("/r/", icon, "138");
    QVERIFY(path.isEmpty() || (path.startsWith("/r/icons/") && !path.contains("..")));
    icon.hash = QString(64, 'b');
    QVERIFY(iconPath("/r/", icon, "138").startsWith("/r/icons/" + icon.hash)); // the name is no part of it
}

void tst_MapRules::labels() {
    const SensorIndex index(devices());
    InputFields fields;
    fields.set("value", 102, 40);
    fields.set("state", 102, 1);
    fields.set("latesttime", 102, qint64(1732233600));
    MapMarker marker = markerOf("10", "A");
    marker.name = QStringLiteral("<b>名</b>\n%1\u202e") + QString(10000, 'x');
    const QStringList lines = index.labelLines(marker, fields);
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines[0].startsWith("<b>名</b> %1") && lines[0].size() <= 200);
    QCOMPARE(lines[1], QStringLiteral("T: 21.5 ℃"));
    QCOMPARE(lines[2], QStringLiteral("H: 40 %"));
    QVERIFY(lines[3].startsWith(QStringLiteral("时间:2024-11-2")));
    marker.inputs = QList<int>{102, 999};
    QCOMPARE(index.labelLines(marker, fields).size(), 3);
    marker.showDatas = false;
    QCOMPARE(index.labelLines(marker, fields).size(), 1);
    // A camera stands for all sensors of its device; an input without a value says so, and one that fails.
    const QStringList camera = index.labelLines(markerOf("", "A"), {});
    QCOMPARE(camera, (QStringList{"M", QStringLiteral("T: 21.5 ℃"), "H: --", QStringLiteral("开: 1（异常）")}));
    QCOMPARE(index.labelLines(markerOf("10", "gone"), fields), QStringList("M"));
}

void tst_MapRules::markersOfAlarms_data() {
    QTest::addColumn<QVariant>("input");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("its sensor") << QVariant(101) << QList<int>{1, 4};
    QTest::newRow("as a text") << QVariant("101") << QList<int>{1, 4};
    QTest::newRow("an input that names no interface") << QVariant(102) << QList<int>{1, 4};
    QTest::newRow("no marker of the sensor, one of its camera") << QVariant(111) << QList<int>{0};
    QTest::newRow("another device") << QVariant(201) << QList<int>{2};
    QTest::newRow("unknown") << QVariant(5) << QList<int>{};
    QTest::newRow("nothing") << QVariant() << QList<int>{};
}

void tst_MapRules::markersOfAlarms() {
    QFETCH(QVariant, input);
    const QList<MapMarker> markers{markerOf("", "A"), markerOf("10", "A"), markerOf("20", "B"), markerOf("10", "B"),
                                   markerOf("10", "A", false)};
    QTEST(SensorIndex(devices()).markersOf({{"input", input}, {"threshold", 1}}, markers), "expected");
}

void tst_MapRules::reasons_data() {
    QTest::addColumn<MapDraft>("draft");
    QTest::addColumn<QString>("isNew");
    QTest::addColumn<QString>("edited");
    const QString name = QStringLiteral("请输入地图名称!");
    const QString distance = QStringLiteral("请输入实际距离!");
    const QString number = QStringLiteral("实际距离应为大于0的数字!");
    const auto row = [](const char* title, const MapDraft& draft, const QString& isNew, const QString& edited) {
        QTest::newRow(title) << draft << isNew << edited;
    };
    row("all missing", {"", MapType::Local, "", "", ""}, name, name);
    row("blank name", {"  ", MapType::Online, "", "", ""}, name, name);
    row("no picture", {"n", MapType::Local, "", "", ""}, QStringLiteral("请选择地图!"), distance);
    row("no width", {"n", MapType::Local, "p", "", "1"}, distance, distance);
    row("no height", {"n", MapType::Local, "p", "1", " "}, distance, distance);
    row("words", {"n", MapType::Local, "p", "1", "many"}, number, number);
    row("nothing", {"n", MapType::Local, "p", "0", "1"}, number, number);
    row("not finite", {"n", MapType::Local, "p", "1", "inf"}, number, number);
    row("good", {"n", MapType::Local, "p", "1.5", "2"}, "", "");
    row("online", {"n", MapType::Online, "", "", ""}, "", "");
}

void tst_MapRules::reasons() {
    QFETCH(MapDraft, draft);
    QTEST(checkNew(draft).value_or(""), "isNew");
    QTEST(checkEdited(draft).value_or(""), "edited");
}

void tst_MapRules::placesOnAPicture() {
    QList<MapMarker> markers{markerOf("1", "A"), markerOf("2", "A"), markerOf("3", "A")};
    QVERIFY(!boundsOf({}));
    markers[0].x = 0.2;
    markers[0].y = 0.9;
    markers[1].x = 0.7;
    markers[1].y = 0.1;
    markers[2].x = markers[2].y = 0.5;
    QCOMPARE(*boundsOf(markers), QRectF(QPointF(0.2, 0.1), QPointF(0.7, 0.9)));
    MapRecord map;
    QVERIFY(!fractionOf({1, 1}, map)); // an extent that nobody knows
    map.width = 50;
    map.height = 20;
    QCOMPARE(*fractionOf({10, 15}, map), QPointF(0.2, 0.75));
    QVERIFY(!fractionOf({51, 1}, map));
    QCOMPARE(referenceName(0), QStringLiteral("参考点1"));
    QVERIFY(checkMarker("n", "1.01", "0", MapType::Local));
    QVERIFY(checkMarker("n", "0", "-0.1", MapType::Local));
    QVERIFY(checkMarker(" ", "0", "0", MapType::Local));
    QVERIFY(checkMarker("n", "181", "0", MapType::Online));
    QVERIFY(checkMarker("n", "180", "91", MapType::Online));
    QVERIFY(!checkMarker("n", "-180", "90", MapType::Online) && !checkMarker("n", "0", "1", MapType::Local));
}

void tst_MapRules::picturesOfAlarms() {
    QCOMPARE(alarmPicture(1), QStringLiteral(":/style/img/onelevlealarm.gif"));
    QCOMPARE(alarmPicture(2), QStringLiteral(":/style/img/twolevlealarm.gif"));
    QCOMPARE(alarmPicture(3), QStringLiteral(":/style/img/threelevelalarm.gif"));
    QCOMPARE(alarmPicture(4), QStringLiteral(":/style/img/otheralarm.gif"));
    for (const int level : {-1, 0, 5, 6})
        QCOMPARE(alarmPicture(level), QString());
}

void tst_MapRules::halvesOfAPicture() {
    // Every pixel tells its own place: whatever level is drawn, a place shows what it shows in the picture.
    QImage image(1001, 601, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / 1000, y * 255 / 600, 128));
    }
    const PicturePyramid pyramid = PicturePyramid::of(image);
    QCOMPARE(pyramid.size(), image.size());
    for (const double scale : {4.0, 1.0, 0.7, 0.5, 0.3, 0.24, 0.01}) {
        const PicturePyramid::Part part = pyramid.part(QRectF(500, 300, 200, 100), scale);
        QVERIFY(part.place.contains(QRectF(500, 300, 200, 100)));
        const double pixel = part.place.width() / part.image.width();
        QVERIFY2(scale >= 1 ? pixel == 1 : pixel * scale <= 1.001, "coarser than the screen");
        const QPointF middle = (QPointF(600, 350) - part.place.topLeft()) / pixel;
        const QColor seen = part.image.pixelColor(middle.toPoint());
        QVERIFY(std::abs(seen.red() - 600 * 255 / 1000) <= 2 + pixel / 2);
        QVERIFY(std::abs(seen.green() - 350 * 255 / 600) <= 2 + pixel / 2);
    }
    QVERIFY(pyramid.part(QRectF(-50, -50, 20, 20), 1).image.isNull());
    QVERIFY(pyramid.part(QRectF(0, 0, 1, 1), 0).image.isNull());
}

void tst_MapRules::filesThatAreNoPictures() {
    const QTemporaryDir dir;
    const QString path = dir.filePath("map.png");
    const auto readable = [&path](const QByteArray& content) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            qFatal("no file");
        file.write(content);
        file.close();
        return !PicturePyramid::read(path).isEmpty();
    };
    QVERIFY(PicturePyramid::read(path).isEmpty());
    QVERIFY(!readable(""));
    QVERIFY(!readable("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"));
    QVERIFY(!readable("GIF89a\1\0\1\0"));
    QImage image(30, 20, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QVERIFY(image.save(path, "JPG")); // the name says something else
    QCOMPARE(PicturePyramid::read(path).size(), QSize(30, 20));
    QVERIFY(image.save(path, "PNG"));
    const PicturePyramid paper = PicturePyramid::read(path);
    QCOMPARE(paper.part(QRectF(0, 0, 30, 20), 1).image.pixelColor(5, 5), QColor(Qt::white));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray huge = file.readAll();
    huge.replace(16, 8, QByteArray::fromHex("0000ffff0000ffff")); // its header now promises 4 billion pixels
    QVERIFY(!readable(huge));
    QVERIFY(!readable(huge.left(40)));
}

QTEST_GUILESS_MAIN(tst_MapRules)
#include "tst_MapRules.moc"
