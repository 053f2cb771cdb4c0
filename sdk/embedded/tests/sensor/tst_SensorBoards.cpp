#include "sensor/BoardCheck.h"
#include "sensor/BoardRun.h"
#include "sensor/BoardType.h"
#include "sensor/PictureMeter.h"
#include "sensor/PlantDriver.h"
#include "sensor/SoftExpression.h"

#include <QtTest>

#include <algorithm>
#include <set>

using namespace ipncsdk;
using namespace ipncsdk::sensor;

/// Boards as they are submitted, computed, simulated and measured.
class tst_SensorBoards final : public QObject {
    Q_OBJECT

private slots:
    void templatesCanBeSubmitted();
    void mistakes_data();
    void mistakes();
    void replacedBoardKeepsWhatNobodyKnows();
    void expressions_data();
    void expressions();
    void expressionMistakes_data();
    void expressionMistakes();
    void plantReachesEachLevelInTurn_data();
    void plantReachesEachLevelInTurn();
    void positionsStayBetweenReferencePoints();
    void inputFollowsAnOutput();
    void pictures();
};

namespace {

int lastPid = 100;

int nextPid() {
    return ++lastPid;
}

constexpr auto good = R"({"type":"RS485","ifname":"RS485-1","name":"板","future":[1],
    "params":{"mode":"rtu","device":"/dev/ttyS0","slave":3,"odd":true},
    "input":[{"name":"a","unit":"℃","thresholds":[{"level":1,"high":30,"low":null}],"mine":"x",
              "params":{"function":3,"address":1,"format":"s16"}}],
    "output":[{"name":"o","params":{"function":5,"address":1,"format":"bit"}}]})";

} // namespace

void tst_SensorBoards::templatesCanBeSubmitted() {
    std::set<std::string> types;
    const Json document = boardTypesDocument();
    for (const Json& entry : document.at("templates")) {
        const CheckedBoard checked = checkBoard(entry.at("board"), nullptr, nextPid);
        QVERIFY2(checked.wrong.empty(), (textOr(entry, "name", "") + ": " + checked.wrong).c_str());
        types.insert(entry.at("type").get<std::string>());
    }
    QVERIFY(types.size() >= 6);
}

void tst_SensorBoards::mistakes_data() {
    QTest::addColumn<QString>("patch"); // RFC 6902, on a good board
    QTest::addColumn<QString>("text");  // a part of what is said
    const auto row = [](const char* name, const char* patch, const char* text) {
        QTest::newRow(name) << patch << text;
    };
    row("type", R"([{"op":"replace","path":"/type","value":"X"}])", "类型未知");
    row("interface", R"([{"op":"replace","path":"/ifname","value":"RS485-9"}])", "接口名称");
    row("no name", R"([{"op":"remove","path":"/name"}])", "名称");
    row("blank name", R"([{"op":"replace","path":"/name","value":"  "}])", "名称");
    row("control character", R"([{"op":"replace","path":"/name","value":"a\nb"}])", "名称");
    row("baud rate", R"([{"op":"add","path":"/params/baud","value":1000}])", "波特率");
    row("slave", R"([{"op":"replace","path":"/params/slave","value":248}])", "从站地址");
    row("slave as text", R"([{"op":"replace","path":"/params/slave","value":"3"}])", "从站地址");
    row("mode", R"([{"op":"replace","path":"/params/mode","value":"udp"}])", "连接方式");
    row("no host", R"([{"op":"replace","path":"/params/mode","value":"tcp"}])", "缺少主机");
    row("path", R"([{"op":"replace","path":"/params/device","value":"../x"}])", "绝对路径");
    row("path upwards", R"([{"op":"replace","path":"/params/device","value":"/dev/../x"}])", "绝对路径");
    row("function", R"([{"op":"replace","path":"/input/0/params/function","value":5}])", "功能码");
    row("coil as number", R"([{"op":"replace","path":"/input/0/params/function","value":1}])", "位");
    row("address", R"([{"op":"replace","path":"/input/0/params/address","value":65536}])", "寄存器地址");
    row("last register of two",
        R"([{"op":"replace","path":"/input/0/params/address","value":65535},
            {"op":"replace","path":"/input/0/params/format","value":"f32"}])",
        "寄存器地址");
    row("two words in one", R"([{"op":"replace","path":"/output/0/params","value":{"function":6,"format":"f32"}}])",
        "16");
    row("level", R"([{"op":"replace","path":"/input/0/thresholds/0/level","value":4}])", "阈值等级");
    row("level twice", R"([{"op":"add","path":"/input/0/thresholds/-","value":{"level":1,"high":3}}])", "阈值等级");
    row("limits crossed", R"([{"op":"replace","path":"/input/0/thresholds/0/low","value":31}])", "上限");
    row("scale of nothing", R"([{"op":"add","path":"/input/0/scale","value":0}])", "系数");
    row("hysteresis", R"([{"op":"add","path":"/input/0/hysteresis","value":-1}])", "回差");
    row("a pid of its own", R"([{"op":"add","path":"/input/0/pid","value":1001}])", "不存在");
    row("ports that are none", R"([{"op":"replace","path":"/input/0","value":3}])", "端口格式");
    row("outputs where there are none",
        R"([{"op":"replace","path":"/type","value":"SOFT"},{"op":"replace","path":"/ifname","value":"SOFT-1"},
            {"op":"replace","path":"/input","value":[]}])",
        "没有控制输出");
}

