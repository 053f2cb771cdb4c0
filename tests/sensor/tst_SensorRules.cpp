#include "base/DeviceModel.h"
#include "base/InputFields.h"
#include "base/JsonText.h"
#include "sensor/ChartSetup.h"
#include "sensor/ChartTrack.h"
#include "sensor/DatFile.h"
#include "sensor/InputRecords.h"
#include "sensor/Samples.h"
#include "sensor/SensorTypes.h"
#include "sensor/Thinning.h"
#include "support/OtherLanguage.h"

#include <QBuffer>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <random>

using namespace corvanta::sensor;
using corvanta::json::parseObject;

namespace {

double now() {
    return static_cast<double>(QDateTime::currentSecsSinceEpoch());
}

Samples ramp(double from, int count, double step = 1) {
    Samples samples;
    for (int i = 0; i < count; ++i)
        samples.push_back({from + i * step, double(i), double(i), double(i)});
    return samples;
}

} // namespace

class tst_SensorRules : public QObject {
    Q_OBJECT

private slots:
    void interfacesComeFirst_data();
    void interfacesComeFirst();
    void theNewestIsShown();
    void badRecordsAreLeftOut_data();
    void badRecordsAreLeftOut();
    void thinningKeepsEveryPeak();
    void thinningReachesTheEdges();
    void thinningOfNothing_data();
    void thinningOfNothing();
    void pagesGrowIntoThePast();
    void aFarViewBeginsAnew();
    void foreignRecordsAreNotTaken();
    void liveValuesNeedNoGap();
    void settingsAreNotTrusted();
    void theCacheIsReadBack();
    void fieldsJudgeValues_data();
    void fieldsJudgeValues();
    void hostileTypesAreLeftOut();
    void whatIsStoredIsInNoLanguage();
    void twoPointsMakeALine_data();
    void twoPointsMakeALine();
    void dataFilesAreRead();
};

void tst_SensorRules::interfacesComeFirst_data() {
    QTest::addColumn<QByteArray>("sublist");
    QTest::newRow("below extend") << QByteArray(R"("extend":{"sublist":[{"pid":9,"name":"z","input":[{"pid":3}]}]})");
    QTest::newRow("beside it") << QByteArray(R"("sublist":[{"pid":9,"name":"z","input":[{"pid":3}]}])");
}

void tst_SensorRules::interfacesComeFirst() {
    QFETCH(QByteArray, sublist);
    const DeviceModel model = DeviceModel::fromDocument(
        parseObject(R"({"group":[{"id":"g","name":"G","ipnclist":["a"]}],"ipnclist":[{"ipncid":"b","interfaces":[
            {"ifname":"COM1","input":[{"pid":7,"name":"n"},{"pid":0},{"name":"x"},{"pid":1}]}]},{"ipncid":"a",)" +
                    sublist.toStdString() + R"(,"interfaces":[{"pid":5,"name":"s","input":[{"pid":1,"unit":"V",
            "thresholds":[{"level":2,"high":5},{"level":9,"high":5},{"level":1,"high":null,"low":"x"},7,
            {"level":1,"low":1}]},{"pid":2}]}]}]})"));
    const auto inputs = inputsOf(model);
    QVector<int> pids;
    for (const InputRecord& input : inputs)
        pids += input.pid;
    QCOMPARE(pids, (QVector<int>{7, 1, 2, 3})); // the second "1" is left out
    QCOMPARE(inputs[0].sensor, QStringLiteral("COM1"));
    QCOMPARE(inputs[0].group, QString());
    QCOMPARE(inputs[2].group, QStringLiteral("G"));
    QCOMPARE(inputs[3].sensor, QStringLiteral("z"));
}

