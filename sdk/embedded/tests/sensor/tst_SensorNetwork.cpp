#include "Broker.h"
#include "Slave.h"
#include "sensor/BoardRun.h"
#include "sensor/ModbusDriver.h"
#include "sensor/MqttDriver.h"
#include "support/CuttingProxy.h"

#include <QtTest>

using namespace ipncsdk;
using namespace ipncsdk::sensor;
using ipncsdk::test::Broker;
using ipncsdk::test::portRecord;
using ipncsdk::test::Slave;
using ipncsdk::test::tcpBoard;
using Manner = CuttingProxy::Manner;
using Side = CuttingProxy::Side;
using namespace std::chrono_literals;

/// Boards whose network goes away at each byte of what is asked and answered.
class tst_SensorNetwork final : public QObject {
    Q_OBJECT

private slots:
    void modbusReads_data();
    void modbusReads();
    void modbusWrites_data() { modbusReads_data(); }
    void modbusWrites();
    void brokerIsNotReached_data();
    void brokerIsNotReached();
    void nodeIsToldNothingLate_data();
    void nodeIsToldNothingLate();
    void silentBroker();
};

namespace {

constexpr auto wall = std::chrono::system_clock::time_point(1'700'000'000s);
constexpr int Long = 60000; // ms; far more than anything takes
constexpr auto limit = 20s; ///< for what takes a second at most on a machine that has nothing else to do

/// A board that is polled by a clock of its own.
struct Polled {
    Polled(const Board& board, std::unique_ptr<Driver> driver)
        : run({"CAM", board, true}, std::move(driver), now) {}
    /// After a time that is longer than every pause.
    std::vector<Reading> poll() { return run.poll(now += BoardRun::longestPause, wall); }
    std::string write(const Port& output, double value) { return run.write(output, value, now); }

    std::chrono::steady_clock::time_point now{1h};
    BoardRun run;
};

Json mqttRecord(int port) {
    return {{"pid", 1},
            {"type", "ZIGBEE"},
            {"params",
             {{"mode", "mqtt"},
              {"broker", "127.0.0.1:" + std::to_string(port)},
              {"user", "node"},
              {"password", "secret"},
              {"topic", "home/node"}}},
            {"input", {portRecord(11, {{"key", "temperature"}})}},
            {"output", {portRecord(21, {{"key", "state"}})}}};
}

} // namespace

void tst_SensorNetwork::modbusReads_data() {
    QTest::addColumn<Side>("side");
    QTest::addColumn<Manner>("manner");
    QTest::newRow("asked, closed") << Side::Question << Manner::Closed;
    QTest::newRow("asked, silent") << Side::Question << Manner::Silent;
    QTest::newRow("answered, closed") << Side::Answer << Manner::Closed;
    QTest::newRow("answered, silent") << Side::Answer << Manner::Silent;
}

void tst_SensorNetwork::modbusReads() {
    QFETCH(Side, side);
    QFETCH(Manner, manner);
    const Slave slave({"tcp"});
    CuttingProxy network(slave.port);
    const Board board = tcpBoard(
        network.port(), {portRecord(11, {{"function", 3}, {"address", 0}, {"format", "u16"}})}, Json::array(), 100);
    Polled polled(board, std::make_unique<ModbusDriver>(board));
    network.bringBack();
    const auto answers = [&polled] {
        const auto readings = polled.poll();
        return readings.size() == 1 && readings[0].normal && readings[0].value == 4660;
    };
    QVERIFY(QTest::qWaitFor(answers, Long)); // once: its bytes are counted
    const qint64 length = network.carried(side);
    QVERIFY(length >= 11);
    for (qint64 after = 0; after < length; ++after) {
        network.takeAway(manner, after, side);
        QElapsedTimer time;
        time.start();
        const auto lost = polled.poll();
        QVERIFY(std::chrono::milliseconds(time.elapsed()) < limit);
        QVERIFY(network.isAway());
        // The last value that was good stays; it is told not to be anymore.
        QCOMPARE(lost.size(), std::size_t{1});
        QVERIFY(!lost[0].normal);
        QCOMPARE(lost[0].value, 4660.0);
        QVERIFY(polled.poll().empty());
        network.bringBack();
        QTRY_VERIFY_WITH_TIMEOUT(answers(), Long);
    }
}

void tst_SensorNetwork::modbusWrites() {
    QFETCH(Side, side);
    QFETCH(Manner, manner);
    const Slave slave({"tcp"});
    CuttingProxy network(slave.port);
    const Json both = {{"function", 16}, {"address", 42}, {"format", "u32"}};
    const Board board =
        tcpBoard(network.port(), {portRecord(11, {{"function", 3}, {"address", 42}, {"format", "u32"}})},
                 {portRecord(21, both)}, 100);
    Polled polled(board, std::make_unique<ModbusDriver>(board));
    const Port& output = board.outputs[0];
    const auto value = [&polled] {
        polled.poll();
        const auto readings = polled.run.readAll(polled.now, wall);
        return readings[0].normal ? readings[0].value : -1;
    };
    const auto writes = [&](double number) {
        return polled.write(output, number).empty();
    };
    QTRY_VERIFY_WITH_TIMEOUT(value() >= 0, Long);
    constexpr double before = 0x00010002;
    constexpr double wanted = 0x00030004;
    network.bringBack();
    QVERIFY(QTest::qWaitFor([&] { return writes(before); }, Long)); // once: its bytes are counted
    const qint64 length = network.carried(side);
    for (qint64 after = 0; after < length; ++after) {
        network.takeAway(manner, after, side);
        QElapsedTimer time;
        time.start();
        QVERIFY(!writes(wanted));
        QVERIFY(std::chrono::milliseconds(time.elapsed()) < limit);
        QVERIFY(network.isAway());
        network.bringBack();
        QTRY_VERIFY_WITH_TIMEOUT(value() >= 0, Long);
        // What the slave has heard in part it does not do; whose answer is lost, that is done, and read.
        QCOMPARE(value(), side == Side::Question ? before : wanted);
        QTRY_VERIFY_WITH_TIMEOUT(writes(before), Long);
        QCOMPARE(value(), before);
    }
}

void tst_SensorNetwork::brokerIsNotReached_data() {
    QTest::addColumn<Manner>("manner");
    QTest::addColumn<int>("after");
    QTest::newRow("closed at once") << Manner::Closed << 0;
    QTest::newRow("closed inside its welcome") << Manner::Closed << 2;
    QTest::newRow("silent") << Manner::Silent << 0;
    QTest::newRow("silent inside its welcome") << Manner::Silent << 2;
}

void tst_SensorNetwork::brokerIsNotReached() {
    QFETCH(Manner, manner);
    QFETCH(int, after);
    Broker broker;
    QVERIFY(broker.start());
    CuttingProxy network(broker.port);
    network.takeAway(manner, after);
    MqttDriver driver(boardOf(mqttRecord(network.port())));
    QElapsedTimer time;
    time.start();
    QCOMPARE(driver.open(), std::string("the broker does not let us in"));
    QVERIFY(std::chrono::milliseconds(time.elapsed()) < limit);
    network.bringBack();
    QCOMPARE(driver.open(), std::string());
}

void tst_SensorNetwork::nodeIsToldNothingLate_data() {
    QTest::addColumn<Side>("side");
    QTest::addColumn<Manner>("manner");
    QTest::addColumn<bool>("heard"); ///< the first message; that it was is not heard of
    QTest::newRow("said, closed") << Side::Question << Manner::Closed << false;
    QTest::newRow("said, silent") << Side::Question << Manner::Silent << false;
    QTest::newRow("confirmed, closed") << Side::Answer << Manner::Closed << true;
    QTest::newRow("confirmed, silent") << Side::Answer << Manner::Silent << true;
}

// Who was told that switching failed must not see it happen when the network is back.
void tst_SensorNetwork::nodeIsToldNothingLate() {
    QFETCH(Side, side);
    QFETCH(Manner, manner);
    QFETCH(bool, heard);
    Broker broker;
    QVERIFY(broker.start());
    QProcess node;
    broker.hear(node);
    CuttingProxy network(broker.port);
    const Board board = boardOf(mqttRecord(network.port()));
    Polled polled(board, std::make_unique<MqttDriver>(board));
    QTRY_COMPARE_WITH_TIMEOUT(polled.write(board.outputs[0], 1), std::string(), Long);
    network.takeAway(manner, 2, side);
    QVERIFY(!polled.write(board.outputs[0], 2).empty());
    QVERIFY(network.isAway());
    network.bringBack();
    QTest::qWait(3000); // the library makes its connections anew after a second
    const auto written = [&] {
        polled.poll();
        return polled.write(board.outputs[0], 3).empty();
    };
    QTRY_VERIFY_WITH_TIMEOUT(written(), Long);
    QByteArray said;
    QTRY_VERIFY_WITH_TIMEOUT((said += node.readAll()).contains(R"({"state":3})"), Long);
    QVERIFY2(said.contains(R"({"state":2})") == heard, said.constData());
    node.kill();
    node.waitForFinished();
}

void tst_SensorNetwork::silentBroker() {
    Broker broker;
    QVERIFY(broker.start());
    CuttingProxy network(broker.port);
    const Board board = boardOf(mqttRecord(network.port()));
    Polled polled(board, std::make_unique<MqttDriver>(board));
    const auto told = [&](bool normal, double value) {
        broker.publish(value == 20 ? R"({"temperature":20})" : R"({"temperature":30})");
        const auto readings = polled.run.readAll(polled.now, wall);
        polled.poll();
        return readings.size() == 1 && readings[0].normal == normal && readings[0].value == value;
    };
    QTRY_VERIFY_WITH_TIMEOUT(told(true, 20), Long);
    network.takeAway(Manner::Silent, 0);
    // The last value that was good stays, and is told not to be anymore.
    QTRY_VERIFY_WITH_TIMEOUT(told(false, 20), Long);
    network.bringBack();
    QTRY_VERIFY_WITH_TIMEOUT(told(true, 30), Long);
}

QTEST_GUILESS_MAIN(tst_SensorNetwork)
#include "tst_SensorNetwork.moc"