void tst_SensorBoards::mistakes() {
    QFETCH(QString, patch);
    QFETCH(QString, text);
    const Json board = Json::parse(good);
    QCOMPARE(checkBoard(board, nullptr, nextPid).wrong, std::string());
    const CheckedBoard checked = checkBoard(board.patch(Json::parse(patch.toStdString())), nullptr, nextPid);
    QVERIFY2(QString::fromStdString(checked.wrong).contains(text), checked.wrong.c_str());
}

void tst_SensorBoards::replacedBoardKeepsWhatNobodyKnows() {
    const CheckedBoard first = checkBoard(Json::parse(good), nullptr, nextPid);
    QCOMPARE(first.record.at("params").at("baud"), Json(9600));
    QCOMPARE(first.record.at("input").at(0).at("isupload"), Json("1"));
    const Json input = first.record.at("input").at(0);
    const Json change = {{"pid", first.record.at("pid")},
                         {"name", "neu"},
                         {"input", {{{"pid", input.at("pid")}, {"name", "b"}, {"state", 1}, {"value", 7}}}},
                         {"output", Json::array()}};
    const CheckedBoard second = checkBoard(change, first.record, nextPid);
    QCOMPARE(second.wrong, std::string());
    QCOMPARE(second.record.at("future"), Json::array({1}));
    QCOMPARE(second.record.at("params").at("odd"), Json(true));
    QCOMPARE(second.record.at("params").at("slave"), Json(3));
    QCOMPARE(second.record.at("input").at(0).at("mine"), Json("x"));
    QCOMPARE(second.record.at("input").at(0).at("name"), Json("b"));
    QVERIFY(!second.record.at("input").at(0).contains("value"));
    QCOMPARE(second.removed, std::vector<int>{first.record.at("output").at(0).at("pid").get<int>()});
}

void tst_SensorBoards::expressions_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value"); // NaN: none
    QTest::newRow("constant") << "1+2*3" << 7.0;
    QTest::newRow("inputs") << "max(i1, i2) * 2" << 8.0;
    QTest::newRow("choice") << "i1 >= 3 ? 10 : 20" << 10.0;
    QTest::newRow("same input twice") << "i1*i1" << 9.0;
    QTest::newRow("abnormal input") << "i1 + i3" << qQNaN();
    QTest::newRow("division by zero") << "1 / (i1 - 3)" << qQNaN();
    QTest::newRow("root of less than zero") << "sqrt(0 - i1)" << qQNaN();
}

void tst_SensorBoards::expressions() {
    QFETCH(QString, text);
    QFETCH(double, value);
    SoftExpression expression;
    QCOMPARE(expression.parse(text.toStdString()), std::string());
    const auto result = expression.evaluate([](int pid) {
        return pid == 1 ? std::optional<double>(3) : pid == 2 ? std::optional<double>(4) : std::nullopt;
    });
    QCOMPARE(result, qIsNaN(value) ? std::nullopt : std::make_optional(value));
}

void tst_SensorBoards::expressionMistakes_data() {
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "1 +", "x + 1", "i", "i12345678901", "ix1", "i1 = 3", "system(1)", "max(", "\"a\""})
        QTest::newRow(text) << text;
}

void tst_SensorBoards::expressionMistakes() {
    QFETCH(QString, text);
    SoftExpression expression;
    QVERIFY(!expression.parse(text.toStdString()).empty());
}

void tst_SensorBoards::plantReachesEachLevelInTurn_data() {
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QVector<double>>("highs");
    QTest::addColumn<QVector<double>>("lows");
    QTest::newRow("pressure") << "MPa" << QVector<double>{0.8, 0.9, 1.0} << QVector<double>{};
    QTest::newRow("level too low") << "m" << QVector<double>{} << QVector<double>{2.2, 1.8, 1.4};
    QTest::newRow("unknown unit") << "bananas" << QVector<double>{60, 70} << QVector<double>{};
    QTest::newRow("below the usual") << "℃" << QVector<double>{10, 12, 14} << QVector<double>{};
    QTest::newRow("door") << "" << QVector<double>{0.5} << QVector<double>{};
}