void tst_SensorRules::theNewestIsShown() {
    InputFields fields;
    InputRecord input;
    input.pid = 4;
    input.port = parseObject(R"({"value":1.5,"state":1,"time":1000,"thresholds":[
        {"level":2,"high":5},{"level":9,"high":5},{"level":1,"high":null,"low":"x"},{"level":1,"low":1}]})");
    QCOMPARE(nowOf(input, fields).value, std::optional(1.5));
    QVERIFY(!nowOf(input, fields).earliest);
    fields.set(QStringLiteral("value"), 4, 7);
    fields.set(QStringLiteral("state"), 4, 0);
    fields.set(QStringLiteral("latesttime"), 4, 900); // older than what the record says
    QCOMPARE(nowOf(input, fields).value, std::optional(1.5));
    QCOMPARE(nowOf(input, fields).latest, std::optional<qint64>(1000));
    fields.set(QStringLiteral("latesttime"), 4, 1001);
    QCOMPARE(nowOf(input, fields).value, std::optional(7.0));
    QCOMPARE(nowOf(input, fields).isNormal, std::optional(false));
    const auto levels = thresholdsOf(input.port);
    QCOMPARE(levels.size(), std::size_t(2));
    QCOMPARE(levels[0].low, std::optional(1.0));
}

void tst_SensorRules::badRecordsAreLeftOut_data() {
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<bool>("isGood");
    const QByteArray tomorrow = QByteArray::number(now() + 90000, 'f', 0);
    QTest::newRow("number") << QByteArray(R"({"time":1732233600.25,"value":1})") << true;
    QTest::newRow("texts") << QByteArray(R"({"time":"1732233600.25","value":"1e3"})") << true;
    QTest::newRow("no value") << QByteArray(R"({"time":"1732233600"})") << false;
    QTest::newRow("null") << QByteArray(R"({"time":"1732233600","value":null})") << false;
    QTest::newRow("a word") << QByteArray(R"({"time":"1732233600","value":"x"})") << false;
    QTest::newRow("infinite") << QByteArray(R"({"time":"1732233600","value":"inf"})") << false;
    QTest::newRow("not a number") << QByteArray(R"({"time":"1732233600","value":"nan"})") << false;
    QTest::newRow("a flag") << QByteArray(R"({"time":"1732233600","value":true})") << false;
    QTest::newRow("before 1970") << QByteArray(R"({"time":"-5","value":1})") << false;
    QTest::newRow("the future") << QByteArray(R"({"time":)" + tomorrow + R"(,"value":1})") << false;
    QTest::newRow("endless time") << QByteArray(R"({"time":1e300,"value":1})") << false;
}

void tst_SensorRules::badRecordsAreLeftOut() {
    QFETCH(QByteArray, record);
    QTEST(readSample(parseObject(record.toStdString())).has_value(), "isGood");
}

void tst_SensorRules::thinningKeepsEveryPeak() {
    constexpr int count = 1000000;
    constexpr int columns = 700;
    std::mt19937 random(7);
    Samples samples = ramp(1e9, count, 0.01);
    for (Sample& sample : samples)
        sample.value = sample.low = sample.high = std::sin(sample.time) + double(random() % 1000) / 1000;
    samples[123456].value = samples[123456].high = 1e6;
    samples[654321].value = samples[654321].low = -1e6;
    const double from = samples.front().time;
    const double to = samples.back().time;
    const QVector<QPointF> points = thinned(samples, from, to, columns);
    QVERIFY(points.size() <= 4 * (columns + 2));
    QVERIFY(std::is_sorted(points.begin(), points.end(),
                           [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); }));
    // Of each column the extremes, computed another way.
    std::vector<Extent> all(columns + 1);
    std::vector<Extent> kept(columns + 1);
    const auto columnOf = [&](double time) {
        return static_cast<std::size_t>((time - from) * columns / (to - from) + 1e-9);
    };
    for (const Sample& sample : samples)
        all[columnOf(sample.time)].add(sample.value);
    for (const QPointF& point : points)
        kept[columnOf(point.x() / 1000)].add(point.y());
    int differing = 0;
    for (std::size_t i = 0; i < all.size(); ++i)
        differing += all[i].low != kept[i].low || all[i].high != kept[i].high ? 1 : 0;
    QVERIFY2(differing <= columns / 100, qPrintable(QString::number(differing))); // a sample on a border: either side
    const Extent extent = extentOf(samples, from, to);
    QCOMPARE(extent.high, 1e6);
    QCOMPARE(extent.low, -1e6);
}

