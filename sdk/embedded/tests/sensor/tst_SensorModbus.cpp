#include "Slave.h"
#include "sensor/BoardRun.h"
#include "sensor/ModbusDriver.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace ipncsdk;
using namespace ipncsdk::sensor;
using ipncsdk::test::portRecord;
using ipncsdk::test::Slave;
using ipncsdk::test::tcpBoard;

/// The Modbus driver against a slave that libmodbus makes.
class tst_SensorModbus final : public QObject {
    Q_OBJECT

private slots:
    void formats_data();
    void formats();
    void outputs();
    void outputsThatCannotHoldTheValue_data();
    void outputsThatCannotHoldTheValue();
    void oneRefusedInputLeavesTheOthers();
    void badAnswers_data();
    void badAnswers();
    void serialLine();
};

namespace {

Json registerAt(int function, int address, const char* format, const char* order = "ABCD") {
    return {{"function", function}, {"address", address}, {"format", format}, {"order", order}};
}

std::optional<double> valueOf(const std::vector<RawValue>& raw, std::size_t at) {
    return raw.at(at).value;
}

} // namespace

void tst_SensorModbus::formats_data() {
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("order");
    QTest::addColumn<double>("value");
    QTest::newRow("coil") << 1 << 3 << "bit"
                          << "ABCD" << 1.0;
    QTest::newRow("coil that is off") << 1 << 2 << "bit"
                                      << "ABCD" << 0.0;
    QTest::newRow("discrete input") << 2 << 5 << "bit"
                                    << "ABCD" << 1.0;
    QTest::newRow("holding") << 3 << 0 << "u16"
                             << "ABCD" << 4660.0;
    QTest::newRow("holding, bytes exchanged") << 3 << 0 << "u16"
                                              << "BADC" << 13330.0;
    QTest::newRow("input register") << 4 << 0 << "u16"
                                    << "ABCD" << 777.0;
    QTest::newRow("negative") << 3 << 18 << "s16"
                              << "ABCD" << -2.0;
    QTest::newRow("float") << 3 << 10 << "f32"
                           << "ABCD" << 1.5;
    QTest::newRow("float, words exchanged") << 3 << 12 << "f32"
                                            << "CDAB" << 1.5;
    QTest::newRow("float, bytes exchanged") << 3 << 14 << "f32"
                                            << "BADC" << 1.5;
    QTest::newRow("float, all exchanged") << 3 << 16 << "f32"
                                          << "DCBA" << 1.5;
    QTest::newRow("32 bits") << 3 << 20 << "u32"
                             << "ABCD" << 4294967294.0;
    QTest::newRow("32 bits, negative") << 3 << 22 << "s32"
                                       << "CDAB" << -2.0;
    QTest::newRow("32 bits, all exchanged") << 3 << 24 << "u32"
                                            << "DCBA" << double(0x78563412);
}

void tst_SensorModbus::formats() {
    QFETCH(int, function);
    QFETCH(int, address);
    QFETCH(QString, format);
    QFETCH(QString, order);
    QFETCH(double, value);
    const Slave slave({"tcp"});
    const Json params = registerAt(function, address, qPrintable(format), qPrintable(order));
    ModbusDriver driver(tcpBoard(slave.port, {portRecord(11, params), portRecord(12, registerAt(3, 0, "u16"))}));
    QCOMPARE(driver.open(), std::string());
    std::vector<RawValue> raw(2);
    QCOMPARE(driver.read(raw), std::string());
    QCOMPARE(valueOf(raw, 0), std::optional<double>(value));
    QCOMPARE(valueOf(raw, 1), std::optional<double>(4660));
}

void tst_SensorModbus::outputs() {
    const Slave slave({"tcp"});
    const Board board = tcpBoard(slave.port,
                                 {portRecord(11, registerAt(1, 40, "bit")), portRecord(12, registerAt(3, 41, "s16")),
                                  portRecord(13, registerAt(3, 42, "u16")), portRecord(14, registerAt(3, 43, "u16"))},
                                 {portRecord(21, registerAt(5, 40, "bit")), portRecord(22, registerAt(6, 41, "s16")),
                                  portRecord(23, registerAt(16, 42, "u32", "CDAB"))});
    ModbusDriver driver(board);
    QCOMPARE(driver.open(), std::string());
    QCOMPARE(driver.write(board.outputs[0], 1), std::string());
    QCOMPARE(driver.write(board.outputs[1], -3), std::string());
    QCOMPARE(driver.write(board.outputs[2], 0x12345678), std::string());
    std::vector<RawValue> raw(4);
    QCOMPARE(driver.read(raw), std::string());
    QCOMPARE(valueOf(raw, 0), std::optional<double>(1));
    QCOMPARE(valueOf(raw, 1), std::optional<double>(-3));
    QCOMPARE(valueOf(raw, 2), std::optional<double>(0x5678));
    QCOMPARE(valueOf(raw, 3), std::optional<double>(0x1234));
}