void tst_SensorBoards::plantReachesEachLevelInTurn() {
    QFETCH(QString, unit);
    QFETCH(QVector<double>, highs);
    QFETCH(QVector<double>, lows);
    Port port;
    port.pid = 1001;
    port.unit = unit.toStdString();
    const bool up = !highs.isEmpty();
    const QVector<double> limits = up ? highs : lows;
    for (int i = 0; i < limits.size(); ++i)
        port.thresholds.push_back({i + 1, up ? std::make_optional(limits[i]) : std::nullopt,
                                   up ? std::nullopt : std::make_optional(limits[i])});
    std::set<int> reached;
    int quiet = 0;
    constexpr int seconds = 1800;
    for (int second = 0; second < seconds; ++second) {
        const auto time = std::chrono::system_clock::from_time_t(1'700'000'000 + second);
        const double value = plantValue(port, time);
        QCOMPARE(plantValue(port, time), value);
        int level = 0;
        for (int i = 0; i < limits.size(); ++i)
            level = (up ? value > limits[i] : value < limits[i]) ? i + 1 : level;
        reached.insert(level);
        quiet += level == 0 ? 1 : 0;
    }
    QCOMPARE(reached.size(), static_cast<std::size_t>(limits.size() + 1));
    QVERIFY(quiet > seconds / 2);
}

void tst_SensorBoards::positionsStayBetweenReferencePoints() {
    Json record = {{"pid", 7},
                   {"type", "POSITION"},
                   {"protocol", "4353"},
                   {"params", {{"mode", "plant"}}},
                   {"info", {{"locations", {{{"x", "-4"}, {"y", "10"}}, {{"x", "16"}, {"y", "10.5"}}}}}},
                   {"input",
                    {{{"pid", 8}, {"unit", "m"}, {"params", {{"axis", "y"}}}},
                     {{"pid", 9}, {"unit", "m"}, {"scale", 0.001}, {"params", {{"axis", "x"}}}}}}};
    std::time_t now = 1'700'000'000;
    PlantDriver driver(boardOf(record), [&now] { return std::chrono::system_clock::from_time_t(now); });
    double lowest = 1e9;
    double highest = -1e9;
    for (int second = 0; second < 200; ++second, ++now) {
        std::vector<RawValue> raw(2);
        QVERIFY(driver.read(raw).empty());
        QVERIFY(*raw[0].value >= 10 && *raw[0].value <= 10.5);
        lowest = std::min(lowest, *raw[1].value / 1000);
        highest = std::max(highest, *raw[1].value / 1000);
    }
    QVERIFY2(lowest > -4 && lowest < 0 && highest > 12 && highest < 16, QByteArray::number(highest));
    // What cannot be read counts as no point.
    record["info"]["locations"] = {{{"x", "nan"}, {"y", "0"}}, {{"x", 1}}, 5};
    QVERIFY(locationsOf(record).empty());
}

void tst_SensorBoards::inputFollowsAnOutput() {
    const Json record = {{"pid", 7},
                         {"type", "IO"},
                         {"params", {{"mode", "plant"}}},
                         {"input",
                          {{{"pid", 8}, {"unit", ""}, {"params", {{"follows", 2}}}},
                           {{"pid", 9}, {"unit", ""}, {"params", {{"follows", 3}}}}}},
                         {"output", {{{"pid", 10}}, {{"pid", 11}}}}};
    std::optional<double> written;
    PlantDriver driver(
        boardOf(record), [] { return std::chrono::system_clock::from_time_t(1'700'000'000); },
        [&](int pid) { return pid == 11 ? written : std::optional(5.0); });
    const auto values = [&driver] {
        std::vector<RawValue> raw(2);
        return driver.read(raw).empty() ? std::pair(*raw[0].value, *raw[1].value) : std::pair(-1.0, -1.0);
    };
    QCOMPARE(values(), std::pair(0.0, 0.0)); // never written; and no such output
    written = 1;
    QCOMPARE(values(), std::pair(1.0, 0.0));
}

void tst_SensorBoards::pictures() {
    const auto painted = [](std::uint8_t left, std::uint8_t right) {
        media::Picture picture;
        picture.resize(64, 36);
        for (int y = 0; y < 36; ++y) {
            for (int x = 0; x < 64; ++x)
                picture.samples[static_cast<std::size_t>(y * 64 + x)] = x < 32 ? left : right;
        }
        return picture;
    };
    PictureMeter whole(Json{{"measure", "brightness"}});
    PictureMeter right(Json{{"measure", "brightness"}, {"x", 0.5}, {"w", 0.5}, {"y", 0}, {"h", 1}});
    QCOMPARE(*whole.measure(painted(0, 255)), 50.0);
    QCOMPARE(*right.measure(painted(0, 255)), 100.0);
    PictureMeter motion(Json{{"measure", "motion"}});
    PictureMeter still(Json{{"measure", "motion"}, {"x", 0}, {"w", 0.25}});
    QVERIFY(!motion.measure(painted(100, 100)));
    still.measure(painted(100, 100));
    QCOMPARE(*motion.measure(painted(100, 105)), 0.0); // noise
    QCOMPARE(*still.measure(painted(100, 200)), 0.0);
    const double moved = *motion.measure(painted(100, 200));
    QVERIFY2(moved > 45 && moved < 55, QByteArray::number(moved));
}

QTEST_GUILESS_MAIN(tst_SensorBoards)
#include "tst_SensorBoards.moc"