void tst_SensorRules::thinningReachesTheEdges() {
    const QVector<QPointF> points = thinned(ramp(100, 10, 10), 125, 145, 50);
    QCOMPARE(points.first(), QPointF(120000, 2));
    QCOMPARE(points.last(), QPointF(150000, 5));
    // A span shows how far its values went.
    Samples spans{{100, 5, 1, 9}};
    const QVector<QPointF> span = thinned(spans, 0, 200, 10);
    QVERIFY(span.contains(QPointF(100000, 1)) && span.contains(QPointF(100000, 9)));
    spans[0].isNormal = false;
    QVERIFY(thinned(spans, 0, 200, 10).isEmpty());
}

void tst_SensorRules::thinningOfNothing_data() {
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<int>("columns");
    QTest::newRow("no span") << 5.0 << 5.0 << 10;
    QTest::newRow("backwards") << 9.0 << 5.0 << 10;
    QTest::newRow("no pixels") << 0.0 << 9.0 << 0;
    QTest::newRow("no number") << std::nan("") << 9.0 << 10;
}

void tst_SensorRules::thinningOfNothing() {
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(int, columns);
    QVERIFY(thinned(ramp(0, 10), from, to, columns).isEmpty());
}

void tst_SensorRules::pagesGrowIntoThePast() {
    ChartTrack track(7);
    const double end = now();
    const auto first = track.wanted(end - 600, end);
    QVERIFY(first && first->end == QVariant(QStringLiteral("latest")) && first->step == 0);
    QVERIFY(!track.wanted(end - 600, end)); // the answer is awaited
    QVERIFY(track.onRecords(first->key(), ramp(end - first->most, first->most)));
    QVERIFY(!track.wanted(end - 600, end)); // all of it is there
    const auto second = track.wanted(end - 7000, end);
    QVERIFY(second && !second->begin.isValid());
    QVERIFY(second->end.toDouble() < end - first->most);
    QVERIFY(track.onRecords(second->key(), ramp(end - first->most - 100, 100))); // a short page: the beginning
    QCOMPARE(track.samples(0).size(), std::size_t(first->most + 100));
    QVERIFY(!track.wanted(end - 7000, end));
    // A long span has records of its own.
    const auto hours = track.wanted(end - 20 * 86400.0, end);
    QVERIFY(hours && hours->step == 3600);
    track.onFailed(hours->key());
    QVERIFY(!track.wanted(end - 20 * 86400.0, end)); // not at once again
}

void tst_SensorRules::aFarViewBeginsAnew() {
    ChartTrack track(7);
    const double end = now();
    const auto first = track.wanted(end - 600, end);
    track.onRecords(first->key(), ramp(end - first->most, first->most));
    const double past = end - 30 * 86400.0;
    const auto far = track.wanted(past - 600, past);
    QVERIFY(far && far->end.toDouble() > past);
    QVERIFY(track.samples(0).empty());
    track.onRecords(far->key(), ramp(past - 4000, far->most));
    // Forwards from there, towards the present.
    const auto next = track.wanted(past + 400, past + 1400);
    QVERIFY(next && next->begin.toDouble() > past && !next->end.isValid());
    track.onRecords(next->key(), ramp(past + 1001, 10));
    QVERIFY(!track.wanted(past + 400, past + 1400));
}

void tst_SensorRules::foreignRecordsAreNotTaken() {
    ChartTrack track(7);
    const auto query = track.wanted(now() - 600, now());
    SampleQuery other = *query;
    other.end = 12345.0;
    QVERIFY(!track.onRecords(other.key(), ramp(1, 10)));
    QVERIFY(!track.onRecords({}, ramp(1, 10)));
    QVERIFY(track.samples(0).empty());
}