void tst_SensorModbus::outputsThatCannotHoldTheValue_data() {
    QTest::addColumn<QString>("format");
    QTest::addColumn<double>("value");
    QTest::newRow("below zero") << "u16" << -1.0;
    QTest::newRow("too great") << "u16" << 65536.0;
    QTest::newRow("signed") << "s16" << 40000.0;
    QTest::newRow("no number") << "u16" << qQNaN();
}

void tst_SensorModbus::outputsThatCannotHoldTheValue() {
    QFETCH(QString, format);
    QFETCH(double, value);
    const Slave slave({"tcp"});
    const Board board = tcpBoard(slave.port, Json::array(), {portRecord(21, registerAt(6, 41, qPrintable(format)))});
    ModbusDriver driver(board);
    QCOMPARE(driver.open(), std::string());
    QVERIFY(!driver.write(board.outputs[0], value).empty());
}

void tst_SensorModbus::oneRefusedInputLeavesTheOthers() {
    const Slave slave({"tcp"});
    // The slave has 100 registers: the last two of these are read in one go with it, and refused.
    ModbusDriver driver(
        tcpBoard(slave.port, {portRecord(11, registerAt(3, 98, "u16")), portRecord(12, registerAt(3, 99, "u16")),
                              portRecord(13, registerAt(3, 100, "u16"))}));
    QCOMPARE(driver.open(), std::string());
    std::vector<RawValue> raw(3);
    QCOMPARE(driver.read(raw), std::string());
    QCOMPARE(valueOf(raw, 0), std::optional<double>(0));
    QCOMPARE(valueOf(raw, 1), std::optional<double>(0));
    QCOMPARE(valueOf(raw, 2), std::nullopt);
}

void tst_SensorModbus::badAnswers_data() {
    QTest::addColumn<QString>("how");
    QTest::newRow("late") << "late";
    QTest::newRow("short") << "short";
    QTest::newRow("silent") << "silent";
}

void tst_SensorModbus::badAnswers() {
    QFETCH(QString, how);
    Slave slave({"tcp"});
    const Board board = tcpBoard(slave.port, {portRecord(11, registerAt(3, 0, "u16"))}, Json::array(), 200);
    auto steady = std::chrono::steady_clock::time_point(std::chrono::hours(1));
    const auto wall = std::chrono::system_clock::from_time_t(1'700'000'000);
    BoardRun run({"CAM", board, true}, std::make_unique<ModbusDriver>(board), steady);
    const auto poll = [&](std::chrono::milliseconds later) {
        return run.poll(steady += later, wall);
    };
    const auto first = poll(std::chrono::seconds(0));
    QCOMPARE(first.size(), std::size_t{1});
    QVERIFY(first[0].normal);
    slave.answer(qPrintable(how));
    // What was said to the slave is heard with the next answer, or the one after.
    std::vector<Reading> lost;
    while (lost.empty() || lost[0].normal)
        lost = poll(std::chrono::seconds(1));
    QCOMPARE(lost[0].value, 4660.0); // the last normal one
    // Told once, and not tried again before the pause is over.
    QVERIFY(poll(std::chrono::milliseconds(100)).empty());
    slave.answer("normal");
    std::vector<Reading> back;
    while (back.empty())
        back = poll(BoardRun::longestPause);
    QVERIFY(back[0].normal);
    QCOMPARE(back[0].value, 4660.0);
}

void tst_SensorModbus::serialLine() {
    const QTemporaryDir folder;
    const QString ours = folder.filePath("ours");
    const QString theirs = folder.filePath("theirs");
    QProcess pair;
    pair.start("socat", {"pty,raw,echo=0,link=" + ours, "pty,raw,echo=0,link=" + theirs});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(ours) && QFile::exists(theirs), 30000);
    {
        const Slave slave({"rtu", theirs});
        Json record = tcpBoard(1, {portRecord(11, registerAt(3, 0, "u16")), portRecord(12, registerAt(4, 0, "u16"))},
                               {portRecord(21, registerAt(6, 1, "u16"))})
                          .record;
        record["params"] = {{"mode", "rtu"}, {"device", ours.toStdString()}, {"slave", 7}, {"timeout", 5000}};
        const Board board = boardOf(record);
        ModbusDriver driver(board);
        QCOMPARE(driver.open(), std::string());
        std::vector<RawValue> raw(2);
        QCOMPARE(driver.read(raw), std::string());
        QCOMPARE(valueOf(raw, 0), std::optional<double>(4660));
        QCOMPARE(valueOf(raw, 1), std::optional<double>(777));
        QCOMPARE(driver.write(board.outputs[0], 5), std::string());
        // Another slave's number on the same line: nobody answers.
        record["params"]["slave"] = 9;
        record["params"]["timeout"] = 200;
        driver.close();
        ModbusDriver other(boardOf(record));
        QCOMPARE(other.open(), std::string());
        QVERIFY(!other.read(raw).empty());
    }
    pair.terminate();
    pair.waitForFinished();
}

QTEST_GUILESS_MAIN(tst_SensorModbus)
#include "tst_SensorModbus.moc"