void tst_SensorRules::liveValuesNeedNoGap() {
    ChartTrack track(7);
    const double end = now();
    track.onLive({end, 1, 1, 1});
    QVERIFY(track.samples(0).empty()); // nothing before it is known yet
    const auto query = track.wanted(end - 600, end);
    track.onRecords(query->key(), ramp(end - 5, 5));
    track.onLive({end, 9, 9, 9});
    track.onLive({end, 8, 8, 8}); // of the same moment
    QCOMPARE(track.samples(0).size(), std::size_t(6));
    QCOMPARE(track.samples(0).back().value, 8.0);
    QCOMPARE(track.newest(2).size(), std::size_t(2));
    ChartTrack again(7);
    again.restore(track.newest(100));
    const auto rest = again.wanted(end - 4, end + 60);
    QVERIFY(rest && rest->begin.toDouble() > end); // only what has come since
}

void tst_SensorRules::settingsAreNotTrusted() {
    for (const QVariant& bad : {QVariant(), QVariant(-1), QVariant(4), QVariant(QStringLiteral("x"))})
        QCOMPARE(chartLayout(bad), 0);
    QCOMPARE(chartLayout(3), 3);
    const QVariantList list{QVariantList{1, 1, -2, QStringLiteral("x"), 5}, 7, QVariantList{2}};
    const auto inputs = chartInputs(list);
    QCOMPARE(inputs.size(), MostTiles);
    QCOMPARE(inputs[0], (QVector<int>{1, 5}));
    QVERIFY(inputs[1].isEmpty());
    QCOMPARE(chartInputs(toSetting(inputs)), inputs);
}

void tst_SensorRules::theCacheIsReadBack() {
    const QMap<int, Samples> samples{{3, ramp(1e9, 3, 0.5)}, {4, {}}};
    const auto back = fromCacheText(toCacheText(samples));
    QCOMPARE(back[3].size(), std::size_t(3));
    QCOMPARE(back[3][1].time, 1e9 + 0.5);
    for (const char* bad : {"", "x", "[1]", R"({"a":[1,2],"-1":[1,2],"5":{"x":1}})", R"({"5":[1]})"})
        QVERIFY(fromCacheText(QLatin1String(bad)).value(5).empty());
}

void tst_SensorRules::fieldsJudgeValues_data() {
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isGood");
    const QByteArray number = R"({"key":"k","name":"N","kind":"int","low":1,"high":9})";
    QTest::newRow("in") << number << QVariant(9) << true;
    QTest::newRow("beyond") << number << QVariant(10) << false;
    QTest::newRow("a fraction") << number << QVariant(1.5) << false;
    QTest::newRow("a word") << number << QVariant("x") << false;
    QTest::newRow("real") << QByteArray(R"({"key":"k","kind":"real","low":0})") << QVariant("2.5") << true;
    QTest::newRow("infinite") << QByteArray(R"({"key":"k","kind":"real","low":0})") << QVariant("inf") << false;
    QTest::newRow("text") << QByteArray(R"({"key":"k","kind":"text"})") << QVariant(QString(1001, 'x')) << false;
    const QByteArray choice = R"({"key":"k","kind":"choice","choices":[{"value":1,"name":"a"},{"value":"tcp"}]})";
    QTest::newRow("a choice") << choice << QVariant("1") << true;
    QTest::newRow("no choice") << choice << QVariant("2") << false;
}

void tst_SensorRules::fieldsJudgeValues() {
    QFETCH(QByteArray, field);
    QFETCH(QVariant, value);
    QTEST(!Field::fromMap(parseObject(field.toStdString()))->problem(value), "isGood");
}

void tst_SensorRules::hostileTypesAreLeftOut() {
    const SensorTypes types = SensorTypes::fromReply(parseObject(
        R"({"sensortypes":[{"type":"A","fields":[{"key":"mode","kind":"choice","choices":[{"value":"rtu"}]},
            {"key":"baud","kind":"int","low":300,"when":{"key":"mode","is":["rtu"]}},{"kind":"int"},
            {"key":"x","kind":"picture"},7]},{"name":"none"},5],
            "templates":[{"name":"t","type":"A","board":{"name":"b"}},{"name":"u","type":"B","board":{"x":1}},3]})"));
    QCOMPARE(types.types.size(), 1);
    QCOMPARE(types.types[0].fields.size(), 2);
    QCOMPARE(types.templates.size(), 1);
    const QVariantMap board = newBoard(types.types[0]);
    const QVariantMap params = board["params"].toMap();
    QCOMPARE(params["mode"].toString(), QStringLiteral("rtu"));
    QCOMPARE(params["baud"].toInt(), 300);
    QVERIFY(types.types[0].fields[1].isShown(params));
    QVERIFY(!types.types[0].fields[1].isShown({{"mode", "tcp"}}));
}

void tst_SensorRules::whatIsStoredIsInNoLanguage() {
    const OtherLanguage other;
    const SensorTypes types = SensorTypes::fromReply(parseObject(
        R"({"sensortypes":[{"type":"SOFT","name":"模拟","fields":[{"key":"x","name":"亮度","kind":"int"}]}]})"));
    QCOMPARE(types.types[0].fields[0].name, QStringLiteral("*亮度"));
    QCOMPARE(newBoard(types.types[0])["name"].toString(), QStringLiteral("模拟"));
}

void tst_SensorRules::twoPointsMakeALine_data() {
    QTest::addColumn<QVector<double>>("points"); // raw, truth, raw, truth
    QTest::addColumn<bool>("isGood");
    QTest::newRow("4 to 20 mA") << QVector<double>{4, 0, 20, 100} << true;
    QTest::newRow("falling") << QVector<double>{1, 5, 2, 3} << true;
    QTest::newRow("one raw value") << QVector<double>{4, 0, 4, 100} << false;
    QTest::newRow("one point twice") << QVector<double>{4, 0, 4, 0} << false;
    QTest::newRow("flat") << QVector<double>{4, 7, 5, 7} << false;
    QTest::newRow("too steep") << QVector<double>{0, -1e308, 1e-300, 1e308} << false;
}

void tst_SensorRules::twoPointsMakeALine() {
    QFETCH(QVector<double>, points);
    QFETCH(bool, isGood);
    const auto found = calibrated({points[0], points[1]}, {points[2], points[3]});
    QCOMPARE(found.has_value(), isGood);
    if (found) {
        QCOMPARE(points[0] * found->scale + found->offset + 1, points[1] + 1); // + 1: zero compares exactly
        QCOMPARE(points[2] * found->scale + found->offset + 1, points[3] + 1);
    }
}

void tst_SensorRules::dataFilesAreRead() {
    QByteArray text("#corvanta-dat 1\n1732233600.250\t7\t1.5\nbad\n1732233599\t7\t1\n1732233600\t8\tinf\n"
                    "-1\t7\t2\n1732233600\t0\t2\n1732233600\t8\t-2.5\n" +
                    QByteArray(5000, 'x') + "\n1732233601\t7\t3");
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    const auto inputs = readDatFile(buffer);
    QVERIFY(inputs && inputs->size() == 2);
    QCOMPARE((*inputs)[7].size(), std::size_t(3));
    QCOMPARE((*inputs)[7][0].value, 1.0);
    QCOMPARE((*inputs)[7][1].time, 1732233600.25);
    QByteArray other("#corvanta-dat 2\n1732233600\t7\t1\n");
    QBuffer wrong(&other);
    wrong.open(QIODevice::ReadOnly);
    QVERIFY(!readDatFile(wrong));
}

QTEST_GUILESS_MAIN(tst_SensorRules)
#include "tst_SensorRules.moc"
